// The Help menu (the user guide and About) and the Tools menu's WAV to AU
// converter window, with the real windows and, for the converter, the
// real tool.
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <cstdint>
#include <filesystem>

#include "core/help.h"
#include "core/launcher.h"
#include "properties/frm_about.h"
#include "properties/frm_main.h"
#include "properties/frm_wav2au.h"
#include "publish/sound.h"
#include "tests/app/app_fixture.h"
#include "tests/app/window_driver.h"
#include "tests/app/window_texts.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// Records what would have been opened and started.
class OpenRecorder : public Launcher {
 public:
  IoStatus Open(const std::string& path) override {
    opened.push_back(path);
    return {};
  }
  IoStatus Explore(const std::string&) override { return {}; }
  IoStatus Run(const std::string& program, const std::vector<std::string>&, bool,
               const std::string&) override {
    ran.push_back(program);
    return {};
  }
  std::vector<std::string> opened, ran;
};

QAction* MenuEntry(QMenu* menu, const char* name) {
  for (QAction* a : menu->actions())
    if (a->objectName() == name) return a;
  return nullptr;
}

void Put(std::string& s, uint32_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) s.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

// A PCM WAV file of `bits` per sample, mono, 8000 Hz.
std::string Wav(int bits, const std::string& data) {
  std::string s = "RIFF";
  Put(s, static_cast<uint32_t>(36 + data.size()), 4);
  s += "WAVEfmt ";
  Put(s, 16, 4);
  Put(s, 1, 2);
  Put(s, 1, 2);
  Put(s, 8000, 4);
  Put(s, 8000u * static_cast<uint32_t>(bits) / 8, 4);
  Put(s, static_cast<uint32_t>(bits / 8), 2);
  Put(s, static_cast<uint32_t>(bits), 2);
  s += "data";
  Put(s, static_cast<uint32_t>(data.size()), 4);
  return s + data;
}

const std::string kTool = std::string(KP_BINARY_DIR) + "/bin/Tools/W2A/w2a";

}  // namespace

class HelpToolsTest : public WatchedTest {
  Q_OBJECT

 private slots:
  // --- Help ---

  void theHelpEntryAsksTheShellToOpenTheGuide() {
    App a;
    a.program->Main("");
    OpenRecorder shell;
    a.env().launcher = &shell;
    test::WriteBytes(a.home.file("Help/index.htm"), "<html></html>");
    QAction* help = MenuEntry(a.main()->mnuHelp, "mnuHelpContents");
    QVERIFY(help);
    help->trigger();
    QCOMPARE(shell.opened.size(), size_t{1});
    QCOMPARE(shell.opened[0], a.home.path() + "/Help/index.htm");
    QVERIFY(a.prompter.boxes.empty());
  }

  void theHelpIndexIsFoundWithEitherSeparator() {
    test::TempDir home;
    test::FaultFs fs;
    MemorySettings store;
    TestPrompter prompter;
    ProjectView view;
    Env env{fs, store, prompter, view, home.path()};
    LangSettings lang;
    QCOMPARE(HelpIndexPath(env, lang), home.path() + "/Help/index.htm");
    lang.sHelpIndex = "/Help/index.htm";
    QCOMPARE(HelpIndexPath(env, lang), home.path() + "/Help/index.htm");
    lang.sHelpIndex = "Hilfe\\start.htm";
    QCOMPARE(HelpIndexPath(env, lang), home.path() + "/Hilfe/start.htm");
  }

  void aMissingGuideIsToldAndNothingIsOpened() {
    App a;
    a.program->Main("");
    OpenRecorder shell;
    a.env().launcher = &shell;
    MenuEntry(a.main()->mnuHelp, "mnuHelpContents")->trigger();
    QVERIFY(shell.opened.empty());
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QCOMPARE(a.prompter.boxes[0].text, a.home.path() + "/Help/index.htm not found.");
  }

