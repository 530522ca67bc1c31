// Undo and redo through the windows with real mouse and key events: each
// kind of change is made, undone and redone, and the model, the list and
// the design window's pixels are compared with what they were.
#include <QAction>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "properties/frm_set_action.h"
#include "tests/app/design_bench.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// What a user sees of the project: every button record, the count, the
// list's rows and the design window's picture.
struct Look {
  std::vector<tButton> buttons;
  QStringList rows;
  QImage picture;
  std::string before;

  static Look Of(Bench& b) {
    Look l;
    for (int i = 1; i <= b.p().ButtonCount; ++i) l.buttons.push_back(b.p().button(i));
    for (int r = 0; r < b.m->lstButtons->count(); ++r) l.rows << b.m->lstButtons->item(r)->text();
    l.picture = b.Composed();
    l.before = b.p().sHTMLbefore;
    return l;
  }
  bool operator==(const Look& o) const {
    return buttons == o.buttons && rows == o.rows && picture == o.picture && before == o.before;
  }
};

ButtonPanel* Panel(Bench& b) { return static_cast<ButtonPanel*>(b.m->panel); }

// Lets the step that closes after an event's work be recorded.
void Settle() { QCoreApplication::processEvents(); }

void Key(QWidget* w, Qt::Key key, Qt::KeyboardModifiers mods = {}) {
  QTest::keyClick(w, key, mods);
  Settle();
}

void Undo(Bench& b) { Key(b.d, Qt::Key_Z, Qt::ControlModifier); }
void Redo(Bench& b) { Key(b.d, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }

// Two plain buttons, and the history starting here.
struct TwoButtons {
  Bench b;
  int one, two;
  TwoButtons() {
    one = b.Add(20, 20, 60, 30, kRed);
    two = b.Add(120, 60, 60, 30, kGreen);
    b.p().bProjectSaved = true;
    b.m->ResetHistory();
  }
};

}  // namespace

class UndoTest : public WatchedTest {
  Q_OBJECT

 private:

  // The change, then undo to the first look and redo to the second.
  static void RoundTrip(Bench& b, const std::function<void()>& change, const QString& undoText) {
    const Look before = Look::Of(b);
    change();
    Settle();
    const Look after = Look::Of(b);
    QVERIFY(!(after == before));
    QCOMPARE(b.m->mnuUndo->text(), undoText);
    QVERIFY(b.m->mnuUndo->isEnabled());
    Undo(b);
    QVERIFY(Look::Of(b) == before);
    QVERIFY(b.m->mnuRedo->isEnabled());
    QCOMPARE(b.m->mnuRedo->text(), QString(undoText).replace("Undo", "Redo"));
    Redo(b);
    QVERIFY(Look::Of(b) == after);
  }

 private slots:
  void nothingToUndoDisablesBothEntries() {
    TwoButtons t;
    QVERIFY(!t.b.m->mnuUndo->isEnabled());
    QVERIFY(!t.b.m->mnuRedo->isEnabled());
    QCOMPARE(t.b.m->mnuUndo->text(), QString("Undo"));
    QCOMPARE(t.b.m->mnuRedo->text(), QString("Redo"));
  }

  void aDragIsOneStep() {
    TwoButtons t;
    RoundTrip(
        t.b,
        [&] {
          t.b.Press({30, 30});
          for (int k = 1; k <= 10; ++k) t.b.MoveTo({30 + 3 * k, 30 + 2 * k});
          t.b.Release({60, 50});
        },
        "Undo Move Button");
    QCOMPARE(t.b.m->History().StepCount(), size_t(1));
    QCOMPARE(t.b.Pos(t.one), QPoint(50, 40));
  }

  void aGroupDragIsNamedByItsCount() {
    TwoButtons t;
    t.b.Click({30, 30});
    t.b.Click({130, 70}, Qt::ControlModifier);
    Settle();
    RoundTrip(t.b, [&] { t.b.Drag({30, 30}, {40, 45}); }, "Undo Move 2 Buttons");
  }

  void aHandleResizeIsOneStep() {
    TwoButtons t;
    t.b.Click({130, 70});
    Settle();
    RoundTrip(
        t.b,
        [&] {
          const QPoint h = t.b.Handle(1);
          t.b.Press(h);
          t.b.MoveTo(h + QPoint(10, 0));
          t.b.MoveTo(h + QPoint(20, 0));
          t.b.Release(h + QPoint(20, 0));
        },
        "Undo Resize Button");
    QCOMPARE(t.b.m->History().StepCount(), size_t(1));
  }

