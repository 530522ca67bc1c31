// The publishing commands through the windows a person answers: the save
// dialog of a build, the occupied-folder warning, the closing dialog, the
// auto-replace check list and its report, the export dialog, the sound
// picker's notice and the tools menu's converter entries.
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QtTest>

#include <filesystem>

#include "core/conv.h"
#include "core/launcher.h"
#include "core/settings.h"
#include "generate/html_generator.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "properties/frm_my_msg_box.h"
#include "properties/frm_publish_dialogs.h"
#include "properties/qt_prompter.h"
#include "publish/build.h"
#include "publish/export.h"
#include "publish/replace.h"
#include "publish/sound.h"
#include "tests/app/app_fixture.h"
#include "tests/app/window_driver.h"

using namespace kp;
using namespace kp::apptest;

namespace {

class RecordingLauncher : public Launcher {
 public:
  struct Call {
    std::string verb, program;
    std::vector<std::string> args;
  };
  IoStatus Open(const std::string& path) override { return Record({"open", "", {path}}); }
  IoStatus Explore(const std::string& folder) override {
    return Record({"explore", "", {folder}});
  }
  IoStatus Run(const std::string& program, const std::vector<std::string>& args, bool,
               const std::string&) override {
    return Record({"run", program, args});
  }
  std::vector<Call> calls;
  bool fail = false;

 private:
  IoStatus Record(Call c) {
    calls.push_back(std::move(c));
    return fail ? IoStatus::Fail("No such file or directory") : IoStatus{};
  }
};

class CopyCountingFs : public test::FaultFs {
 public:
  IoStatus CopyFile(const std::string& from, const std::string& to) override {
    copies.emplace_back(from, to);
    return test::FaultFs::CopyFile(from, to);
  }
  std::vector<std::pair<std::string, std::string>> copies;
};

// The HTML window's part of publishing, with the program's real windows.
struct Desk {
  test::TempDir home;
  CopyCountingFs fs;
  MemorySettings store;
  QtPrompter prompter;
  ProjectView view;
  RecordingLauncher launcher;
  Env env{fs, store, prompter, view, home.path(), &launcher};
  Project p;
  GeneratorState st;
  CodeBox txtHTML;
  HtmlWindowState win;
  PublishState state;
  PublishContext c{p, env, st, txtHTML, win, state};

  Desk() {
    p.AllocateButtons();
    SetDefaultMainParams(p);
    p.sProjectName = "MyProject";
    for (const char* f : {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar"})
      test::WriteBytes(home.file(f), f);
    Generate();
  }
  void Generate() {
    st.bAddJAR = true;
    MarkHTMLStale(st);
    HTMLWindowActivate(p, env, st, txtHTML);
  }
  int AddButton(const std::string& name) {
    const int i = ++p.ButtonCount;
    tButton& b = p.button(i);
    b.sBName = name;
    b.x = static_cast<i16>(10 + 110 * (i - 1));
    b.y = 10;
    b.Width = 100;
    b.Height = 30;
    for (int s = 1; s <= 3; ++s) {
      b.Label[s] = name;
      b.Font[s] = "Arial";
      b.FontSize[s] = 10;
    }
    return i;
  }
  std::string Param(const std::string& key) {
    return store.Get(kSecParams, key).value_or("");
  }
};

bool Exists(const std::string& path) { return std::filesystem::exists(path); }

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Every path below a folder, sorted.
QStringList Tree(const std::string& folder) {
  QStringList paths;
  for (const auto& e : std::filesystem::recursive_directory_iterator(folder))
    paths << Q(e.path().string());
  paths.sort();
  return paths;
}

QWidget* VisibleWindow(const char* name) {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == name && w->isVisible()) return w;
  return nullptr;
}

std::string Folder(const std::string& path) {
  std::filesystem::create_directories(path);
  return path;
}

// A page with three applets of the form the generator writes.
std::string ThreeApplets() {
  return "<html>\n<body>\n"
         "<applet code=\"a1\">\n<param name=\"p\" value=\"1\">\n</applet>\n"
         "<p>between one and two, long enough to keep the restart position in order "
         "....................................................................</p>\n"
         "<applet code=\"a2\">\n<param name=\"p\" value=\"2\">\n</applet>\n"
         "<p>between two and three, long enough to keep the restart position in order "
         "....................................................................</p>\n"
         "<applet code=\"a3\">\n<param name=\"p\" value=\"3\">\n</applet>\n"
         "</body>\n</html>\n";
}

}  // namespace

class PublishDialogsTest : public WatchedTest {
  Q_OBJECT

 private slots:
  // --- Building the applet folder ---