  void theShippedGuideHasAPageForEachWindowAndItsPictures() {
    const std::string help = std::string(KP_SOURCE_DIR) + "/data/Help/";
    const std::string index = test::ReadBytes(help + "index.htm");
    QVERIFY(!index.empty());
    // Every picture the guide shows is shipped beside it.
    size_t at = 0;
    int pictures = 0;
    while ((at = index.find("src=\"", at)) != std::string::npos) {
      at += 5;
      const std::string name = index.substr(at, index.find('"', at) - at);
      QVERIFY2(std::filesystem::exists(help + name), name.c_str());
      ++pictures;
    }
    QVERIFY(pictures >= 8);
  }

  void aboutShowsTheProgramsNameVersionAndClosesOnOK() {
    App a;
    a.program->Main("");
    QString caption, product, version;
    auto ran = WhenWindow("frmAbout", [&](QWidget* w) {
      caption = w->windowTitle();
      product = w->findChild<QLabel*>("lblProduct")->text();
      version = w->findChild<QLabel*>("lblVersion")->text();
      QTest::mouseClick(w->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
    });
    QAction* about = MenuEntry(a.main()->mnuHelp, "mnuAbout");
    QVERIFY(about);
    about->trigger();
    QVERIFY(*ran);
    QCOMPARE(caption, QString("About Kestrel Pane 2.02"));
    QCOMPARE(product, QString("Kestrel Pane"));
    QCOMPARE(version, QString("Version 2.02"));
  }

  // The guide's pictures are written only from windows this finds clean:
  // a scratch program folder of a run is no folder an author sees.
  void aWindowShowingAScratchFolderIsCaughtBeforeItsPicture() {
    App a;
    a.program->Main("");
    QStringList caught, clean;
    auto ran = WhenWindow("frmAbout", [&](QWidget* w) {
      caught = TempPathsShown(w);
      w->findChild<QLabel*>("lblFolder")->setText("Program folder: /usr/share/kestrelpane");
      clean = TempPathsShown(w);
      QTest::mouseClick(w->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
    });
    MenuEntry(a.main()->mnuHelp, "mnuAbout")->trigger();
    QVERIFY(*ran);
    QCOMPARE(caught.size(), 1);
    QVERIFY(caught[0].endsWith(QString::fromStdString(a.home.path())));
    QVERIFY(clean.isEmpty());
    // Rows of a list are read too.
    QWidget window;
    auto* rows = new QTreeWidget(&window);
    rows->addTopLevelItem(new QTreeWidgetItem({"/home/author/Sounds/beep.wav", "OK"}));
    QVERIFY(TempPathsShown(&window).isEmpty());
    rows->addTopLevelItem(new QTreeWidgetItem({QDir::tempPath() + "/Sounds/x.wav", "OK"}));
    QCOMPARE(TempPathsShown(&window).size(), 1);
  }

  void theHelpMenuTextsAreInTheAboutSection() {
    std::set<std::string> names;
    for (const UiText& t : frmAbout::Texts()) {
      QVERIFY(!t.text.empty());
      names.insert(t.control);
    }
    QCOMPARE(names.size(), frmAbout::Texts().size());
    QVERIFY(names.count("mnuHelpContents") && names.count("mnuAbout"));
    names.clear();
    for (const UiText& t : frmWav2Au::Texts()) names.insert(t.control);
    QCOMPARE(names.size(), frmWav2Au::Texts().size());
  }

  // --- The converter window ---

  void theConverterWindowConvertsTwoWavFilesAndTellsWhyABrokenOneFailed() {
    if (!std::filesystem::exists(kTool)) QSKIP("w2a was not built (no libsndfile)");
    App a;
    a.program->Main("");
    std::filesystem::create_directories(a.home.path() + "/Tools/W2A");
    std::filesystem::create_symlink(kTool, a.home.path() + "/Tools/W2A/w2a");
    PosixLauncher launcher;
    a.env().launcher = &launcher;
    test::TempDir sounds;
    sounds.write("one.wav", Wav(16, std::string(800, '\x02')));
    sounds.write("two.wav", Wav(8, std::string(400, '\x90')));
    sounds.write("broken.wav", "RIFF and nothing more");

    a.main()->mnuWav2Au->trigger();
    auto* w = a.main()->findChild<frmWav2Au*>("frmWav2Au");
    QVERIFY(w);
    QVERIFY(w->isVisible());
    QCOMPARE(w->windowTitle(), QString("Wav to Au Converter"));
    auto ran = WhenWindow("OpenFileDialog", [&](QWidget* d) {
      auto* dlg = qobject_cast<QFileDialog*>(d);
      QVERIFY(dlg);
      QCOMPARE(dlg->fileMode(), QFileDialog::ExistingFiles);
      dlg->setDirectory(QString::fromStdString(sounds.path()));
      ChooseFile(d, "\"one.wav\" \"two.wav\" \"broken.wav\"");
    });
    QTest::mouseClick(w->btnChoose, Qt::LeftButton);
    QVERIFY(*ran);

    QCOMPARE(w->lstResults->topLevelItemCount(), 3);
    QMap<QString, QString> results;
    for (int r = 0; r < 3; ++r) {
      QTreeWidgetItem* row = w->lstResults->topLevelItem(r);
      results[QFileInfo(row->text(0)).fileName()] = row->text(1);
    }
    QCOMPARE(results["one.wav"], QString("OK: one.au"));
    QCOMPARE(results["two.wav"], QString("OK: two.au"));
    QVERIFY2(results["broken.wav"].startsWith("Failed: "), qPrintable(results["broken.wav"]));
    QVERIFY(results["broken.wav"].size() > QString("Failed: ").size());
    QVERIFY(std::filesystem::file_size(sounds.file("one.au")) > 24);
    QVERIFY(std::filesystem::file_size(sounds.file("two.au")) > 24);
    QVERIFY(!std::filesystem::exists(sounds.file("broken.au")));
    // One window: the menu shows the same one again.
    a.main()->mnuWav2Au->trigger();
    QCOMPARE(a.main()->findChildren<QWidget*>("frmWav2Au").size(), qsizetype{1});
  }

  void aMissingConverterIsToldOnItsRow() {
    App a;
    a.program->Main("");
    PosixLauncher launcher;
    a.env().launcher = &launcher;
    a.main()->mnuWav2Au->trigger();
    auto* w = a.main()->findChild<frmWav2Au*>("frmWav2Au");
    QVERIFY(w);
    w->Convert({a.home.path() + "/x.wav"});
    QCOMPARE(w->lstResults->topLevelItemCount(), 1);
    QCOMPARE(w->lstResults->topLevelItem(0)->text(1),
             QString::fromStdString("Failed: " + ConverterPath(a.env()) +
                                    ": No such file or directory"));
  }

  void theConverterWindowsReadMeOpensTheReadMe() {
    App a;
    a.program->Main("");
    OpenRecorder shell;
    a.env().launcher = &shell;
    a.main()->mnuWav2Au->trigger();
    auto* w = a.main()->findChild<frmWav2Au*>("frmWav2Au");
    QVERIFY(w);
    QTest::mouseClick(w->btnReadMe, Qt::LeftButton);
    QCOMPARE(shell.opened.size(), size_t{1});
    QCOMPARE(shell.opened[0], a.home.path() + "/Tools/Wav2Au_ReadMe.txt");
    // The menu's read-me entry goes to the same file.
    a.main()->mnuWav2Au_ReadMe->trigger();
    QCOMPARE(shell.opened.size(), size_t{2});
    QCOMPARE(shell.opened[1], shell.opened[0]);
    QVERIFY(shell.ran.empty());
  }
};

QTEST_MAIN(HelpToolsTest)
#include "test_help_tools.moc"