  void aHeldArrowKeyIsOneStep() {
    TwoButtons t;
    t.b.Click({130, 70});
    Settle();
    RoundTrip(
        t.b,
        [&] {
          // A held key repeats press and release; only the last release is real.
          for (int k = 0; k < 5; ++k) {
            const bool repeat = k > 0;
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), repeat);
            QApplication::sendEvent(t.b.d, &press);
            if (k < 4) {
              QKeyEvent up(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier, QString(), true);
              QApplication::sendEvent(t.b.d, &up);
            }
            Settle();
          }
          QKeyEvent release(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier);
          QApplication::sendEvent(t.b.d, &release);
        },
        "Undo Move Button");
    QCOMPARE(t.b.Pos(t.two), QPoint(125, 60));
    QCOMPARE(t.b.m->History().StepCount(), size_t(1));
  }

  void alignmentIsOneStepNamedAfterTheEntry() {
    TwoButtons t;
    t.b.Click({30, 30});
    t.b.Click({130, 70}, Qt::ControlModifier);
    Settle();
    RoundTrip(t.b, [&] { t.b.m->mnuAlign_Top->trigger(); }, "Undo Align Top");
    QCOMPARE(t.b.p().button(t.one).y, t.b.p().button(t.two).y);
  }

  void listOperationsAreUndone() {
    TwoButtons t;
    ButtonList& list = Panel(t.b)->List();
    RoundTrip(t.b, [&] { QTest::mouseClick(list.btnAddBtn, Qt::LeftButton); }, "Undo Add Button");
    RoundTrip(t.b, [&] { QTest::mouseClick(list.btnDuplicate, Qt::LeftButton); }, "Undo Duplicate");
    RoundTrip(t.b, [&] { QTest::mouseClick(list.btnRemove, Qt::LeftButton); }, "Undo Delete Button");
    t.b.Click({130, 70});
    Settle();
    RoundTrip(t.b, [&] { list.mnuSendBack->trigger(); }, "Undo Send Back");
    RoundTrip(t.b, [&] { list.mnuBringToFront->trigger(); }, "Undo Bring to Front");
    list.mnuCopy->trigger();
    RoundTrip(t.b, [&] { list.mnuPaste->trigger(); }, "Undo Paste");
  }

  void typingANameIsOneStepWhenTheFieldIsLeft() {
    TwoButtons t;
    t.b.Click({30, 30});
    Settle();
    QLineEdit* name = Panel(t.b)->txt_btnName;
    RoundTrip(
        t.b,
        [&] {
          name->setFocus();
          name->selectAll();
          Settle();
          QTest::keyClicks(name, "Home");
          Settle();
          QVERIFY(!t.b.m->mnuUndo->isEnabled());
          QTest::keyClick(name, Qt::Key_Tab);
        },
        "Undo Rename Button");
    QCOMPARE(t.b.m->History().StepCount(), size_t(1));
    QCOMPARE(t.b.m->lstButtons->item(0)->text(), QString("Home"));
  }

  void aLabelFieldEditRedrawsOnUndo() {
    TwoButtons t;
    t.b.Click({30, 30});
    Settle();
    QLineEdit* label = Panel(t.b)->txtLabel;
    RoundTrip(
        t.b,
        [&] {
          label->setFocus();
          QTest::keyClicks(label, "Go");
          QTest::keyClick(label, Qt::Key_Return);
        },
        "Undo Change Button");
  }

  void anActionProgramIsOneStep() {
    TwoButtons t;
    t.b.Click({30, 30});
    Settle();
    RoundTrip(
        t.b,
        [&] {
          auto ran = WhenWindow("frmSetAction", [](QWidget* w) {
            auto* e = static_cast<frmSetAction*>(w);
            QTest::keyClick(e->cmbAction, Qt::Key_Home);
            QTest::keyClick(e->cmbAction, Qt::Key_Down);
            e->cmbButtonNumber->lineEdit()->setText("Button 2");
            QTest::mouseClick(e->findChild<QPushButton*>("btnAdd"), Qt::LeftButton);
            QTest::mouseClick(e->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
          });
          QTest::mouseClick(Panel(t.b)->btnAction, Qt::LeftButton);
          QVERIFY(*ran);
        },
        "Undo Change Action Program");
    QVERIFY(!t.b.p().button(t.one).ProgramUP.empty());
  }

  void pageBlocksAreUndone() {
    TwoButtons t;
    const std::string was = t.b.p().sHTMLbefore;
    t.b.p().sHTMLbefore = "<html><body>";
    t.b.m->RecordStep();
    QCOMPARE(t.b.m->mnuUndo->text(), QString("Undo Change Page Blocks"));
    Undo(t.b);
    QCOMPARE(t.b.p().sHTMLbefore, was);
    Redo(t.b);
    QCOMPARE(t.b.p().sHTMLbefore, std::string("<html><body>"));
  }

  void undoingToTheSavedStateMakesTheProjectSavedAgain() {
    TwoButtons t;
    const QString title = t.b.m->windowTitle();
    QVERIFY(!title.startsWith("*"));
    t.b.Drag({30, 30}, {40, 40});
    Settle();
    QVERIFY(!t.b.p().bProjectSaved);
    QCOMPARE(t.b.m->windowTitle(), "*" + title);
    Undo(t.b);
    QVERIFY(t.b.p().bProjectSaved);
    QCOMPARE(t.b.m->windowTitle(), title);
    Redo(t.b);
    QVERIFY(!t.b.p().bProjectSaved);
    QCOMPARE(t.b.m->windowTitle(), "*" + title);
  }

  void aNewChangeAfterUndoDropsTheRedoSteps() {
    TwoButtons t;
    t.b.Drag({30, 30}, {40, 40});
    Settle();
    Undo(t.b);
    QVERIFY(t.b.m->mnuRedo->isEnabled());
    t.b.Drag({130, 70}, {140, 80});
    Settle();
    QVERIFY(!t.b.m->mnuRedo->isEnabled());
    QCOMPARE(t.b.m->History().StepCount(), size_t(1));
  }

  void ctrlYRedoesToo() {
    TwoButtons t;
    t.b.Drag({30, 30}, {40, 40});
    Settle();
    Undo(t.b);
    QCOMPARE(t.b.Pos(t.one), QPoint(20, 20));
    Key(t.b.d, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(t.b.Pos(t.one), QPoint(30, 30));
  }

  void theShortcutsWorkFromTheMainWindowToo() {
    TwoButtons t;
    t.b.Drag({30, 30}, {40, 40});
    Settle();
    Key(t.b.m->lstButtons, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(t.b.Pos(t.one), QPoint(20, 20));
    Key(t.b.m->lstButtons, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(t.b.Pos(t.one), QPoint(30, 30));
  }

  void ctrlASelectsEveryButton() {
    TwoButtons t;
    t.b.Add(220, 20, 40, 20, kBlue);
    t.b.Click({30, 30});
    Settle();
    QCOMPARE(t.b.m->SelectedCount(), 1);
    Key(t.b.d, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(t.b.m->SelectedCount(), 3);
    QVERIFY(HasTopMark(t.b.Composed(), 220, 20, 40));
  }

  void ctrlDDuplicatesTheSelectionAsOneStep() {
    TwoButtons t;
    t.b.Click({30, 30});
    t.b.Click({130, 70}, Qt::ControlModifier);
    Settle();
    const Look before = Look::Of(t.b);
    Key(t.b.d, Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(int(t.b.p().ButtonCount), 4);
    QCOMPARE(t.b.m->mnuUndo->text(), QString("Undo Duplicate"));
    QCOMPARE(t.b.m->History().StepCount(), size_t(1));
    Undo(t.b);
    QVERIFY(Look::Of(t.b) == before);
  }

  void deleteRemovesTheSelectedButtonsAsOneStep() {
    TwoButtons t;
    t.b.Add(220, 20, 40, 20, kBlue);
    t.b.m->ResetHistory();
    t.b.Click({30, 30});
    t.b.Click({230, 30}, Qt::ControlModifier);
    Settle();
    const Look before = Look::Of(t.b);
    Key(t.b.d, Qt::Key_Delete);
    QCOMPARE(int(t.b.p().ButtonCount), 1);
    QCOMPARE(t.b.p().button(1).x, i16(120));
    QCOMPARE(t.b.m->lstButtons->count(), 1);
    QCOMPARE(t.b.m->mnuUndo->text(), QString("Undo Delete 2 Buttons"));
    // The deleted places show the background again.
    QCOMPARE(At(t.b.Composed(), 30, 30), At(before.picture, 5, 5));
    Undo(t.b);
    QVERIFY(Look::Of(t.b) == before);
  }

  void deleteInATextFieldEditsTheText() {
    TwoButtons t;
    t.b.Click({30, 30});
    Settle();
    QLineEdit* tip = Panel(t.b)->txtTip;
    tip->setFocus();
    QTest::keyClicks(tip, "ab");
    QTest::keyClick(tip, Qt::Key_Home);
    Key(tip, Qt::Key_Delete);
    QCOMPARE(int(t.b.p().ButtonCount), 2);
    QCOMPARE(tip->text(), QString("b"));
  }

  void newProjectClearsTheHistory() {
    TwoButtons t;
    t.b.Drag({30, 30}, {40, 40});
    Settle();
    QVERIFY(t.b.m->mnuUndo->isEnabled());
    t.b.p().bProjectSaved = true;
    auto ran = WhenWindow("frm_Create_Recent", [](QWidget* w) { Click(w, "btnCreate"); });
    t.b.m->mnuNew_Click();
    Settle();
    QVERIFY(*ran);
    QVERIFY(!t.b.m->mnuUndo->isEnabled());
    QVERIFY(!t.b.m->mnuRedo->isEnabled());
    QVERIFY(t.b.p().bProjectSaved);
  }

  void twoHundredStepsAreKept() {
    TwoButtons t;
    t.b.Click({130, 70});
    Settle();
    for (int k = 0; k < 210; ++k) Key(t.b.d, k % 2 ? Qt::Key_Left : Qt::Key_Down);
    QCOMPARE(t.b.m->History().StepCount(), size_t(200));
    int undone = 0;
    while (t.b.m->mnuUndo->isEnabled()) {
      t.b.m->mnuUndo->trigger();
      ++undone;
    }
    QCOMPARE(undone, 200);
    // The ten oldest steps are gone: five downs and five lefts remain.
    QCOMPARE(t.b.Pos(t.two), QPoint(115, 65));
  }
};

QTEST_MAIN(UndoTest)
#include "test_undo.moc"
