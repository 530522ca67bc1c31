// The road a user takes through one session: the program starts on a
// project named on the command line, two buttons are picked, labelled for
// the mouse-over state and dragged together on the design window, the
// project is saved in place, and a fresh start on the saved file shows
// every change and nothing else.
#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QComboBox>
#include <QColorDialog>
#include <QToolButton>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <map>

#include "app/frm_ask_to_associate.h"
#include "app/options.h"
#include "core/fs.h"
#include "core/startup.h"
#include "core/settings.h"
#include "design/frm_design.h"
#include "platform/qt_settings_store.h"
#include "project/button_record.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "properties/frm_pic_browser.h"
#include "properties/frm_set_action.h"
#include "properties/frm_applet_dialogs.h"
#include "properties/frm_button_effects.h"
#include "properties/global_panel.h"
#include "design/colour_box.h"
#include "core/conv.h"
#include "render/scene.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// One start of the program as main() makes it: the options, the settings
// file, the real disk, and the program folder of the build.
struct Run {
  explicit Run(const std::vector<std::string>& args) {
    opt = ParseStartOptions(args);
    store = std::make_unique<QtSettingsStore>(opt.settingsFile);
    program = std::make_unique<Program>(fs, *store, prompter, association,
                                        ProgramFolder(opt.home));
    program->endProcess = [this](int code) { ended.push_back(code); };
    // The desktop has no file association: the offer would come, were it
    // not switched off in the settings.
    association.missing = true;
  }
  ~Run() { program.reset(); }

  Project& p() { return program->project(); }
  Env& env() { return program->env(); }
  frmMain* main() { return program->MainWindow(); }
  frmDesign* design() { return main()->Design(); }
  ButtonPanel* panel() { return static_cast<ButtonPanel*>(main()->panel); }

  StartOptions opt;
  std::unique_ptr<QtSettingsStore> store;
  DiskFileSystem fs;
  TestPrompter prompter;
  FakeAssociation association;
  std::unique_ptr<Program> program;
  std::vector<int> ended;
};

// The record of a button with the place of its mouse-over label taken from
// `ref`: a label that is not placed by hand is centred again whenever the
// button is painted in that state, so its place follows the paint.
std::string WithOverLabelPlaceOf(tButton b, const tButton& ref) {
  if (!b.PositionText[2]) {
    b.LabelPosX[2] = ref.LabelPosX[2];
    b.LabelPosY[2] = ref.LabelPosY[2];
  }
  return ButtonRecordText(b);
}

// The record of a button with its place and its mouse-over label as they
// were: what must be left when exactly those were changed.
std::string RecordWithout(tButton b, const tButton& was) {
  b.x = was.x;
  b.y = was.y;
  b.Label[2] = was.Label[2];
  return WithOverLabelPlaceOf(b, was);
}

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

QRect RectOf(const tButton& b) { return QRect(b.x, b.y, b.Width, b.Height); }

// A copy of the demo project in a folder of its own, a settings file as an
// earlier session left it (no start dialog, no association offer) plus the
// lines a test adds, and the arguments that start the designer on it.
struct DemoSession {
  test::TempDir work;
  std::string projects = work.path() + "/Projects";
  std::string file = projects + "/Demo.kpn";
  std::string ini = work.file("settings/kestrelpane.ini");
  std::string bin = std::filesystem::path(ExecutablePath()).parent_path().string();

  explicit DemoSession(const std::string& moreSettings) {
    CopySampleProjects(projects);
    std::filesystem::create_directories(work.path() + "/settings");
    std::ofstream out(ini);
    out << "[2.02]\n"
           "Params\\DontShow_frm_Create_Recent=1\n"
           "Params\\DontAskToAssociate=1\n"
        << moreSettings;
  }
  std::vector<std::string> Args() const { return {"--home", bin, "--settings", ini, file}; }
};

}  // namespace

class RoadTest : public WatchedTest {
  Q_OBJECT

