// The HTML window: when it regenerates, what its commands read and write,
// and the controls it shares with the publishing commands.
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

#include "core/conv.h"
#include "publish/build.h"
#include "publish/player.h"
#include "publish/replace.h"
#include "tests/app/html_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// The <applet ...> line of a code box.
std::string AppletLine(const std::string& code) {
  size_t a = code.find("<applet name=");
  if (a == std::string::npos) return "";
  return code.substr(a, code.find('\r', a) - a);
}

// No button and no applet program calls JavaScript.
void WithoutJavaScript(Project& p) {
  for (int i = 1; i <= p.ButtonCount; ++i) {
    tButton& b = p.button(i);
    b.URL = "page" + std::to_string(i) + ".html";
    b.ProgramUP = b.ProgramLEAVE = b.ProgramOVER = b.ProgramDOWN = "";
    b.ProgramCHECK = b.ProgramUNCHECK = "";
  }
  p.AppletProgramStart = p.AppletProgramOVER = p.AppletProgramOUT = p.AppletProgramDOWN = "";
}

// The applet's own files, which lie beside the program.
void PutClassFiles(const std::string& programFolder) {
  for (const char* name : {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar"})
    WriteBytes(programFolder + "/" + name, std::string("applet file ") + name);
}

}  // namespace

class HtmlWindowTest : public WatchedTest {
  Q_OBJECT

 private:

  // Goes to `w` and back to the HTML window.
  static void VisitAndComeBack(HtmlApp& a, QWidget* w) {
    QVERIFY(Activate(w));
    QVERIFY(Activate(a.html().HTML()));
  }

 private slots:
  void mainWindowBuildButtonShowsTheWindowWithItsCaptionAndCode() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    QVERIFY(a.html().ExistingHTML() == nullptr);
    frmHTML* w = a.OpenHTML();
    QVERIFY(w);
    QVERIFY(w->isVisible());
    QVERIFY(w->isActiveWindow());
    QCOMPARE(w->windowTitle(), QString("HTML Code - Demo.kpn"));
    QCOMPARE(w->Generations(), 1);
    const std::string code = a.code();
    QVERIFY(StartsWith(code, BeginComment() + sCRLF));
    QVERIFY(EndsWith(code, std::string(kEndComment) + sCRLF));
    // The box shows the block, with line feeds for its CR LF.
    QCOMPARE(w->txtHTML->toPlainText(), DisplayText(code).replace("\r\n", "\n"));
    QCOMPARE(w->cmbBrowser->itemText(0), QString("Default"));
    QCOMPARE(w->btnBuild->toolTip(), QString("Build Applet with All files"));
    QCOMPARE(w->btnPreview->text(), QString("Test in &Browser"));
  }

  void mainWindowMakeHtmlEntryRestoresAMinimisedWindow() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    w->showMinimized();
    Settle();
    QVERIFY(w->isMinimized());
    a.main()->mnuMakeHTML->trigger();
    Settle();
    QVERIFY(!w->isMinimized());
    QVERIFY(w->isVisible());
  }

  void activatingTwiceWithNothingBetweenRegeneratesOnce() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QCOMPARE(w->Generations(), 1);
    QVERIFY(!a.html().st.bHTMLStale);
    const std::string first = a.code();
    const int width = a.p().AppletWidth;

    // Another program's window takes the activation, then the HTML window
    // gets it back; meanwhile the project changed behind its back.
    a.p().AppletWidth = static_cast<i16>(width + 33);
    QWidget elsewhere;
    elsewhere.resize(120, 80);
    QVERIFY(Activate(&elsewhere));
    QVERIFY(Activate(w));
    QCOMPARE(w->Generations(), 1);
    QCOMPARE(a.code(), first);
    QVERIFY(Contains(AppletLine(a.code()), " width=" + std::to_string(width) + " "));
  }

  void activatingAfterAVisitToTheMainWindowRegeneratesAgain() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QCOMPARE(w->Generations(), 1);
    const int width = a.p().AppletWidth + 21;
    a.p().AppletWidth = static_cast<i16>(width);

    QVERIFY(Activate(a.main()));
    QVERIFY(a.html().st.bHTMLStale);
    QVERIFY(Activate(w));
    QCOMPARE(w->Generations(), 2);
    QVERIFY(!a.html().st.bHTMLStale);
    QVERIFY(Contains(AppletLine(a.code()), " width=" + std::to_string(width) + " "));

    // Nothing changed this time: it regenerates all the same.
    VisitAndComeBack(a, a.main());
    QCOMPARE(w->Generations(), 3);
  }

  void activatingAfterAVisitToTheDesignWindowRegeneratesAgain() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QCOMPARE(w->Generations(), 1);
    VisitAndComeBack(a, a.design());
    QCOMPARE(w->Generations(), 2);
  }

  void regenerateButtonRewritesTheBoxWithoutLeavingTheWindow() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    a.p().AppletHeight = 77;
    QTest::mouseClick(w->btnReGenerate, Qt::LeftButton);
    QCOMPARE(w->Generations(), 2);
    QVERIFY(Contains(AppletLine(a.code()), " height=77>") ||
            Contains(AppletLine(a.code()), " height=77 "));
  }

  void overlayShowsAndTheCommandsAreDisabledWhileGenerating() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QVERIFY(!w->picUpLabel->isVisible());
    int calls = 0, busyCalls = 0;
    QString message;
    a.prompter.onProcessEvents = [&] {
      ++calls;
      const bool busy =
          w->picUpLabel->isVisible() && !w->btnReGenerate->isEnabled() &&
          !w->btnPreview->isEnabled() && !w->btnCopyToClb->isEnabled() &&
          !w->btnBuild->isEnabled() && !w->txtHTML->isEnabled() &&
          !w->frmAutoHTMLReplace->isEnabled() && !w->txtAutoReplaceHTML_FileName->isEnabled() &&
          !w->btnGetAutoReplaceHTML_filename->isEnabled() && !w->btnAutoReplaceHTML->isEnabled() &&
          !w->btnAdvanced->isEnabled() && a.html().st.bGenerating;
      if (busy) ++busyCalls;
      message = w->lblMessage->text();
    };
    QTest::mouseClick(w->btnReGenerate, Qt::LeftButton);
    a.prompter.onProcessEvents = nullptr;
    // One yield a line, each with the overlay up and the commands off.
    QVERIFY(calls >= 4 + a.p().ButtonCount);
    QCOMPARE(busyCalls, calls);
    QCOMPARE(message, QString("Please Wait..."));
    QVERIFY(!w->picUpLabel->isVisible());
    QVERIFY(w->btnBuild->isEnabled() && w->txtHTML->isEnabled() && w->btnAdvanced->isEnabled());
    QVERIFY(w->frmAutoHTMLReplace->isEnabled());
    QVERIFY(!a.html().st.bGenerating);
  }

  void javaScriptLinkInAnyCaseTurnsOnMayscriptButOneWithALeadingBlankDoesNot() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    WithoutJavaScript(a.p());
    frmHTML* w = a.OpenHTML();
    QVERIFY(!Contains(AppletLine(a.code()), "MAYSCRIPT"));

    a.p().button(2).URL = "JavaScript:alert('hi')";
    VisitAndComeBack(a, a.main());
    QVERIFY(a.html().st.bUseJSCaller);
    QVERIFY(EndsWith(AppletLine(a.code()), " MAYSCRIPT>"));

    a.p().button(2).URL = " javascript:alert('hi')";
    VisitAndComeBack(a, a.main());
    QVERIFY(!a.html().st.bUseJSCaller);
    QVERIFY(!Contains(AppletLine(a.code()), "MAYSCRIPT"));
    QCOMPARE(w->Generations(), 3);
  }

  void aJavaScriptCallInTheUpProgramAloneDoesNotTurnOnTheCaller() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    WithoutJavaScript(a.p());
    a.p().button(1).ProgramUP = "7 0 alert('up');";
    a.p().button(1).ProgramCHECK = "7 0 alert('check');";
    a.OpenHTML();
    QVERIFY(!a.html().st.bUseJSCaller);
    QVERIFY(!Contains(AppletLine(a.code()), "MAYSCRIPT"));

    a.p().button(1).ProgramOVER = "7 0 alert('over');";
    VisitAndComeBack(a, a.main());
    QVERIFY(a.html().st.bUseJSCaller);
    QVERIFY(Contains(AppletLine(a.code()), " MAYSCRIPT>"));
  }

  void copyToClipboardPutsTheBoxTextOnItAsPlainText() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QGuiApplication::clipboard()->setText("something else");
    QTest::mouseClick(w->btnCopyToClb, Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), DisplayText(a.code()));
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasText());
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasHtml());

    // A hand edit in the box is what is copied from then on.
    w->txtHTML->moveCursor(QTextCursor::End);
    QTest::keyClicks(w->txtHTML, "<!-- mine -->");
    w->mnuCopy->trigger();
    const QString copied = QGuiApplication::clipboard()->text();
    QVERIFY(copied.endsWith(QString(kEndComment) + "\r\n<!-- mine -->"));
  }

  void aHandEditInTheCodeBoxIsWhatTheSavedPageHolds() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    test::TempDir out;
    const std::string page = out.file("page.html");
    a.prompter.saveAnswers = {page};
    w->txtHTML->moveCursor(QTextCursor::End);
    QTest::keyClicks(w->txtHTML, "<p>by hand</p>");
    w->mnuSaveHTML_Only->trigger();
    Settle();
    const std::string written = ReadBytes(page);
    // The player's line goes between the end comment and the hand edit.
    QVERIFY(Contains(written, std::string(kEndComment) + sCRLF + PlayerScriptElement("") + sCRLF +
                                  "<p>by hand</p>"));
    QCOMPARE(written, WithPlayerScript(PageText(a.p(), w->Code()), a.p().CodeBase));
  }

  void saveHtmlOnlyNeverWarnsAboutAnOccupiedFolderAndCopiesNothingButShowsTheClosingDialog() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    PutClassFiles(a.home.path());
    frmHTML* w = a.OpenHTML();
    test::TempDir out;
    out.write("other.txt", "was here");
    const std::string page = out.file("page.html");
    QCOMPARE(GetParam(a.env(), "DontShowSomeFilesWarning"), std::string("0"));
    a.prompter.saveAnswers = {page};
    w->mnuSaveHTML_Only->trigger();
    Settle();
    QCOMPARE(a.prompter.saveDialogs.size(), size_t(1));
    QVERIFY(!a.prompter.ShownDialog("frmSomeFilesWarning"));
    QVERIFY(a.prompter.ShownDialog("frmReadyForUpload"));
    QCOMPARE(FilesIn(out.path()), (std::vector<std::string>{"other.txt", "page.html"}));
    QCOMPARE(a.p().sOutputHTML, page);

    // Save Applet into the same folder does warn, and copies.
    a.prompter.saveAnswers = {page};
    a.prompter.dialogAnswers = {0};  // Yes
    QTest::mouseClick(w->btnBuild, Qt::LeftButton);
    Settle();
    QVERIFY(a.prompter.ShownDialog("frmSomeFilesWarning"));
    const std::vector<std::string> files = FilesIn(out.path());
    QVERIFY(std::find(files.begin(), files.end(), "KestrelPane.class") != files.end());
    QVERIFY(std::find(files.begin(), files.end(), "demo_star.gif") != files.end());
  }

  void cancellingTheSaveDialogChangesNothingNotEvenTheOutputFolder() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    const std::string folder = a.p().sOutputFolder, page = a.p().sOutputHTML;
    const bool saved = a.p().bProjectSaved;
    QTest::mouseClick(w->btnBuild, Qt::LeftButton);
    Settle();
    QCOMPARE(a.prompter.saveDialogs.size(), size_t(1));
    QCOMPARE(a.prompter.saveDialogs[0].fileName, a.p().sProjectName + ".html");
    QCOMPARE(a.p().sOutputFolder, folder);
    QCOMPARE(a.p().sOutputHTML, page);
    QCOMPARE(a.p().bProjectSaved, saved);
    QVERIFY(a.prompter.dialogs.empty());
  }

  void answeringNoToTheFolderWarningBringsTheSaveDialogBack() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    test::TempDir out;
    out.write("other.txt", "was here");
    const std::string page = out.file("page.html");
    a.prompter.saveAnswers = {page, page};
    a.prompter.dialogAnswers = {1, 0};  // No, then Yes
    w->mnuBuild->trigger();
    Settle();
    QCOMPARE(a.prompter.saveDialogs.size(), size_t(2));
    QCOMPARE(a.prompter.dialogs.at(0).name, std::string("frmSomeFilesWarning"));
    QCOMPARE(a.prompter.dialogs.at(1).name, std::string("frmSomeFilesWarning"));
    QVERIFY(std::filesystem::exists(page));
  }

  void browserBoxStartsWithDefaultShowsTheStoredChoiceAndStoresTheUsersChoice() {
    HtmlApp a;
    a.store.Set(kSecBrowsers, "Count", "2");
    a.store.Set(kSecBrowsers, "B0", "/usr/local/bin/fakebrowser");
    a.store.Set(kSecBrowsers, "Name0", "Fake Browser");
    a.store.Set(kSecBrowsers, "B1", "/opt/jdk/bin/appletviewer");
    a.store.Set(kSecBrowsers, "Name1", "Applet Viewer");
    a.store.Set(kSecBrowsers, "Selected", "2");
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QCOMPARE(w->cmbBrowser->count(), 3);
    QCOMPARE(w->cmbBrowser->itemText(0), QString("Default"));
    QCOMPARE(w->cmbBrowser->itemText(1), QString("Fake Browser"));
    QCOMPARE(w->cmbBrowser->itemText(2), QString("Applet Viewer"));
    QCOMPARE(w->cmbBrowser->currentIndex(), 2);

    // Filling the box stored nothing; the user's choice is stored.
    QCOMPARE(a.store.Get(kSecBrowsers, "Selected"), std::optional<std::string>("2"));
    w->cmbBrowser->setFocus();
    QTest::keyClick(w->cmbBrowser, Qt::Key_Up);
    QCOMPARE(w->cmbBrowser->currentIndex(), 1);
    QCOMPARE(a.store.Get(kSecBrowsers, "Selected"), std::optional<std::string>("1"));

    // The choice survives the next activation, which reads the list again.
    VisitAndComeBack(a, a.main());
    QCOMPARE(w->cmbBrowser->currentIndex(), 1);
  }

  void theBrowserListIsReadAgainAfterTheBrowserSetup() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QCOMPARE(w->cmbBrowser->count(), 1);
    // The setup window is modal over the HTML window; while it is open the
    // stored list gains an entry, as its Ok would store it.
    auto ran = WhenModal<QDialog>([&a](QDialog* d) {
      a.store.Set(kSecBrowsers, "Count", "1");
      a.store.Set(kSecBrowsers, "B0", "/usr/local/bin/fakebrowser");
      a.store.Set(kSecBrowsers, "Name0", "Fake Browser");
      d->reject();
    });
    w->mnuBrowsers->trigger();
    QVERIFY(*ran);
    QCOMPARE(w->cmbBrowser->count(), 2);
    QCOMPARE(w->cmbBrowser->itemText(1), QString("Fake Browser"));
  }

  void testInBrowserOpensThePageWithTheChosenBrowser() {
    HtmlApp a;
    a.store.Set(kSecBrowsers, "Count", "2");
    a.store.Set(kSecBrowsers, "B0", "/usr/local/bin/fakebrowser");
    a.store.Set(kSecBrowsers, "Name0", "Fake Browser");
    a.store.Set(kSecBrowsers, "B1", "/opt/jdk/bin/appletViewer");
    a.store.Set(kSecBrowsers, "Name1", "Applet Viewer");
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    const std::string folder = a.home.path() + "/AppletTemp";
    const std::string page = folder + "/Demo.htm";

    QCOMPARE(w->cmbBrowser->currentIndex(), 0);
    QTest::mouseClick(w->btnPreview, Qt::LeftButton);
    QCOMPARE(a.launcher.starts.size(), size_t(1));
    QCOMPARE(a.launcher.starts[0].what, std::string("open"));
    QCOMPARE(a.launcher.starts[0].args, std::vector<std::string>{page});
    QCOMPARE(ReadBytes(page), WithPlayerScript(PageText(a.p(), w->Code()), a.p().CodeBase));

    w->cmbBrowser->setFocus();
    QTest::keyClick(w->cmbBrowser, Qt::Key_Down);
    QTest::mouseClick(w->btnPreview, Qt::LeftButton);
    QCOMPARE(a.launcher.starts.size(), size_t(2));
    QCOMPARE(a.launcher.starts[1].what, std::string("/usr/local/bin/fakebrowser"));
    QCOMPARE(a.launcher.starts[1].args, std::vector<std::string>{page});

    QTest::keyClick(w->cmbBrowser, Qt::Key_Down);
    QTest::mouseClick(w->btnPreview, Qt::LeftButton);
    QCOMPARE(a.launcher.starts.size(), size_t(3));
    QCOMPARE(a.launcher.starts[2].what, std::string("/opt/jdk/bin/appletViewer"));
    QCOMPARE(a.launcher.starts[2].args, std::vector<std::string>{"Demo.htm"});
  }

  void eachKeyInTheAutoReplaceBoxStoresThePageAndEnterReplaces() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    test::TempDir out;
    const std::string page = out.file("hand.html");
    const std::string before = "<html>\n<body>\n<p>mine</p>\n";
    const std::string after = "\n<p>also mine</p>\n</body>\n</html>\n";
    out.write("hand.html", before + "<applet name=\"old\" width=1 height=1></applet>" + after);

    a.p().bProjectSaved = true;
    w->txtAutoReplaceHTML_FileName->clear();
    QTest::keyClicks(w->txtAutoReplaceHTML_FileName, QString::fromStdString(page));
    QCOMPARE(a.p().sOutputHTML, page);
    QVERIFY(!a.p().bProjectSaved);

    a.prompter.checkListAnswers = {std::vector<bool>{true}};
    QTest::keyClick(w->txtAutoReplaceHTML_FileName, Qt::Key_Return);
    Settle();
    QCOMPARE(a.prompter.checkLists.size(), size_t(1));
    QCOMPARE(a.prompter.checkLists[0].message, std::string("One applet found in: hand.html"));
    // The player's line follows the new applet on a line of its own.
    QCOMPARE(ReadBytes(page),
             before + NewAppletCode(w->Code().text) + "\n" + PlayerScriptElement("") + after);
    QVERIFY(std::filesystem::exists(out.file("hand_backup.html")));
    QVERIFY(a.prompter.ShownDialog("frmAutoRepHTML_MSG"));
  }

  void withUpdateUntickedNoFileOtherThanThePageAndTheBackupIsWritten() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    PutClassFiles(a.home.path());
    frmHTML* w = a.OpenHTML();
    test::TempDir out;
    out.write("hand.html", "<applet name=\"old\"></applet>\r\n");
    w->txtAutoReplaceHTML_FileName->setText(QString::fromStdString(out.file("hand.html")));
    QVERIFY(!w->chkUpdateRequired->isChecked());
    a.prompter.checkListAnswers = {std::vector<bool>{true}};
    QTest::mouseClick(w->btnAutoReplaceHTML, Qt::LeftButton);
    Settle();
    QCOMPARE(FilesIn(out.path()), (std::vector<std::string>{"hand.html", "hand_backup.html"}));

    // Ticked, the applet's files and the media come beside the page.
    w->chkUpdateRequired->setChecked(true);
    a.prompter.checkListAnswers = {std::vector<bool>{true}};
    QTest::mouseClick(w->btnAutoReplaceHTML, Qt::LeftButton);
    Settle();
    const std::vector<std::string> files = FilesIn(out.path());
    for (const char* name : {"hand_backup1.html", "KestrelPane.class", "KestrelPane.cab",
                             "KestrelPane.jar", "demo_star.gif", "click.au"})
      QVERIFY2(std::find(files.begin(), files.end(), name) != files.end(), name);
  }

  void pickingThePageFillsTheBox() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    test::TempDir out;
    out.write("picked.html", "<p>no applet</p>");
    a.prompter.openAnswers = {out.file("picked.html")};
    QTest::mouseClick(w->btnGetAutoReplaceHTML_filename, Qt::LeftButton);
    QCOMPARE(w->txtAutoReplaceHTML_FileName->text(),
             QString::fromStdString(out.file("picked.html")));
    QCOMPARE(a.p().sOutputHTML, out.file("picked.html"));
    QCOMPARE(a.prompter.openDialogs.at(0).filter, std::string(kHtmlFilter));
  }

  void generationFillsTheAutoReplaceBoxFromTheLastPage() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    a.p().sOutputHTML = "/somewhere/last.html";
    frmHTML* w = a.OpenHTML();
    QCOMPARE(w->txtAutoReplaceHTML_FileName->text(), QString("/somewhere/last.html"));
  }

  void loadingAProjectHidesTheWindow() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QVERIFY(w->isVisible());
    a.main()->OpenProjectFile(a.demo());
    QVERIFY(!w->isVisible());
  }

  void closeBringsTheMainWindowBack() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QTest::mouseClick(w->btnClose, Qt::LeftButton);
    QVERIFY(!w->isVisible());
    QVERIFY(WaitActive(a.main()));
    QVERIFY(a.html().st.bHTMLStale);
  }

  void closingTheProgramStoresTheWindowsSizeAndTheNextStartTakesItBack() {
    const std::string sec = kSecSizes + "/frmHTML";
    MemorySettings kept;
    QSize size;
    {
      HtmlApp a;
      QVERIFY(a.StartOnDemo());
      frmHTML* w = a.OpenHTML();
      const QSize first = w->size();
      // Within the test screen, which a stored size is kept to.
      w->resize(first.width() - 120, first.height() - 45);
      Settle();
      size = w->size();
      QVERIFY(size != first);
      // Hidden again before the end: it is stored all the same.
      QTest::mouseClick(w->btnClose, Qt::LeftButton);
      QVERIFY(!a.store.Get(sec, "Width"));
      QVERIFY(a.main()->close());
      QCOMPARE(a.store.Get(sec, "Width"),
               std::optional<std::string>(std::to_string(size.width() * 15)));
      QCOMPARE(a.store.Get(sec, "Height"),
               std::optional<std::string>(std::to_string(size.height() * 15)));
      kept = a.store;
    }
    HtmlApp b;
    b.store.data[sec] = kept.data[sec];
    QVERIFY(b.StartOnDemo());
    frmHTML* w = b.OpenHTML();
    QCOMPARE(w->size(), size);
  }

  void advancedAndSurroundingHtmlOpenTheirEditors() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QTest::mouseClick(w->btnAdvanced, Qt::LeftButton);
    QVERIFY(a.html().ExistingAppletPaths());
    QVERIFY(WaitActive(a.html().ExistingAppletPaths()));
    QVERIFY(Activate(w));
    w->mnuSurHTML->trigger();
    QVERIFY(a.html().ExistingSurHTML());
    QVERIFY(WaitActive(a.html().ExistingSurHTML()));
  }
};

QTEST_MAIN(HtmlWindowTest)
#include "test_html_window.moc"
