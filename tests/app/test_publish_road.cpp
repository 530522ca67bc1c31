// The road from an opened project to a page ready for upload, with the
// program's real windows and dialogs: the demo is opened, the HTML window
// generates its code, Save Applet builds the folder, a label is changed,
// and the new code is spliced into the page that was built.
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

#include "core/conv.h"
#include "properties/button_panel.h"
#include "publish/build.h"
#include "publish/player.h"
#include "publish/replace.h"
#include "tests/app/html_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// Answers the modal windows in the order they are expected to open. A
// window nobody expected is rejected at once and its title kept.
class ModalScript {
 public:
  struct Step {
    std::string what;
    std::function<bool(QWidget*)> act;  // false: not the window expected
  };

  ModalScript() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Poll(); });
    timer_.start(20);
  }

  void Expect(std::string what, std::function<bool(QWidget*)> act) {
    steps_.push_back({std::move(what), std::move(act)});
  }
  bool Done() const { return steps_.empty(); }

  std::vector<std::string> answered;
  QStringList unexpected;

 private:
  void Poll() {
    QWidget* w = QApplication::activeModalWidget();
    if (!w || !w->isVisible() || w->property("kpAnswered").toBool()) return;
    w->setProperty("kpAnswered", true);
    if (!steps_.empty() && steps_.front().act(w)) {
      answered.push_back(steps_.front().what);
      steps_.pop_front();
      return;
    }
    unexpected.push_back(w->objectName() + ": " + w->windowTitle());
    if (auto* d = qobject_cast<QDialog*>(w)) QTimer::singleShot(0, d, &QDialog::reject);
  }

  QTimer timer_;
  std::deque<Step> steps_;
};

// The file dialog, answered with a path.
std::function<bool(QWidget*)> ChooseFile(const std::string& path) {
  return [path](QWidget* w) {
    auto* fd = qobject_cast<QFileDialog*>(w);
    if (!fd) return false;
    // Typed into the name box, as a user types a whole path there.
    fd->selectFile(QString::fromStdString(path));
    if (auto* name = fd->findChild<QLineEdit*>("fileNameEdit"))
      name->setText(QString::fromStdString(path));
    // Accept as the dialog's own button does, through the dialog's checks.
    QDialog* d = fd;
    QTimer::singleShot(0, d, [d] { d->accept(); });
    return true;
  };
}

QString WithoutMnemonic(QString s) { return s.remove('&'); }

// The window named `name`, answered by pressing the button with `caption`.
std::function<bool(QWidget*)> Press(const QString& name, const QString& caption) {
  return [name, caption](QWidget* w) {
    if (w->objectName() != name) return false;
    for (QPushButton* b : w->findChildren<QPushButton*>()) {
      if (b->isVisible() && WithoutMnemonic(b->text()) == WithoutMnemonic(caption)) {
        QTimer::singleShot(0, b, &QPushButton::click);
        return true;
      }
    }
    return false;
  };
}

// The applet block of a page: from "<applet" through "</applet>".
std::string AppletBlock(const std::string& page) {
  size_t a = page.find("<applet");
  size_t e = page.find("</applet>", a);
  if (a == std::string::npos || e == std::string::npos) return "";
  return page.substr(a, e + 9 - a);
}

}  // namespace

class PublishRoadTest : public QObject {
  Q_OBJECT

