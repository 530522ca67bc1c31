// The program's start: Main's order, the reset switch, the command line,
// the start dialog, the file association offer, and closing.
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

#include "app/frm_ask_to_associate.h"
#include "app/options.h"
#include "core/conv.h"
#include "core/language.h"
#include "core/startup.h"
#include "design/frm_design.h"
#include "properties/colour_dialog.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_main.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

class StartupTest : public WatchedTest {
  Q_OBJECT

 private:
  static bool AnyBoxSaying(const App& a, const std::string& text) {
    for (const ShownBox& b : a.prompter.boxes)
      if (b.text == text) return true;
    return false;
  }

 private slots:
  void resetSwitchAsksAndNoLeavesAllSettings() {
    App a;
    a.store.Set(kSecParams, "iGridX", "7");
    a.store.Set(kSecRecent, "File1", "/x.kpn");
    a.prompter.answers = {Answer::No};
    QCOMPARE(a.program->Main("/reset_kp"), 0);
    QCOMPARE(a.prompter.boxes.size(), size_t(1));
    QCOMPARE(a.prompter.boxes[0].text, std::string("Reset KestrelPane 2.02 registry?"));
    QCOMPARE(a.prompter.boxes[0].buttons, Buttons::YesNo);
    QCOMPARE(a.store.Get(kSecParams, "iGridX"), std::optional<std::string>("7"));
    QCOMPARE(a.store.Get(kSecRecent, "File1"), std::optional<std::string>("/x.kpn"));
    // Nothing else of the start ran.
    QVERIFY(a.main() == nullptr);
    QCOMPARE(a.association.checks, 0);
  }

  void resetSwitchYesDeletesTheVersionSettingsOnly() {
    App a;
    a.store.Set(kSecParams, "iGridX", "7");
    a.store.Set("2.01/Params", "iGridX", "5");
    a.prompter.answers = {Answer::Yes};
    QCOMPARE(a.program->Main("/reset_kp"), 0);
    QVERIFY(!a.store.Get(kSecParams, "iGridX"));
    QCOMPARE(a.store.Get("2.01/Params", "iGridX"), std::optional<std::string>("5"));
  }

  void resetSwitchWithTrailingBlankIsAFileName() {
    App a;
    QCOMPARE(a.program->Main("/reset_kp "), -1);
    QVERIFY(!AnyBoxSaying(a, "Reset KestrelPane 2.02 registry?"));
    QVERIFY(AnyBoxSaying(a, "File: /reset_kp \r\nNot found. Error # 21-01"));
    QVERIFY(a.main()->isVisible());
    QCOMPARE(a.store.Get(kSecParams, "DontShow_frm_Create_Recent"),
             std::optional<std::string>("1"));
  }

  void quotedPathLosesItsQuotes() {
    App a;
    const std::string folder = a.home.path() + "/my projects";
    CopySampleProjects(folder);
    const std::string path = folder + "/Demo.kpn";
    QCOMPARE(a.program->Main("\"" + path + "\""), -1);
    QCOMPARE(a.p().sProjectFile, path);
    QCOMPARE(a.p().ButtonCount, i16(12));
    QVERIFY(a.prompter.boxes.empty());
  }

  void singleLeadingQuoteLosesTheLastCharacter() {
    App a;
    QCOMPARE(a.program->Main("\"" + a.demo() + "Z"), -1);
    QCOMPARE(a.p().sProjectFile, a.demo());
    QVERIFY(a.prompter.boxes.empty());
  }

  void singleLeadingQuoteCutsARealLastCharacterToo() {
    App a;
    const std::string line = "\"" + a.demo();
    a.program->Main(line);
    QCOMPARE(a.p().sProjectFile, std::string());
    QVERIFY(AnyBoxSaying(a, "File: " + line + "\r\nNot found. Error # 21-01"));
  }

  void relativeNameIsFoundOnlyInTheProgramFolder() {
    test::TempDir cwd;
    CopySampleProjects(cwd.path() + "/Elsewhere");
    const auto old = std::filesystem::current_path();
    std::filesystem::current_path(cwd.path());
    {
      App a;
      a.program->Main("Projects/Demo.kpn");
      QCOMPARE(a.p().sProjectFile, a.home.path() + "/Projects/Demo.kpn");
    }
    {
      App a;
      a.program->Main("Elsewhere/Demo.kpn");
      QCOMPARE(a.p().sProjectFile, std::string());
      QVERIFY(AnyBoxSaying(a, "File: Elsewhere/Demo.kpn\r\nNot found. Error # 21-01"));
    }
    std::filesystem::current_path(old);
  }

  void missingFileLeavesTheProgramOpenWithTheFreshProject() {
    App a;
    QCOMPARE(a.program->Main(a.home.path() + "/none.kpn"), -1);
    QCOMPARE(a.prompter.boxes.size(), size_t(1));
    QCOMPARE(a.prompter.boxes[0].title, std::string("Kestrel Pane 2.02"));
    QVERIFY(a.main()->isVisible());
    QCOMPARE(a.p().ButtonCount, i16(1));
    QVERIFY(a.p().bReady);
  }