  void cancellingTheSaveDialogChangesNothing() {
    Desk d;
    QString title, file, folder;
    QStringList filters;
    QString suffix;
    bool save = false, confirms = false;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      auto* dlg = qobject_cast<QFileDialog*>(w);
      save = dlg->acceptMode() == QFileDialog::AcceptSave;
      confirms = !dlg->testOption(QFileDialog::DontConfirmOverwrite);
      folder = dlg->directory().absolutePath();
      file = dlg->selectedFiles().value(0);
      filters = dlg->nameFilters();
      suffix = dlg->defaultSuffix();
      CancelFile(w);
    });
    BuildReport r = BuildApplet(d.c, true);
    QVERIFY(*ran);
    QVERIFY(r.result == BuildResult::Cancelled);
    QVERIFY(save);
    QVERIFY(confirms);
    // The proposed folder is not there yet: the dialog stands in the nearest
    // folder that is, and the name carries the rest.
    QCOMPARE(folder, Q(d.home.path()));
    QCOMPARE(file, Q(d.home.path() + "/Projects/MyProject/MyProject.html"));
    QCOMPARE(filters, (QStringList{"HTML (*.htm *.html)", "All Files (*)"}));
    QCOMPARE(suffix, QString("html"));
    // Not even the output folder moved.
    QCOMPARE(d.p.sOutputFolder, std::string());
    QCOMPARE(d.p.sOutputHTML, std::string());
    QVERIFY(!Exists(d.home.path() + "/Projects"));
    QVERIFY(d.fs.copies.empty());
  }

  void theSaveAppletAndExportDialogsCancelledLeaveTheFolderTreeAsItWas() {
    App a;
    a.program->Main("");
    a.prompter.realFileDialogs = true;
    const auto before = Tree(a.home.path());
    int dialogs = 0;
    for (int round = 0; round < 2; ++round) {
      auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
        ++dialogs;
        CancelFile(w);
      });
      if (round == 0) {
        // "&Save Applet..." in the HTML window.
        a.main()->btnBuild->click();
        QWidget* html = nullptr;
        QTRY_VERIFY((html = VisibleWindow("frmHTML")) != nullptr);
        auto* save = html->findChild<QPushButton*>("btnBuild");
        QVERIFY(save);
        save->click();
        html->close();
      } else {
        a.main()->mnuExport->trigger();
      }
      QVERIFY(*ran);
    }
    QCOMPARE(dialogs, 2);
    QCOMPARE(Tree(a.home.path()), before);
    QVERIFY(!Exists(a.home.path() + "/Export"));
  }

  void acceptingTheProposedPageMakesItsFolderThen() {
    Desk d;
    const std::string folder = d.home.path() + "/Projects/MyProject";
    d.store.Set(kSecParams, "DontShowReadyForUpload", "1");
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      auto* box = w->findChild<QDialogButtonBox*>("buttonBox");
      QVERIFY(box);
      QTest::mouseClick(box->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    BuildReport r = BuildApplet(d.c, false);
    QVERIFY(*ran);
    QVERIFY(r.result == BuildResult::Built);
    QVERIFY(std::filesystem::is_directory(folder));
    QVERIFY(Exists(folder + "/MyProject.html"));
    QCOMPARE(d.p.sOutputFolder, folder + "/");
  }

  void noOnTheFolderWarningBringsTheSaveDialogBack() {
    Desk d;
    const std::string out = Folder(d.home.path() + "/site");
    test::WriteBytes(out + "/old.txt", "old");
    int dialogs = 0;
    QString title, message, check;
    bool checked = false;
    int beeps = 0;
    QString secondFolder;
    auto first = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      ++dialogs;
      WhenWindow("frmSomeFilesWarning", [&](QWidget* warn) {
        title = warn->windowTitle();
        message = Control<QLabel>(warn, "txtMessage")->text();
        check = Control<QCheckBox>(warn, "chkShowNextTime")->text();
        checked = Control<QCheckBox>(warn, "chkShowNextTime")->isChecked();
        beeps = static_cast<frmSomeFilesWarning*>(warn)->beeps;
        WhenWindow("SaveFileDialog", [&](QWidget* again) {
          ++dialogs;
          secondFolder = qobject_cast<QFileDialog*>(again)->directory().absolutePath();
          CancelFile(again);
        });
        Click(warn, "btnNo");
      });
      ChooseFile(w, Q(out + "/index.html"));
    });
    BuildReport r = BuildApplet(d.c, true);
    QVERIFY(*first);
    QCOMPARE(dialogs, 2);
    QVERIFY(r.result == BuildResult::Cancelled);
    QCOMPARE(title, QString("Warning. Kestrel Pane 2.02"));
    QCOMPARE(message, QString("This folder already contains files.\nSuch actions may overwrite "
                              "some of them.\nAre you sure you want to proceed?"));
    QCOMPARE(check, QString("show this warning next time."));
    QVERIFY(checked);
    QCOMPARE(beeps, 1);
    // The dialog came back where the user had been.
    QCOMPARE(secondFolder, Q(out));
    QVERIFY(!d.state.bSomeFilesProceed);
    QVERIFY(!Exists(out + "/index.html"));
    QCOMPARE(d.p.sOutputHTML, std::string());
    QCOMPARE(d.Param("DontShowSomeFilesWarning"), std::string());
  }

  void yesOnTheFolderWarningBuildsAndTheClosingDialogOpensTheFolder() {
    Desk d;
    const std::string out = Folder(d.home.path() + "/site");
    test::WriteBytes(out + "/old.txt", "old");
    QString readyTitle, readyMessage, readyNote;
    bool stayedOpen = false;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      WhenWindow("frmSomeFilesWarning", [&](QWidget* warn) {
        WhenWindow("frmReadyForUpload", [&](QWidget* ready) {
          readyTitle = ready->windowTitle();
          readyMessage = Control<QLabel>(ready, "lblMessage")->text();
          readyNote = Control<QLabel>(ready, "lblCaseSensitive")->text();
          Click(ready, "btnExplore");
          stayedOpen = ready->isVisible();
          Click(ready, "btnOK");
        });
        Click(warn, "btnYes");
      });
      ChooseFile(w, Q(out + "/index"));
    });
    BuildReport r = BuildApplet(d.c, true);
    QVERIFY(*ran);
    QVERIFY(r.result == BuildResult::Built);
    // The default extension was added to the typed name.
    QCOMPARE(r.page, out + "/index.html");
    QVERIFY(Exists(out + "/index.html"));
    QVERIFY(Exists(out + "/KestrelPane.class"));
    QVERIFY(d.state.bSomeFilesProceed);
    QCOMPARE(readyTitle, QString("Applet built. Kestrel Pane 2.02"));
    QCOMPARE(readyMessage, QString("The applet was successfully built, and is ready for upload."));
    QCOMPARE(readyNote,
             QString("Note: everything is Case-Sensitive, so if your file is recorded as "
                     "\"MyImage.gif\" and you upload it as \"MYimaGe.GIF\" it won't work."));
    QVERIFY(stayedOpen);
    QCOMPARE(d.launcher.calls.size(), size_t{1});
    QCOMPARE(d.launcher.calls[0].verb, std::string("explore"));
    QCOMPARE(d.launcher.calls[0].args[0], GetFolder(out + "/index.html"));
    // Both boxes were left ticked: nothing was written.
    QCOMPARE(d.Param("DontShowReadyForUpload"), std::string());
    QCOMPARE(d.Param("DontShowSomeFilesWarning"), std::string());
  }

  void untickingTheWarningsBoxesTurnsThemOff() {
    Desk d;
    const std::string out = Folder(d.home.path() + "/site");
    test::WriteBytes(out + "/old.txt", "old");
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      WhenWindow("frmSomeFilesWarning", [&](QWidget* warn) {
        WhenWindow("frmReadyForUpload", [&](QWidget* ready) {
          Tick(ready, "chkShowNextTime");
          Click(ready, "btnOK");
        });
        Tick(warn, "chkShowNextTime");
        Click(warn, "btnYes");
      });
      ChooseFile(w, Q(out + "/index.html"));
    });
    QVERIFY(BuildApplet(d.c, true).result == BuildResult::Built);
    QVERIFY(*ran);
    QCOMPARE(d.Param("DontShowSomeFilesWarning"), std::string("1"));
    QCOMPARE(d.Param("DontShowReadyForUpload"), std::string("1"));

    // The next build into the same folder asks nothing after the dialog.
    auto again = WhenWindow("SaveFileDialog", [&](QWidget* w) { ChooseFile(w, Q(out + "/two.html")); });
    QVERIFY(BuildApplet(d.c, true).result == BuildResult::Built);
    QVERIFY(*again);
    QVERIFY(Exists(out + "/two.html"));
  }

  void escapeOnTheFolderWarningAnswersNo() {
    Desk d;
    const std::string out = Folder(d.home.path() + "/site");
    test::WriteBytes(out + "/old.txt", "old");
    int dialogs = 0;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      ++dialogs;
      WhenWindow("frmSomeFilesWarning", [&](QWidget* warn) {
        WhenWindow("SaveFileDialog", [&](QWidget* again) {
          ++dialogs;
          CancelFile(again);
        });
        QTest::keyClick(warn, Qt::Key_Escape);
      });
      ChooseFile(w, Q(out + "/index.html"));
    });
    BuildApplet(d.c, true);
    QVERIFY(*ran);
    QCOMPARE(dialogs, 2);
    QVERIFY(!Exists(out + "/index.html"));
  }

  void saveHtmlOnlyNeverWarnsCopiesNothingButShowsTheClosingDialog() {
    Desk d;
    const std::string out = Folder(d.home.path() + "/site");
    test::WriteBytes(out + "/old.txt", "old");
    QStringList windows;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      // Whatever comes next is recorded; only the closing dialog is expected.
      auto* timer = new QTimer;
      QObject::connect(timer, &QTimer::timeout, [&windows, timer] {
        QWidget* m = QApplication::activeModalWidget();
        if (!m || !m->isVisible() || m->objectName() == "SaveFileDialog") return;
        windows << m->objectName();
        timer->stop();
        timer->deleteLater();
        if (m->objectName() == "frmReadyForUpload") Click(m, "btnOK");
      });
      timer->start(10);
      ChooseFile(w, Q(out + "/index.html"));
    });
    BuildReport r = BuildApplet(d.c, false);
    QVERIFY(*ran);
    QVERIFY(r.result == BuildResult::Built);
    QCOMPARE(windows, QStringList{"frmReadyForUpload"});
    QVERIFY(Exists(out + "/index.html"));
    QVERIFY(d.fs.copies.empty());
    QVERIFY(!Exists(out + "/KestrelPane.class"));
  }

  void replacingAnExistingPageMustBeConfirmed() {
    Desk d;
    const std::string out = Folder(d.home.path() + "/site");
    test::WriteBytes(out + "/index.html", "mine");
    QString question;
    bool stillOpen = false;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      WhenBox([&](QMessageBox* box) {
        question = box->text();
        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
        QTimer::singleShot(50, [&, w] {
          stillOpen = w->isVisible();
          CancelFile(w);
        });
      });
      ChooseFile(w, Q(out + "/index.html"));
    });
    BuildApplet(d.c, true);
    QVERIFY(*ran);
    QVERIFY(question.contains("index.html"));
    QVERIFY(stillOpen);
    QCOMPARE(test::ReadBytes(out + "/index.html"), std::string("mine"));
  }

  void aPageInAFolderThatIsNotThereIsRefusedByTheDialog() {
    Desk d;
    const std::string missing = d.home.path() + "/nowhere/index.html";
    QString text;
    bool stillOpen = false;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      WhenBox([&](QMessageBox* box) {
        text = box->text();
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTimer::singleShot(50, [&, w] {
          stillOpen = w->isVisible();
          CancelFile(w);
        });
      });
      ChooseFile(w, Q(missing));
    });
    BuildReport r = BuildApplet(d.c, true);
    QVERIFY(*ran);
    QVERIFY(r.result == BuildResult::Cancelled);
    QVERIFY(text.contains(Q(d.home.path() + "/nowhere")));
    QVERIFY(stillOpen);
    QVERIFY(!Exists(missing));
  }

  void copyErrorsOfAServerCodeBaseAreToldUntilCancel() {
    Desk d;
    const std::string media = Folder(d.home.path() + "/media");
    test::WriteBytes(media + "/a.gif", "a");
    test::WriteBytes(media + "/b.gif", "b");
    const int i = d.AddButton("One");
    d.p.button(i).Image[1] = media + "/a.gif";
    d.p.button(i).Image[2] = media + "/b.gif";
    d.p.CodeBase = "http://server/code/";
    d.Generate();
    const std::string out = Folder(d.home.path() + "/site");
    QStringList boxes;
    QString notice;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      WhenBox([&](QMessageBox* box) {
        boxes << box->text();
        WhenWindow("frmMyMsgBox", [&](QWidget* n) {
          notice = Control<QPlainTextEdit>(n, "txtMessage")->toPlainText();
          WhenWindow("frmReadyForUpload", [&](QWidget* ready) { Click(ready, "btnOK"); });
          Click(n, "btnOK");
        });
        QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
      });
      ChooseFile(w, Q(out + "/index.html"));
    });
    BuildReport r = BuildApplet(d.c, true);
    QVERIFY(*ran);
    QVERIFY(r.result == BuildResult::Built);
    // Two pictures failed (the program's own files failed too, without a
    // word); Cancel in the first box silenced the second.
    int pictures = 0;
    for (const std::string& f : r.media.failures) pictures += f.rfind(media, 0) == 0 ? 1 : 0;
    QCOMPARE(pictures, 2);
    QCOMPARE(r.media.failed, int(r.media.failures.size()));
    QCOMPARE(boxes.size(), 1);
    QVERIFY(boxes[0].startsWith("Can't copy Picture for Button # 1\n\n" + Q(media + "/a.gif")));
    QVERIFY(boxes[0].endsWith("Press Cancel to stop showing error messages."));
    QVERIFY(d.state.bStopCopyMessages);
    QVERIFY(notice.startsWith("Please note:"));
  }

  // --- Replacing applet code in a page ---

  void replaceWithNoSelectionKeepsTheWindowOpen() {
    Desk d;
    const std::string site = Folder(d.home.path() + "/site");
    const std::string page = site + "/page.html";
    test::WriteBytes(page, ThreeApplets());
    d.win.txtAutoReplaceHTML_FileName = page;
    QString title, message, warning, warningTitle, report, reportTitle;
    QStringList rows;
    std::vector<bool> initial;
    bool openAfterWarning = false, openUnderReport = false, closedAfter = false;
    auto ran = WhenWindow("frmAutoRepHTML_2", [&](QWidget* shown) {
      // Held weakly: a list that closed and came back would be another window.
      QPointer<QWidget> w = shown;
      title = w->windowTitle();
      message = Control<QLabel>(w, "txtMSG")->text();
      auto* lst = Control<QListWidget>(w, "lstApplets");
      for (int r = 0; r < lst->count(); ++r) {
        rows << lst->item(r)->text();
        initial.push_back(lst->item(r)->checkState() == Qt::Checked);
      }
      Click(w, "btnDeselectAll");
      WhenBox([&, w, lst](QMessageBox* box) {
        warning = box->text();
        warningTitle = box->windowTitle();
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTimer::singleShot(50, [&, w, lst] {
          openAfterWarning = w && w->isVisible() && QApplication::activeModalWidget() == w;
          if (!openAfterWarning) {
            if (auto* again = QApplication::activeModalWidget()) again->close();
            return;
          }
          lst->item(1)->setCheckState(Qt::Checked);
          WhenWindow("frmAutoRepHTML_MSG", [&, w](QWidget* msg) {
            reportTitle = msg->windowTitle();
            report = Control<QPlainTextEdit>(msg, "txtMessage")->toPlainText();
            openUnderReport = w->isVisible();
            Click(msg, "btnOK");
          });
          Click(w, "btnReplace");
          closedAfter = !w->isVisible();
        });
      });
      Click(w, "btnReplace");
    });
    QVERIFY(btnAutoReplaceHTML_Click(d.c));
    QVERIFY(*ran);
    QCOMPARE(title, QString("Replacing Applet Code in existing HTML file"));
    QCOMPARE(message, QString("Three applets found in: page.html"));
    QCOMPARE(rows, (QStringList{"<applet code=\"a1\">...", "<applet code=\"a2\">...",
                                "<applet code=\"a3\">..."}));
    QCOMPARE(initial, (std::vector<bool>{true, false, false}));
    QCOMPARE(warning, QString("Please check at least one applet."));
    QCOMPARE(warningTitle, QString("No Applets Selected for Replace"));
    QVERIFY(openAfterWarning);
    QVERIFY(openUnderReport);
    QVERIFY(closedAfter);
    QCOMPARE(reportTitle, QString("Operation Completed"));
    QVERIFY(report.startsWith("File: \n\"" + Q(page) + "\"\n is updated and is ready for upload."));
    QVERIFY(report.contains("Total applets found: 3. Replaced applets: 1."));
    QVERIFY(report.contains("Original HTML file saved as: \n\"" + Q(site + "/page_backup.html") + "\""));
    // Only the second applet was replaced.
    const std::string now = test::ReadBytes(page);
    QVERIFY(now.find("<applet code=\"a1\">") != std::string::npos);
    QVERIFY(now.find("<applet code=\"a2\">") == std::string::npos);
    QVERIFY(now.find("<applet code=\"a3\">") != std::string::npos);
    QCOMPARE(test::ReadBytes(site + "/page_backup.html"), ThreeApplets());
  }

  void cancelInTheCheckListChangesNothingAfterSelectAll() {
    Desk d;
    const std::string page = Folder(d.home.path() + "/site") + "/page.html";
    test::WriteBytes(page, ThreeApplets());
    d.win.txtAutoReplaceHTML_FileName = page;
    std::vector<bool> ticks;
    auto ran = WhenWindow("frmAutoRepHTML_2", [&](QWidget* w) {
      Click(w, "btnSelectAll");
      ticks = static_cast<frmAutoRepHTML_2*>(w)->Ticks();
      Click(w, "btnCANCEL");
    });
    QVERIFY(!btnAutoReplaceHTML_Click(d.c));
    QVERIFY(*ran);
    QCOMPARE(ticks, (std::vector<bool>{true, true, true}));
    QCOMPARE(test::ReadBytes(page), ThreeApplets());
    QVERIFY(!Exists(d.home.path() + "/site/page_backup.html"));
  }

  void theReplaceReportOpensThePagesFolderAndRemembersItsBox() {
    Desk d;
    const std::string site = Folder(d.home.path() + "/site");
    const std::string page = site + "/page.html";
    test::WriteBytes(page, ThreeApplets());
    d.win.txtAutoReplaceHTML_FileName = page;
    bool stayedOpen = false;
    auto ran = WhenWindow("frmAutoRepHTML_2", [&](QWidget* w) {
      WhenWindow("frmAutoRepHTML_MSG", [&](QWidget* msg) {
        QCOMPARE(Control<QCheckBox>(msg, "chkShowNextTime")->text(),
                 QString("show this message next time."));
        Click(msg, "btnExplore");
        stayedOpen = msg->isVisible();
        Tick(msg, "chkShowNextTime");
        Click(msg, "btnOK");
      });
      Click(w, "btnReplace");
    });
    QVERIFY(btnAutoReplaceHTML_Click(d.c));
    QVERIFY(*ran);
    QVERIFY(stayedOpen);
    QCOMPARE(d.launcher.calls.size(), size_t{1});
    QCOMPARE(d.launcher.calls[0].verb, std::string("explore"));
    QCOMPARE(d.launcher.calls[0].args[0], GetFolder(page));
    QCOMPARE(d.Param("DontShowAutoRepConfirm"), std::string("1"));
  }

  void aPageWithoutAppletsSaysNoAndReplaceKeepsTheWindowOpen() {
    Desk d;
    const std::string page = Folder(d.home.path() + "/site") + "/plain.html";
    test::WriteBytes(page, "<html><body>nothing</body></html>");
    d.win.txtAutoReplaceHTML_FileName = page;
    QString message, warning;
    bool stillOpen = false;
    auto ran = WhenWindow("frmAutoRepHTML_2", [&](QWidget* w) {
      message = Control<QLabel>(w, "txtMSG")->text();
      WhenBox([&, w](QMessageBox* box) {
        warning = box->text();
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTimer::singleShot(50, [&, w] {
          stillOpen = w->isVisible();
          Click(w, "btnCANCEL");
        });
      });
      Click(w, "btnReplace");
    });
    QVERIFY(!btnAutoReplaceHTML_Click(d.c));
    QVERIFY(*ran);
    QCOMPARE(message, QString("No applets found in: plain.html"));
    QCOMPARE(warning, QString("I'm sorry... I wasn't able to find any existing applets in this "
                              "file.\nYou have to insert your applet to this file manually."));
    QVERIFY(stillOpen);
  }

  void thePagePickerOffersHtmlPagesAndFillsTheBox() {
    Desk d;
    const std::string site = Folder(d.home.path() + "/site");
    test::WriteBytes(site + "/page.html", ThreeApplets());
    QStringList filters;
    auto ran = WhenWindow("OpenFileDialog", [&](QWidget* w) {
      filters = qobject_cast<QFileDialog*>(w)->nameFilters();
      ChooseFile(w, Q(site + "/page.html"));
    });
    btnGetAutoReplaceHTML_filename_Click(d.c);
    QVERIFY(*ran);
    QCOMPARE(filters, (QStringList{"HTML (*.htm *.html)", "All Files (*)"}));
    QCOMPARE(d.win.txtAutoReplaceHTML_FileName, site + "/page.html");
    QCOMPARE(d.p.sOutputHTML, site + "/page.html");
    QCOMPARE(d.Param("sLastReplacedFolder"), GetFolder(site + "/page.html"));
  }

  // --- Exporting a project ---

  void exportingAnUnsavedProjectProposesItsNameAndCancelWritesNothing() {
    App a;
    a.program->Main("");
    a.prompter.realFileDialogs = true;
    a.p().sProjectFile.clear();
    a.p().sProjectName = "Walk";
    QString file, folder;
    QStringList filters;
    bool menuOff = false;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      auto* dlg = qobject_cast<QFileDialog*>(w);
      file = dlg->selectedFiles().value(0);
      folder = dlg->directory().absolutePath();
      filters = dlg->nameFilters();
      menuOff = !a.main()->mnuFile->menuAction()->isEnabled();
      CancelFile(w);
    });
    QVERIFY(a.main()->mnuExport->isEnabled());
    a.main()->mnuExport->trigger();
    QVERIFY(*ran);
    QCOMPARE(file, Q(a.home.path() + "/Export/Walk.kpn"));
    QCOMPARE(folder, Q(a.home.path()));
    QVERIFY(!Exists(a.home.path() + "/Export"));
    QCOMPARE(filters, (QStringList{"Kestrel Pane Projects (*.kpn)", "All Files (*)"}));
    QVERIFY(menuOff);
    QVERIFY(a.main()->mnuFile->menuAction()->isEnabled());
    QVERIFY(!a.store.Get(kSecParams, "sExportFolder"));
    QVERIFY(!Exists(a.home.path() + "/Export/Walk.kpn"));
  }

  void noOnTheExportWarningBringsTheDialogBack() {
    App a;
    a.program->Main("");
    a.prompter.realFileDialogs = true;
    const std::string out = Folder(a.home.path() + "/carry");
    test::WriteBytes(out + "/old.txt", "old");
    int dialogs = 0;
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      ++dialogs;
      WhenWindow("frmSomeFilesWarning", [&](QWidget* warn) {
        WhenWindow("SaveFileDialog", [&](QWidget* again) {
          ++dialogs;
          WhenWindow("frmSomeFilesWarning", [&](QWidget* warn2) { Click(warn2, "btnYes"); });
          ChooseFile(again, Q(out + "/Carried.kpn"));
        });
        Click(warn, "btnNo");
      });
      ChooseFile(w, Q(out + "/Carried.kpn"));
    });
    a.main()->mnuExport_Click();
    QVERIFY(*ran);
    QCOMPARE(dialogs, 2);
    QVERIFY(Exists(out + "/Carried.kpn"));
    QCOMPARE(a.store.Get(kSecParams, "sExportFolder").value_or(""), GetFolder(out + "/Carried.kpn"));
    QVERIFY(a.main()->mnuFile->menuAction()->isEnabled());
  }

  void exportingIntoTheFolderThatHoldsTheMediaCopiesNothing() {
    Desk d;
    const std::string media = Folder(d.home.path() + "/media");
    test::WriteBytes(media + "/a.gif", "a");
    test::WriteBytes(media + "/s.au", "s");
    const int i = d.AddButton("One");
    d.p.button(i).Image[1] = media + "/a.gif";
    d.p.button(i).Snd[2] = media + "/s.au";
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) {
      WhenWindow("frmSomeFilesWarning", [&](QWidget* warn) { Click(warn, "btnYes"); });
      ChooseFile(w, Q(media + "/Moved.kpn"));
    });
    ExportReport r = mnuExport_Click(d.c);
    QVERIFY(*ran);
    QVERIFY(r.saved);
    QCOMPARE(r.media.copied, 0);
    QCOMPARE(r.media.skipped, 2);
    QVERIFY(d.fs.copies.empty());
  }

  void twoButtonsWithImagesOfOneFileNameEndAsOneExportedFile() {
    Desk d;
    const std::string one = Folder(d.home.path() + "/one");
    const std::string two = Folder(d.home.path() + "/two");
    test::WriteBytes(one + "/pic.gif", "first");
    test::WriteBytes(two + "/pic.gif", "second");
    d.p.button(d.AddButton("One")).Image[1] = one + "/pic.gif";
    d.p.button(d.AddButton("Two")).Image[1] = two + "/pic.gif";
    const std::string out = Folder(d.home.path() + "/out");
    auto ran = WhenWindow("SaveFileDialog", [&](QWidget* w) { ChooseFile(w, Q(out + "/P.kpn")); });
    ExportReport r = mnuExport_Click(d.c);
    QVERIFY(*ran);
    QCOMPARE(r.media.copied, 2);
    std::vector<std::string> names;
    for (auto& e : std::filesystem::directory_iterator(out)) names.push_back(e.path().filename());
    std::sort(names.begin(), names.end());
    QCOMPARE(names, (std::vector<std::string>{"P.kpn", "pic.gif"}));
    QCOMPARE(test::ReadBytes(out + "/pic.gif"), std::string("second"));
  }

  // --- Sound conversion ---

  void aPickedWavShowsTheNoticeStartsTheConverterAndBecomesAu() {
    App a;
    a.program->Main("");
    RecordingLauncher launcher;
    a.env().launcher = &launcher;
    a.prompter.realFileDialogs = true;
    const std::string wav = a.home.path() + "/Projects/A.WAV";
    test::WriteBytes(wav, "RIFF");
    auto* panel = static_cast<ButtonPanel*>(a.main()->panel);
    QString title, text, check;
    auto ran = WhenWindow("OpenFileDialog", [&](QWidget* w) {
      WhenWindow("frmMyMsgBox", [&](QWidget* n) {
        title = n->windowTitle();
        text = Control<QPlainTextEdit>(n, "txtMessage")->toPlainText();
        check = Control<QCheckBox>(n, "chkBox")->text();
        Click(n, "btnOK");
      });
      ChooseFile(w, Q(wav));
    });
    QTest::mouseClick(panel->btnGetSound, Qt::LeftButton);
    QVERIFY(*ran);
    QCOMPARE(title, QString("Wav to Au convertion"));
    QCOMPARE(text, QString("Kestrel Pane will run W2A utility to convert WAV file to AU type, "
                           "because Java does not support WAV files.\n\nOnly WAV files in PCM "
                           "format can be converted.\n\nPlease see Tools/W2A/ReadMe.txt for "
                           "more information."));
    QCOMPARE(check, QString("Show this message next time"));
    QCOMPARE(launcher.calls.size(), size_t{1});
    QCOMPARE(launcher.calls[0].program, ConverterPath(a.env()));
    QCOMPARE(launcher.calls[0].args, std::vector<std::string>{wav});
    QCOMPARE(panel->txtSound->text(), Q(a.home.path() + "/Projects/A.au"));
    QCOMPARE(a.p().button(1).Snd[1], a.home.path() + "/Projects/A.au");
  }

  void aPickedAuStartsNothingAndShowsNothing() {
    App a;
    a.program->Main("");
    RecordingLauncher launcher;
    a.env().launcher = &launcher;
    a.prompter.realFileDialogs = true;
    const std::string au = a.home.path() + "/Projects/b.au";
    test::WriteBytes(au, ".snd");
    auto* panel = static_cast<ButtonPanel*>(a.main()->panel);
    QStringList after;
    auto ran = WhenWindow("OpenFileDialog", [&](QWidget* w) {
      auto* timer = new QTimer;
      QObject::connect(timer, &QTimer::timeout, [&after, timer] {
        QWidget* m = QApplication::activeModalWidget();
        if (m && m->isVisible() && m->objectName() != "OpenFileDialog") {
          after << m->objectName();
          if (auto* d = qobject_cast<QDialog*>(m)) d->reject();
        }
      });
      timer->start(10);
      QTimer::singleShot(400, timer, [timer] { timer->stop(); timer->deleteLater(); });
      ChooseFile(w, Q(au));
    });
    QTest::mouseClick(panel->btnGetSound, Qt::LeftButton);
    QVERIFY(*ran);
    QTest::qWait(450);
    QVERIFY(after.isEmpty());
    QVERIFY(launcher.calls.empty());
    QCOMPARE(panel->txtSound->text(), Q(au));
  }

  void withTheNoticeSwitchedOffTheConversionRunsWithoutIt() {
    App a;
    a.program->Main("");
    RecordingLauncher launcher;
    a.env().launcher = &launcher;
    a.prompter.realFileDialogs = true;
    const std::string wav = a.home.path() + "/Projects/c.wav";
    test::WriteBytes(wav, "RIFF");
    auto* panel = static_cast<ButtonPanel*>(a.main()->panel);

    // The notice's box unticked once: the setting goes to "0".
    auto first = WhenWindow("OpenFileDialog", [&](QWidget* w) {
      WhenWindow("frmMyMsgBox", [&](QWidget* n) {
        Tick(n, "chkBox");
        Click(n, "btnOK");
      });
      ChooseFile(w, Q(wav));
    });
    QTest::mouseClick(panel->btnGetSound, Qt::LeftButton);
    QVERIFY(*first);
    QCOMPARE(a.store.Get(kSecParams, "WAV2AU_Auto_Convertion").value_or(""), std::string("0"));

    bool noticeShown = false;
    auto second = WhenWindow("OpenFileDialog", [&](QWidget* w) {
      WhenWindow("frmMyMsgBox", [&](QWidget* n) {
        noticeShown = true;
        Click(n, "btnOK");
      }, nullptr, 400);
      ChooseFile(w, Q(wav));
    });
    QTest::mouseClick(panel->btnGetSound, Qt::LeftButton);
    QVERIFY(*second);
    QTest::qWait(450);
    QVERIFY(!noticeShown);
    QCOMPARE(launcher.calls.size(), size_t{2});
    QCOMPARE(panel->txtSound->text(), Q(a.home.path() + "/Projects/c.au"));
  }

  void theConverterThatCannotStartIsToldAndTheNameStaysWav() {
    App a;
    a.program->Main("");
    RecordingLauncher launcher;
    launcher.fail = true;
    a.env().launcher = &launcher;
    a.prompter.realFileDialogs = true;
    a.prompter.realBoxes = true;
    a.store.Set(kSecParams, "WAV2AU_Auto_Convertion", "0");
    const std::string wav = a.home.path() + "/Projects/d.wav";
    test::WriteBytes(wav, "RIFF");
    auto* panel = static_cast<ButtonPanel*>(a.main()->panel);
    QString title, text;
    auto ran = WhenWindow("OpenFileDialog", [&](QWidget* w) {
      WhenBox([&](QMessageBox* box) {
        title = box->windowTitle();
        text = box->text();
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
      });
      ChooseFile(w, Q(wav));
    });
    QTest::mouseClick(panel->btnGetSound, Qt::LeftButton);
    QVERIFY(*ran);
    QCOMPARE(title, QString("Error"));
    QCOMPARE(text, QString("There was an error when trying to convert WAV file to AU:\nNo such "
                           "file or directory\n\nPlease see Tools/W2A/ReadMe.txt"));
    QCOMPARE(panel->txtSound->text(), Q(wav));
  }

  void theToolsMenuShowsTheConverterWindowAndOpensItsReadMe() {
    App a;
    a.program->Main("");
    RecordingLauncher launcher;
    a.env().launcher = &launcher;
    QVERIFY(a.main()->mnuTools->actions().contains(a.main()->mnuWav2Au));
    QVERIFY(a.main()->mnuTools->actions().contains(a.main()->mnuWav2Au_ReadMe));
    a.main()->mnuWav2Au->trigger();
    QWidget* converter = a.main()->findChild<QWidget*>("frmWav2Au");
    QVERIFY(converter);
    QVERIFY(converter->isVisible());
    a.main()->mnuWav2Au_ReadMe->trigger();
    // Our own window: no outside tool is started.
    QCOMPARE(launcher.calls.size(), size_t{1});
    QCOMPARE(launcher.calls[0].verb, std::string("open"));
    QCOMPARE(launcher.calls[0].args[0], a.home.path() + "/Tools/Wav2Au_ReadMe.txt");
    QVERIFY(a.prompter.boxes.empty());
  }

  // --- The windows' texts ---

  void theWindowsTextTablesHaveOneEntryAControl() {
    for (const UiTexts* t : {&frmSomeFilesWarning::Texts(), &frmReadyForUpload::Texts(),
                             &frmAutoRepHTML_MSG::Texts(), &frmAutoRepHTML_2::Texts()}) {
      std::set<std::string> names;
      for (const UiText& u : *t) {
        QVERIFY(names.insert(u.control).second);
        QVERIFY(!u.text.empty());
      }
    }
    QCOMPARE(TextOf(frmAutoRepHTML_2::Texts(), "btnDeselectAll"), std::string("Clear All"));
    QCOMPARE(TextOf(frmReadyForUpload::Texts(), "btnOK"), std::string("&Close"));
    QCOMPARE(TextOf(frmAutoRepHTML_MSG::Texts(), "btnOK"), std::string("&Ok"));
  }

  void aWindowWithoutAFormOfItsOwnShowsTheCommandsTextsAndButtons() {
    QtPrompter prompter;
    Dialog d;
    d.name = "frmSomethingElse";
    d.caption = "Caption";
    d.text = "Line one\r\nLine two";
    int actions = 0;
    d.buttons = {{"&First", nullptr}, {"&Act", [&] { ++actions; }}, {"&Last", nullptr}};
    d.checkCaption = "remember";
    d.checked = false;
    QString title, text;
    auto ran = WhenWindow("frmSomethingElse", [&](QWidget* w) {
      title = w->windowTitle();
      text = Control<QLabel>(w, "txtMessage")->text();
      Click(w, "button1");
      Tick(w, "chkShowNextTime");
      Click(w, "button2");
    });
    DialogResult r = prompter.ShowDialog(d);
    QVERIFY(*ran);
    QCOMPARE(title, QString("Caption"));
    QCOMPARE(text, QString("Line one\nLine two"));
    QCOMPARE(actions, 1);
    QCOMPARE(r.button, 2);
    QVERIFY(r.checked);
  }
};

QTEST_MAIN(PublishDialogsTest)
#include "test_publish_dialogs.moc"