 private:
  static void ClickRow(Run& r, int row, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QListWidget* list = r.main()->lstButtons;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, mods,
                      list->visualItemRect(list->item(row)).center());
    QTest::qWait(0);
    QCoreApplication::processEvents();
  }

  static bool Shown(const Run& r, const std::string& text) {
    for (const ShownBox& b : r.prompter.boxes)
      if (b.text.find(text) != std::string::npos) return true;
    return false;
  }

 private slots:
  void twoButtonsLabelledForMouseOverAndDraggedTogetherSurviveSaveAndReopen() {
    test::TempDir work;
    const std::string projects = work.path() + "/Projects";
    CopySampleProjects(projects);
    const std::string file = projects + "/Demo.kpn";
    QVERIFY(std::filesystem::path(file).is_absolute());
    const std::string ini = work.file("settings/kestrelpane.ini");
    const std::string bin = std::filesystem::path(ExecutablePath()).parent_path().string();
    QVERIFY2(std::filesystem::exists(bin + "/Kestrel.ini"), "the build's program folder");

    // The settings file as an earlier session left it: no start dialog, no
    // association offer, no snapping to the grid.
    std::filesystem::create_directories(work.path() + "/settings");
    {
      std::ofstream out(ini);
      out << "[2.02]\n"
             "Params\\DontShow_frm_Create_Recent=1\n"
             "Params\\DontAskToAssociate=1\n"
             "Params\\bAlignXY=0\n";
    }
    const std::vector<std::string> args = {"--home", bin, "--settings", ini, file};

    const QString typed = "Road 17";
    const int one = 1, six = 6;  // rows 0 and 5: not stacked over each other
    const QPoint offset(17, 9);
    std::map<int, tButton> loaded, was;
    std::map<int, std::string> saved;  // the records as they were written
    int count = 0;

    {
      Run r(args);
      QCOMPARE(r.store->Get(kSecParams, "bAlignXY"), std::optional<std::string>("0"));
      QCOMPARE(r.program->Main(r.opt.commandLine), -1);
      QVERIFY(r.ended.empty());
      QCOMPARE(r.association.checks, 1);
      QCOMPARE(r.association.registered, 0);
      QVERIFY(!Session().bAlignXY);
      QCOMPARE(r.env().programFolder, bin);
      QCOMPARE(r.p().sProjectFile, file);
      QVERIFY(r.p().bReady);
      QVERIFY(r.p().bProjectSaved);
      QVERIFY(r.prompter.boxes.empty());
      count = r.p().ButtonCount;
      QVERIFY(count >= 7);
      for (int i = 1; i <= count; ++i) loaded[i] = r.p().button(i);
      QCOMPARE(r.main()->lstButtons->count(), count);
      QVERIFY(r.main()->isVisible());
      QVERIFY(r.design()->isVisible());

      // The pick: a row, then another with Ctrl.
      ClickRow(r, one - 1);
      ClickRow(r, six - 1, Qt::ControlModifier);
      QCOMPARE(r.main()->SelectedCount(), 2);
      QVERIFY(r.main()->IsSelected(one) && r.main()->IsSelected(six));
      QCOMPARE(int(r.p().iCurBtn), six);

      // The mouse-over state, and the label typed over the shown one.
      QTest::mouseClick(r.panel()->btnOverState, Qt::LeftButton);
      QCOMPARE(r.p().sState, std::string("OVER"));
      // Showing the state places the centred labels of every button for it,
      // and changes nothing else.
      for (int i = 1; i <= count; ++i) {
        was[i] = r.p().button(i);
        QCOMPARE(WithOverLabelPlaceOf(was[i], loaded[i]), ButtonRecordText(loaded[i]));
      }
      QVERIFY(r.p().bProjectSaved);
      QLineEdit* txtLabel = r.panel()->txtLabel;
      QTest::mouseClick(txtLabel, Qt::LeftButton);
      QTest::keyClick(txtLabel, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClicks(txtLabel, typed);
      QCOMPARE(txtLabel->text(), typed);
      for (int i : {one, six}) QCOMPARE(r.p().button(i).Label[2], typed.toStdString());
      QVERIFY(!r.p().bProjectSaved);

      // The group dragged by one of its members on the design window.
      frmDesign* d = r.design();
      const QImage before = d->scene().Compose();
      const tButton& b1 = r.p().button(one);
      const QPoint grip(b1.x + b1.Width / 2, b1.y + b1.Height / 2 + 5);
      QTest::mousePress(d, Qt::LeftButton, Qt::NoModifier, grip);
      QTest::mouseMove(d, grip + offset);
      QTest::mouseRelease(d, Qt::LeftButton, Qt::NoModifier, grip + offset);
      QCoreApplication::processEvents();
      QCOMPARE(r.main()->SelectedCount(), 2);
      for (int i : {one, six}) {
        QCOMPARE(int(r.p().button(i).x), was[i].x + offset.x());
        QCOMPARE(int(r.p().button(i).y), was[i].y + offset.y());
        QCOMPARE(d->scene().pButtons(i).Left, was[i].x + offset.x());
        QCOMPARE(d->scene().pButtons(i).Top, was[i].y + offset.y());
      }
      const QImage after = d->scene().Compose();
      QCOMPARE(after.size(), before.size());
      for (int i : {one, six}) {
        // The strip the button left along its top shows what lies under it
        // now; its new place shows the button.
        const QRect strip(was[i].x, was[i].y, was[i].Width, offset.y());
        QVERIFY2(after.copy(strip) != before.copy(strip), "the place left behind was repainted");
        const QRect moved = RectOf(r.p().button(i));
        const QRect old = RectOf(was[i]);
        QVERIFY2(after.copy(moved) != before.copy(moved), "the new place was repainted");
        // The face moved as it was: the part no other button covers, at
        // its new place, matches what stood at the old one.
        const QRect face(0, 0, was[i].Width - offset.x() - 10, was[i].Height - 10);
        QCOMPARE(after.copy(face.translated(moved.topLeft())),
                 before.copy(face.translated(old.topLeft())));
      }
      // A button far from both kept its pixels.
      int untouched = 0;
      for (int j = 1; j <= count; ++j) {
        if (j == one || j == six) continue;
        const QRect rj = RectOf(was[j]);
        bool near = false;
        for (int i : {one, six})
          near = near || rj.intersects(RectOf(was[i]).united(RectOf(r.p().button(i))));
        if (near) continue;
        QVERIFY2(after.copy(rj) == before.copy(rj),
                 qPrintable(QString("button %1 was not touched").arg(j)));
        ++untouched;
      }
      QVERIFY(untouched >= 3);
      QVERIFY(!r.p().bProjectSaved);

      // Save from the File menu: the project has its file, so it is
      // written in place.
      r.main()->mnuSave->trigger();
      QCoreApplication::processEvents();
      QVERIFY(r.prompter.saveDialogs.empty());
      QVERIFY(!Shown(r, "Error Saving Buttons"));
      QVERIFY(r.p().bProjectSaved);
      QCOMPARE(r.p().sProjectFile, file);
      const std::vector<RecentEntry> recent = GetRecent(r.env());
      QVERIFY(!recent.empty());
      QCOMPARE(recent.front().path, file);
      QVERIFY(r.main()->mnuRecent[0]->isVisible());
      QCOMPARE(r.main()->mnuRecent[0]->data().toByteArray().toStdString(), file);
      for (int i = 1; i <= count; ++i) saved[i] = ButtonRecordText(r.p().button(i));

      // Nothing is left to ask about on the way out.
      const size_t asked = r.prompter.boxes.size();
      QVERIFY(r.main()->close());
      QCOMPARE(r.prompter.boxes.size(), asked);
    }

    // A fresh start on the saved file, with the settings the first run left.
    Run r(args);
    QCOMPARE(r.program->Main(r.opt.commandLine), -1);
    QVERIFY(r.ended.empty());
    QCOMPARE(r.association.registered, 0);
    QVERIFY(r.prompter.boxes.empty());
    QCOMPARE(r.p().sProjectFile, file);
    QCOMPARE(int(r.p().ButtonCount), count);
    QVERIFY(r.p().bProjectSaved);
    for (int i : {one, six}) {
      const tButton& b = r.p().button(i);
      QCOMPARE(int(b.x), was[i].x + offset.x());
      QCOMPARE(int(b.y), was[i].y + offset.y());
      QCOMPARE(b.Label[2], typed.toStdString());
      QCOMPARE(b.Label[1], was[i].Label[1]);
      QCOMPARE(b.Label[3], was[i].Label[3]);
      QVERIFY(b.Label[1] != b.Label[2] && b.Label[3] != b.Label[2]);
      QCOMPARE(RecordWithout(b, was[i]), ButtonRecordText(was[i]));
      QCOMPARE(r.design()->scene().pButtons(i).Left, was[i].x + offset.x());
      QCOMPARE(r.design()->scene().pButtons(i).Top, was[i].y + offset.y());
    }
    for (int j = 1; j <= count; ++j) {
      // The file holds what the session had, and the others as they were.
      QCOMPARE(ButtonRecordText(r.p().button(j)), saved[j]);
      if (j == one || j == six) continue;
      QCOMPARE(ButtonRecordText(r.p().button(j)), ButtonRecordText(was[j]));
    }
    // The recent list, read from the settings file, leads with the file.
    QCOMPARE(ReadRecentRaw(r.env())[0], file);
    QVERIFY(r.main()->mnuRecent[0]->isVisible());
    QCOMPARE(r.main()->mnuRecent[0]->data().toByteArray().toStdString(), file);
    QVERIFY(r.main()->close());
  }

  void tenKindsOfChangeUndoneSaveTheOriginalBytesAndRedoneComeBack() {
    DemoSession d("Params\\bAlignXY=0\n");
    Run r(d.Args());
    QCOMPARE(r.program->Main(r.opt.commandLine), -1);
    // The project as this program writes it (full media paths, labels
    // placed), before any change.
    r.main()->mnuSave->trigger();
    const std::string original = ReadBytes(d.file);
    QVERIFY(!original.empty());
    frmMain* m = r.main();
    frmDesign* w = r.design();
    const int count = r.p().ButtonCount;
    QVERIFY(count >= 7);
    QVERIFY(!m->mnuUndo->isEnabled());
    // The keys go to the window the user works in.
    m->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m));
    auto settle = [] {
      QTest::qWait(0);
      QCoreApplication::processEvents();
    };
    auto centre = [&](int i) {
      const tButton& b = r.p().button(i);
      return QPoint(b.x + b.Width / 2, b.y + b.Height / 2 + 5);
    };
    auto type = [&](QLineEdit* f, const QString& text) {
      f->setFocus();
      f->selectAll();
      QTest::keyClicks(f, text);
      QTest::keyClick(f, Qt::Key_Tab);
      settle();
    };
    QStringList steps;
    auto done = [&] {
      settle();
      steps << m->mnuUndo->text();
    };

    // 1. A drag of the first button.
    ClickRow(r, 0);
    QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, centre(1));
    QTest::mouseMove(w, centre(1) + QPoint(6, 4));
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, centre(1) + QPoint(6, 4));
    done();
    // 2. Three presses of an arrow key.
    for (int k = 0; k < 3; ++k) QTest::keyClick(w, Qt::Key_Down);
    done();
    // 3. A tip typed in the panel.
    type(r.panel()->txtTip, "Road tip");
    done();
    // 4. A new name.
    type(r.panel()->txt_btnName, "Road name");
    done();
    // 5. Two buttons lined up at the top.
    int other = 3;
    while (other < count && r.p().button(other).y == r.p().button(2).y) ++other;
    QVERIFY(r.p().button(other).y != r.p().button(2).y);
    ClickRow(r, 1);
    ClickRow(r, other - 1, Qt::ControlModifier);
    m->mnuAlign_Top->trigger();
    done();
    // 6. A new button.
    QTest::mouseClick(r.panel()->List().btnAddBtn, Qt::LeftButton);
    done();
    // 7. The selection duplicated with Ctrl+D.
    ClickRow(r, 3);
    QTest::keyClick(m->lstButtons, Qt::Key_D, Qt::ControlModifier);
    done();
    // 8. Two buttons deleted with the Delete key.
    ClickRow(r, 4);
    ClickRow(r, 5, Qt::ControlModifier);
    QTest::keyClick(m->lstButtons, Qt::Key_Delete);
    done();
    // 9. One step down in the stacking order.
    ClickRow(r, 2);
    r.panel()->List().mnuSendBack->trigger();
    done();
    // 10. The applet's width, typed and confirmed.
    QLineEdit* width = m->txtAppletWidth;
    width->setFocus();
    width->selectAll();
    QTest::keyClicks(width, "333");
    QTest::keyClick(width, Qt::Key_Return);
    done();

    QCOMPARE(steps.size(), 10);
    QCOMPARE(steps[0], QString("Undo Move Button"));
    QCOMPARE(steps[1], QString("Undo Move Button"));
    QCOMPARE(steps[3], QString("Undo Rename Button"));
    QCOMPARE(steps[4], QString("Undo Align Top"));
    QCOMPARE(steps[5], QString("Undo Add Button"));
    QCOMPARE(steps[6], QString("Undo Duplicate"));
    QCOMPARE(steps[7], QString("Undo Delete 2 Buttons"));
    QCOMPARE(steps[8], QString("Undo Send Back"));
    QCOMPARE(steps[9], QString("Undo Resize Applet"));
    QCOMPARE(m->History().StepCount(), size_t(10));
    QVERIFY(!r.p().bProjectSaved);
    QVERIFY(m->windowTitle().startsWith("*"));
    std::vector<std::string> changed;
    for (int i = 1; i <= r.p().ButtonCount; ++i) changed.push_back(ButtonRecordText(r.p().button(i)));


    // Undo everything, then save: the file is the one that was loaded.
    int undone = 0;
    while (m->mnuUndo->isEnabled()) {
      QTest::keyClick(m->lstButtons, Qt::Key_Z, Qt::ControlModifier);
      ++undone;
      QVERIFY(undone <= 10);
    }
    QCOMPARE(undone, 10);
    QVERIFY(r.p().bProjectSaved);
    QVERIFY(!m->windowTitle().startsWith("*"));
    QCOMPARE(int(r.p().ButtonCount), count);
    QCOMPARE(m->lstButtons->count(), count);
    r.p().bProjectSaved = false;
    m->mnuSave->trigger();
    QVERIFY(r.prompter.boxes.empty());
    QVERIFY(ReadBytes(d.file) == original);

    // Redo everything: every change is back, in the model and the picture.
    int redone = 0;
    while (m->mnuRedo->isEnabled()) {
      QTest::keyClick(m->lstButtons, Qt::Key_Y, Qt::ControlModifier);
      ++redone;
      QVERIFY(redone <= 10);
    }
    QCOMPARE(redone, 10);
    QCOMPARE(int(r.p().ButtonCount), int(changed.size()));
    for (int i = 1; i <= r.p().ButtonCount; ++i)
      QCOMPARE(ButtonRecordText(r.p().button(i)), changed[static_cast<size_t>(i - 1)]);
    QCOMPARE(int(r.p().AppletWidth), 333);
    // The picture after the redo is the one a full repaint of the model gives.
    const QImage redonePicture = w->Composed();
    w->RepaintAll();
    QCOMPARE(redonePicture, w->Composed());
    QVERIFY(!r.p().bProjectSaved);
    r.p().bProjectSaved = true;
    QVERIFY(m->close());
  }

  void anOverProgramAndADownPictureChosenInTheirWindowsSurviveSaveAndReopen() {
    DemoSession d("");
    {
      std::ofstream(d.ini, std::ios::app) << "Params\\sSearchImagesFolder=" << d.projects << "\n";
    }
    const std::string& projects = d.projects;
    const std::string& file = d.file;
    const std::string& ini = d.ini;
    const std::string& bin = d.bin;
    const std::vector<std::string> args = d.Args();
    const std::string program = "5 News 2 FF8000;6 200;10 News 3 100;";
    const std::string arrow = projects + "/demo_arrow.gif";
    std::map<int, std::string> saved;
    int count = 0;
    {
      Run r(args);
      QCOMPARE(r.program->Main(r.opt.commandLine), -1);
      count = r.p().ButtonCount;
      ClickRow(r, 0);
      QCOMPARE(r.p().button(1).sBName, std::string("Home"));
      QCOMPARE(int(r.p().iCurBtn), 1);

      // The OVER program, written anew in the action editor.
      ButtonPanel* panel = r.panel();
      panel->cmbAction->setFocus();
      QTest::keyClick(panel->cmbAction, Qt::Key_Home);
      QTest::keyClick(panel->cmbAction, Qt::Key_Down);
      auto edited = WhenWindow("frmSetAction", [](QWidget* w) {
        auto* e = static_cast<frmSetAction*>(w);
        QCOMPARE(e->windowTitle(), QString("Set Action --> On Entering Button"));
        while (e->lstActions->count() > 0) {
          QTest::mouseClick(e->lstActions->viewport(), Qt::LeftButton, Qt::NoModifier,
                            e->lstActions->visualItemRect(e->lstActions->item(0)).center());
          Click(e, "btnRemove");
        }
        auto choose = [e](QComboBox* c, int index) {
          c->setFocus();
          QTest::keyClick(c, Qt::Key_Home);
          for (int i = 0; i < index; ++i) QTest::keyClick(c, Qt::Key_Down);
        };
        auto type = [](QLineEdit* f, const QString& text) {
          QTest::mouseClick(f, Qt::LeftButton);
          QTest::keyClick(f, Qt::Key_A, Qt::ControlModifier);
          QTest::keyClicks(f, text);
        };
        choose(e->cmbAction, 4);
        type(e->cmbButtonNumber->lineEdit(), "News");
        choose(e->cmbStateSelector, 1);
        type(e->txtLabel, "FF8000");
        Click(e, "btnAdd");
        choose(e->cmbAction, 5);
        type(e->lsMiliseconds->lineEdit(), "200");
        Click(e, "btnAdd");
        choose(e->cmbAction, 9);
        type(e->cmbButtonNumber->lineEdit(), "News");
        type(e->txtBlinkCount, "3");
        Click(e, "btnAdd");
        QCOMPARE(e->lstActions->item(0)->text(),
                 QString("Set Color: News [Mouse-Over]  ->  FF8000"));
        Click(e, "btnOK");
      });
      QTest::mouseClick(panel->btnAction, Qt::LeftButton);
      QVERIFY(*edited);
      QCOMPARE(r.p().button(1).ProgramOVER, program);

      // The DOWN picture, picked by sight.
      QTest::mouseClick(panel->btnDownState, Qt::LeftButton);
      // The demo's file names no picture folder; the browser opens where an
      // earlier pick in this session would have left it.
      r.p().sSearchImagesFolder = projects;
      QCOMPARE(r.p().sState, std::string("DOWN"));
      auto picked = WhenWindow("frmPicBrowser", [](QWidget* w) {
        auto* b = static_cast<frmPicBrowser*>(w);
        int cell = -1;
        for (int i = 0; i < kPicCells; ++i)
          if (b->lblFileName[static_cast<size_t>(i)]->isVisible() &&
              b->lblFileName[static_cast<size_t>(i)]->text() == "demo_arrow.gif")
            cell = i;
        QVERIFY(cell >= 0);
        QTRY_COMPARE(b->PendingOnPage(), 0);
        QVERIFY(b->imgP[static_cast<size_t>(cell)]->isVisible());
        QTest::mouseClick(b->imgP[static_cast<size_t>(cell)], Qt::LeftButton);
        Click(b, "btnOK");
      });
      QTest::mouseClick(panel->btnGetBitmap, Qt::LeftButton);
      QVERIFY(*picked);
      QCOMPARE(r.p().button(1).Image[3], arrow);

      r.main()->mnuSave->trigger();
      QCoreApplication::processEvents();
      QVERIFY(r.p().bProjectSaved);
      for (int i = 1; i <= count; ++i) saved[i] = ButtonRecordText(r.p().button(i));
      QVERIFY(r.main()->close());
    }

    Run r(args);
    QCOMPARE(r.program->Main(r.opt.commandLine), -1);
    QCOMPARE(int(r.p().ButtonCount), count);
    QCOMPARE(r.p().button(1).ProgramOVER, program);
    QCOMPARE(r.p().button(1).Image[3], arrow);
    for (int i = 1; i <= count; ++i) QCOMPARE(ButtonRecordText(r.p().button(i)), saved[i]);
    QVERIFY(r.main()->close());

    // The command line shows the program's display lines.
    QProcess cli;
    cli.start(QString::fromStdString(bin + "/kestrelpane-cli"),
              {"--home", QString::fromStdString(bin), "--settings", QString::fromStdString(ini),
               "actions", QString::fromStdString(file)});
    QVERIFY(cli.waitForFinished(30000));
    QCOMPARE(cli.exitCode(), 0);
    const QString out = QString::fromUtf8(cli.readAllStandardOutput());
    QVERIFY2(out.contains("Set Color: News [Mouse-Over]  ->  FF8000\r\n"
                          "Wait: 200 ms\r\n"
                          "Blink: News  ->  times:3 delay:100ms") ||
                 out.contains("Set Color: News [Mouse-Over]  ->  FF8000\n"
                              "Wait: 200 ms\n"
                              "Blink: News  ->  times:3 delay:100ms"),
             qPrintable(out));
  }
  void appletOptionsAndAnOverTextBorderCopiedToAllStatesSurviveSaveReopenAndRender() {
    // The plain file dialog picks pictures in this session.
    DemoSession d("Params\\chk_RegPixDlgBox=1\n");
    test::TempDir& work = d.work;
    const std::string& projects = d.projects;
    const std::string& file = d.file;
    const std::string& ini = d.ini;
    const std::string& bin = d.bin;
    const std::vector<std::string> args = d.Args();
    const std::string star = projects + "/demo_star.gif";
    int count = 0;
    {
      Run r(args);
      QCOMPARE(r.program->Main(r.opt.commandLine), -1);
      count = r.p().ButtonCount;
      GlobalPanel* g = r.main()->general;
      QVERIFY(g);

      // Width 500, typed and confirmed with Enter.
      QLineEdit* w = r.main()->txtAppletWidth;
      w->setFocus();
      w->selectAll();
      QTest::keyClicks(w, "500");
      QTest::keyClick(w, Qt::Key_Return);
      QCOMPARE(int(r.p().AppletWidth), 500);
      QCOMPARE(r.design()->width(), 500);

      // A background picture picked, shown in the centre.
      r.prompter.openAnswers.push_back(star);
      QTest::mouseClick(g->btnGetBackImg, Qt::LeftButton);
      QCOMPARE(r.p().BackImg, star);
      g->cmbBackImgStyle->setFocus();
      QTest::keyClick(g->cmbBackImgStyle, Qt::Key_Home);
      QTest::keyClick(g->cmbBackImgStyle, Qt::Key_Down);
      QCOMPARE(g->cmbBackImgStyle->currentText(), QString("Center"));
      QCOMPARE(int(r.p().BackImgStyle), 2);
      QVERIFY(g->picBgOffset->isHidden());

      // A raised applet border and a fade.
      QTest::mouseClick(g->btnAppletBorder, Qt::LeftButton);
      frmAppletBorder* b = g->AppletBorder();
      b->cmbBorderStyle->setFocus();
      QTest::keyClick(b->cmbBorderStyle, Qt::Key_Home);
      QTest::keyClick(b->cmbBorderStyle, Qt::Key_Down);
      QCOMPARE(b->cmbBorderStyle->currentText(), QString("Raised"));
      b->txtBorderWidth->setFocus();
      b->txtBorderWidth->selectAll();
      QTest::keyClicks(b->txtBorderWidth, "5");
      b->close();
      QTest::mouseClick(g->btnAppletFade, Qt::LeftButton);
      frmAppletFade* f = g->AppletFade();
      f->cmbFadeStyle->setFocus();
      QTest::keyClick(f->cmbFadeStyle, Qt::Key_End);
      QCOMPARE(int(r.p().iFadeStyle), 4);
      f->close();

      // A text border for the first button in OVER, through Special, each
      // edit copied to the other states.
      ClickRow(r, 0);
      QTest::mouseClick(r.panel()->btnOverState, Qt::LeftButton);
      QTest::mouseClick(r.panel()->btnTFrame, Qt::LeftButton);
      frmButtonSpecial* d = g->ButtonSpecial();
      QVERIFY(d->isVisible());
      auto ran = WhenModal<QColorDialog>([](QColorDialog* c) {
        c->setCurrentColor(QColor(255, 0, 0));
        c->accept();
      });
      QTest::mouseClick(d->picColor, Qt::LeftButton);
      QVERIFY(*ran);
      QTest::mouseClick(r.panel()->btnCopyToAll, Qt::LeftButton);
      d->txtThick->setFocus();
      d->txtThick->selectAll();
      QTest::keyClicks(d->txtThick, "2");
      QTest::mouseClick(r.panel()->btnCopyToAll, Qt::LeftButton);
      for (int s = 1; s <= 3; ++s) {
        QCOMPARE(r.p().button(1).TFrameColor[s], RGB(255, 0, 0));
        QCOMPARE(int(r.p().button(1).TFrameThick[s]), 2);
      }
      d->close();

      r.main()->mnuSave->trigger();
      QVERIFY(r.p().bProjectSaved);
      QVERIFY(r.main()->close());
    }

    Run r(args);
    QCOMPARE(r.program->Main(r.opt.commandLine), -1);
    QCOMPARE(int(r.p().ButtonCount), count);
    QCOMPARE(int(r.p().AppletWidth), 500);
    QCOMPARE(r.design()->width(), 500);
    QCOMPARE(FileNameOnly(r.p().BackImg), std::string("demo_star.gif"));
    QCOMPARE(int(r.p().BackImgStyle), 2);
    QCOMPARE(r.main()->general->cmbBackImgStyle->currentText(), QString("Center"));
    QVERIFY(r.main()->general->picBgOffset->isHidden());
    QCOMPARE(int(r.p().iABorderStyle), 1);
    QCOMPARE(int(r.p().iABorderWidth), 5);
    QCOMPARE(int(r.p().iFadeStyle), 4);
    for (int s = 1; s <= 3; ++s) {
      QCOMPARE(r.p().button(1).TFrameColor[s], RGB(255, 0, 0));
      QCOMPARE(int(r.p().button(1).TFrameThick[s]), 2);
    }
    const QImage shown = r.design()->scene().ComposeApplet();
    QVERIFY(r.main()->close());

    // The command line draws the saved file as the designer shows it.
    const std::string png = work.file("render.png");
    QProcess cli;
    cli.start(QString::fromStdString(bin + "/kestrelpane-cli"),
              {"--home", QString::fromStdString(bin), "--settings", QString::fromStdString(ini),
               "render", QString::fromStdString(file), QString::fromStdString(png)});
    QVERIFY(cli.waitForFinished(30000));
    QCOMPARE(cli.exitCode(), 0);
    const QImage rendered(QString::fromStdString(png));
    QCOMPARE(rendered.size(), QSize(500, shown.height()));
    QCOMPARE(rendered.convertToFormat(QImage::Format_RGB32), shown.convertToFormat(QImage::Format_RGB32));
  }
};

QTEST_MAIN(RoadTest)
#include "test_road.moc"