  void freshStartHoldsOneDefaultButtonAndClosingAsksNothing() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    QCOMPARE(a.p().ButtonCount, i16(1));
    QCOMPARE(a.p().iCurBtn, i16(1));
    QCOMPARE(a.p().button(1).sBName, std::string("Button 1"));
    QVERIFY(a.p().bProjectSaved);
    QCOMPARE(a.main()->windowTitle(), QString("Kestrel Pane 2.02"));
    QCOMPARE(a.main()->lstButtons->count(), 1);
    QCOMPARE(a.main()->lstButtons->item(0)->text(), QString("Button 1"));
    QVERIFY(a.main()->lstButtons->item(0)->isSelected());
    QCOMPARE(a.p().AppletWidth, i16(420));
    QCOMPARE(a.p().AppletHeight, i16(180));
    QCOMPARE(a.p().BackGround, RGB(255, 255, 255));
    QVERIFY(a.main()->Design()->isVisible());
    QVERIFY(a.main()->close());
    QVERIFY(a.prompter.boxes.empty());
    QVERIFY(!a.main()->isVisible());
    QVERIFY(a.store.Get(kSecSizes + "/frmMain", "Width"));
  }

  void sessionSettingsAreReadBeforeTheWindowShows() {
    App a;
    a.store.Set(kSecParams, "iGridX", "25");
    a.store.Set(kSecParams, "bShowGrid", "1");
    a.program->Main("");
    QCOMPARE(Session().iGridX, i16(25));
    QVERIFY(Session().bShowGrid);
    QCOMPARE(a.p().sProjectName, std::string("MyProject"));
  }

  void languageStateIsStoredAtEachStart() {
    App a;
    a.program->Main("");
    QCOMPARE(a.store.Get(kSecLanguage, "ENGLISH"), std::optional<std::string>("NO"));
    App b;
    b.home.write("Kestrel.ini", "[LANG SETTINGS]\r\nmine_lng\r\nMINE\r\n");
    b.home.write("mine_lng", "[frmMain]\r\n&Datei\r\n");
    b.program->Main("");
    QCOMPARE(b.program->Language().sLangName, std::string("MINE"));
    QCOMPARE(b.store.Get(kSecLanguage, "MINE"), std::optional<std::string>("YES"));
    // The main window took its texts from the file's section, by position.
    QCOMPARE(b.main()->mnuFile->title(), QString("&Datei"));
    frmMain::Texts()[0].text = "&File";
  }

  void customColoursAreReadAtStartAndStoredAtShutdown() {
    App a;
    a.store.Set(kSecCustColors, "C1", "12");
    a.store.Set(kSecCustColors, "C128", "200");
    a.program->Main("");
    QCOMPARE(int(SharedCustColors()[0]), 12);
    QCOMPARE(int(SharedCustColors()[127]), 200);
    SharedCustColors()[4] = 99;
    QVERIFY(a.main()->close());
    QCOMPARE(a.store.Get(kSecCustColors, "C5"), std::optional<std::string>("99"));
  }

  void emptyCommandLineShowsTheStartDialogWithBothFrames() {
    App a;
    a.store.Set(kSecParams, "DontShow_frm_Create_Recent", "0");
    bool bothFrames = false;
    auto ran = WhenModal<frm_Create_Recent>([&](frm_Create_Recent* d) {
      bothFrames = d->frameNew->isVisible() && d->frameOpen->isVisible();
      QCOMPARE(d->txtProjectName->text(), QString("MyProject"));
      // No recent file yet: the recent button is off.
      QVERIFY(!d->btnRecent->isEnabled());
      d->txtProjectName->setText("");
      d->btnCreate->click();
    });
    a.program->Main("");
    QVERIFY(*ran);
    QVERIFY(bothFrames);
    QCOMPARE(a.p().sProjectName, std::string("Unnamed"));
  }

  void startDialogCleansTheTypedName() {
    App a;
    a.store.Set(kSecParams, "DontShow_frm_Create_Recent", "0");
    WhenModal<frm_Create_Recent>([](frm_Create_Recent* d) {
      d->txtProjectName->setText("3 bars|x");
      QTest::keyClick(d->txtProjectName, Qt::Key_Return);
    });
    a.program->Main("");
    QCOMPARE(a.p().sProjectName, CleanName("3 bars|x"));
  }

  void startDialogCheckBoxStoresTheSetting() {
    App a;
    a.store.Set(kSecParams, "DontShow_frm_Create_Recent", "0");
    WhenModal<frm_Create_Recent>([](frm_Create_Recent* d) {
      QVERIFY(d->chkShowNextTime->isChecked());
      d->chkShowNextTime->click();
      d->btnCreate->click();
    });
    a.program->Main("");
    QCOMPARE(a.store.Get(kSecParams, "DontShow_frm_Create_Recent"),
             std::optional<std::string>("1"));
  }

  void startDialogOpenGoesToTheOpenCommand() {
    App a;
    a.store.Set(kSecParams, "DontShow_frm_Create_Recent", "0");
    a.prompter.openAnswers = {a.demo()};
    WhenModal<frm_Create_Recent>([](frm_Create_Recent* d) { d->btnOpenFromDisk->click(); });
    a.program->Main("");
    QCOMPARE(a.prompter.openDialogs.size(), size_t(1));
    QCOMPARE(a.p().sProjectFile, a.demo());
  }

  void startDialogIsSkippedByItsSetting() {
    App a;  // the fixture stores "1"
    bool shown = false;
    auto ran = WhenModal<frm_Create_Recent>([&](frm_Create_Recent* d) {
      shown = true;
      d->reject();
    }, 300);
    a.program->Main("");
    QTest::qWait(400);
    QVERIFY(!shown);
  }

  void associationIsOfferedWhenMissingAndYesRegisters() {
    App a;
    a.association.missing = true;
    QString title;
    auto ran = WhenModal<frmAskToAssociate>([&](frmAskToAssociate* d) {
      title = d->windowTitle();
      d->btnYes->click();
    });
    a.program->Main("");
    QVERIFY(*ran);
    QCOMPARE(title, QString("Kestrel Pane 2.02"));
    QCOMPARE(a.association.registered, 1);
  }

  void associationDontAskIsStoredAsClickedAndNoRegistersNothing() {
    App a;
    a.association.missing = true;
    WhenModal<frmAskToAssociate>([](frmAskToAssociate* d) {
      d->chkDontAsk->click();
      d->btnNo->click();
    });
    a.program->Main("");
    QCOMPARE(a.association.registered, 0);
    QCOMPARE(a.store.Get(kSecParams, "DontAskToAssociate"), std::optional<std::string>("1"));
  }

  void associationIsNotOfferedWhenSwitchedOffOrInPlace() {
    for (bool missing : {true, false}) {
      App a;
      a.association.missing = missing;
      if (missing) a.store.Set(kSecParams, "DontAskToAssociate", "1");
      bool shown = false;
      WhenModal<frmAskToAssociate>([&](frmAskToAssociate* d) {
        shown = true;
        d->reject();
      }, 300);
      a.program->Main("");
      QTest::qWait(400);
      QVERIFY(!shown);
      QCOMPARE(a.association.checks, 1);
    }
  }

  void browserDetectionRunsLastAfterTheProjectLoaded() {
    App a;
    std::string loadedWhenDetecting;
    a.program->detectBrowsers = [&](Env&) { loadedWhenDetecting = a.p().sProjectFile; };
    a.program->Main(a.demo());
    QCOMPARE(loadedWhenDetecting, a.demo());
  }

  void closeWhileLoadingEndsTheProcessWithNoQuestion() {
    App a;
    a.program->Main("");
    a.p().bProjectSaved = false;  // a close would otherwise ask
    bool closed = false;
    a.prompter.onProcessEvents = [&] {
      if (closed || a.p().bReady) return;
      closed = true;
      a.main()->close();
    };
    a.main()->OpenProjectFile(a.demo());
    QVERIFY(closed);
    QCOMPARE(a.ended, std::vector<int>{0});
    QVERIFY(a.prompter.boxes.empty());
    // Nothing was stored on the way out.
    QVERIFY(!a.store.Get(kSecSizes + "/frmMain", "Width"));
  }

  void optionsComeBeforeMainsCommandLine() {
    StartOptions o = ParseStartOptions({"--home", "/h", "--settings", "/s.ini", "/reset_kp"});
    QCOMPARE(o.home, std::string("/h"));
    QCOMPARE(o.settingsFile, std::string("/s.ini"));
    QCOMPARE(o.commandLine, std::string("/reset_kp"));
    QCOMPARE(ParseStartOptions({"a", "b c"}).commandLine, std::string("a b c"));
    QCOMPARE(ParseStartOptions({"/reset_kp "}).commandLine, std::string("/reset_kp "));
    QCOMPARE(ParseStartOptions({}).commandLine, std::string());
  }

  void programFolderIsTheHomeOptionMadeAbsolute() {
    QCOMPARE(ProgramFolder("/opt/kp/"), std::string("/opt/kp"));
    const std::string rel = ProgramFolder("rel");
    QVERIFY(rel.front() == '/');
    QVERIFY(EndsWith(rel, "/rel"));
    qputenv("KESTRELPANE_HOME", "/from/env");
    QCOMPARE(ProgramFolder(""), std::string("/from/env"));
    qunsetenv("KESTRELPANE_HOME");
    QCOMPARE(ProgramFolder(""), std::filesystem::path(ExecutablePath()).parent_path().string());
  }
};

QTEST_MAIN(StartupTest)
#include "test_startup.moc"