 private slots:
  void openGenerateSaveAppletChangeALabelAndReplaceTheAppletInThePage() {
    HtmlApp a;
    // The real dialogs, each answered as it opens.
    a.prompter.realBoxes = true;
    a.prompter.realFileDialogs = true;
    a.prompter.realDialogs = true;
    // The applet's own files and the player lie beside the program.
    for (const char* name :
         {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar", "KestrelPane.js"})
      WriteBytes(a.home.file(name), std::string("applet file ") + name);

    // 1-2: the demo, named on the command line.
    QVERIFY(a.StartOnDemo());
    QCOMPARE(a.p().sProjectFile, a.demo());
    const int count = a.p().ButtonCount;
    QVERIFY(count >= 3);

    // 4: the main window's Build button shows the HTML window, whose
    // activation generates the code.
    frmHTML* w = a.OpenHTML();
    QVERIFY(w && w->isVisible());
    QCOMPARE(w->Generations(), 1);
    const std::string firstCode = a.code();
    QVERIFY(StartsWith(firstCode, BeginComment()));

    // 5: Save Applet into a fresh folder.
    test::TempDir out;
    const std::string page = out.file("road.html");
    ModalScript script;
    script.Expect("save dialog", ChooseFile(page));
    const bool folders =
        !a.p().CodeBase.empty() || !a.p().ImgPath.empty() || !a.p().SndPath.empty();
    if (folders)
      script.Expect("folders notice", [](QWidget* w) {
        QTimer::singleShot(0, w, [w] { w->close(); });
        return true;
      });
    script.Expect("ready for upload", Press("frmReadyForUpload", "&Close"));
    QTest::mouseClick(w->btnBuild, Qt::LeftButton);
    Settle();
    QVERIFY2(script.unexpected.empty(), qPrintable(script.unexpected.value(0)));
    QVERIFY(script.Done());
    QCOMPARE(a.p().sOutputHTML, page);

    // The page, the applet's files, the background, every picture and
    // every sound of the project.
    const std::string firstPage = ReadBytes(page);
    // The generated block as the window shows it, then the player's line.
    QCOMPARE(firstPage, a.p().sHTMLbefore + firstCode + PlayerScriptElement(a.p().CodeBase) +
                            sCRLF + a.p().sHTMLafter + sCRLF);
    std::vector<std::string> expected = {"road.html", "KestrelPane.class", "KestrelPane.cab",
                                         "KestrelPane.jar", "KestrelPane.js"};
    auto expect = [&](const std::string& file) {
      if (file.empty()) return;
      const std::string name = FileNameOnly(file);
      if (std::find(expected.begin(), expected.end(), name) == expected.end())
        expected.push_back(name);
    };
    expect(a.p().BackImg);
    for (int i = 1; i <= count; ++i)
      for (int s = 1; s <= 3; ++s) {
        expect(a.p().button(i).Image[s]);
        expect(a.p().button(i).Snd[s]);
      }
    std::sort(expected.begin(), expected.end());
    QCOMPARE(FilesIn(out.path()), expected);
    for (const char* name : {"demo_bg.jpg", "demo_star.gif", "click.au"})
      QVERIFY2(std::find(expected.begin(), expected.end(), name) != expected.end(), name);
    QCOMPARE(ReadBytes(out.file("demo_star.gif")),
             ReadBytes(a.home.file("Projects/demo_star.gif")));
    QCOMPARE(ReadBytes(out.file("click.au")), ReadBytes(a.home.file("Projects/click.au")));

    // 3 again: the author goes back to the main window and changes the
    // first button's label.
    QVERIFY(Activate(a.main()));
    QListWidget* list = a.main()->lstButtons;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(0)).center());
    Settle();
    QCOMPARE(int(a.p().iCurBtn), 1);
    auto* panel = static_cast<ButtonPanel*>(a.main()->panel);
    QLineEdit* txtLabel = panel->txtLabel;
    txtLabel->setFocus();
    QTest::keyClick(txtLabel, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(txtLabel, "Kestrel42");
    QCOMPARE(a.p().button(1).Label[GetStateIndex(a.p())], std::string("Kestrel42"));
    QVERIFY(!Contains(firstPage, "Kestrel42"));

    // Back to the HTML window: the code is generated again, and the
    // auto-replace box names the page just built.
    QTest::mouseClick(a.main()->btnBuild, Qt::LeftButton);
    QVERIFY(WaitActive(w));
    QCOMPARE(w->Generations(), 2);
    const std::string newCode = a.code();
    QVERIFY(Contains(newCode, "Kestrel42"));
    QCOMPARE(w->txtAutoReplaceHTML_FileName->text(), QString::fromStdString(page));

    // Replace: the page's one applet is ticked; the report closes it.
    script.Expect("applets found", Press("frmAutoRepHTML_2", "Replace Selected Applets"));
    script.Expect("operation completed", Press("frmAutoRepHTML_MSG", "&Ok"));
    QTest::mouseClick(w->btnAutoReplaceHTML, Qt::LeftButton);
    Settle();
    QVERIFY2(script.unexpected.empty(), qPrintable(script.unexpected.value(0)));
    QVERIFY(script.Done());

    // The backup is the page as it was; the page has the new code where
    // the old applet stood, and everything around it as it was.
    QCOMPARE(ReadBytes(out.file("road_backup.html")), firstPage);
    const std::string replaced = ReadBytes(page);
    QVERIFY(Contains(replaced, "Kestrel42"));
    QCOMPARE(AppletBlock(replaced), NewAppletCode(newCode));
    const std::string oldBlock = AppletBlock(firstPage);
    std::string expectedPage = firstPage;
    expectedPage.replace(expectedPage.find(oldBlock), oldBlock.size(), NewAppletCode(newCode));
    QCOMPARE(replaced, expectedPage);
    QVERIFY(!std::filesystem::exists(a.home.file("AppletTemp/_AutoReplace_HTML.htm")));
  }
};

QTEST_MAIN(PublishRoadTest)
#include "test_publish_road.moc"
