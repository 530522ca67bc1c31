// The design window with real mouse and key events: selection, dragging,
// the sizing handles, the arrow keys, the lock, snapping on release, the
// window's size, title and menus. Each test checks the model and the
// painted pixels.
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QtTest>

#include "tests/app/design_bench.h"

using namespace kp;
using namespace kp::apptest;

class DesignTest : public WatchedTest {
  Q_OBJECT

 private slots:
  // --- Selection and dragging ----------------------------------------------------------

  void pressOnAButtonSelectsItAloneWithBlueHandlesAround() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 60, 60, 30, kGreen);
    b.Click({130, 70});
    QCOMPARE(b.p().iCurBtn, i16(two));
    QCOMPARE(b.m->SelectedCount(), 1);
    QVERIFY(b.m->IsSelected(two));
    QVERIFY(b.HandlesShown());
    const QImage shown = b.Shown();
    // Bottom handle below the middle of the bottom edge, blue.
    QCOMPARE(At(shown, 150, 60 + 30 + 2 + 2), kHandleBlue);
    QCOMPARE(At(shown, 120 + 60 + 2 + 2, 75), kHandleBlue);
    QCOMPARE(At(shown, 130, 70), Q(kGreen));
  }

  void ctrlPressExtendsTheSelectionAndMarksEveryMember() {
    Bench b;
    const int one = b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 20, 60, 30, kGreen);
    b.Click({30, 30});
    b.Click({130, 30}, Qt::ControlModifier);
    QCOMPARE(b.m->SelectedCount(), 2);
    QVERIFY(b.m->IsSelected(one) && b.m->IsSelected(two));
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.HandlesHidden());
    const QImage img = b.Composed();
    QVERIFY(HasTopMark(img, 20, 20, 60));
    QVERIFY(HasTopMark(img, 120, 20, 60));
    // The left mark: from (1, H/2 - 3) to (7, H/2 + 3).
    QCOMPARE(At(img, 20 + 4, 20 + 15), kWhite);
    QCOMPARE(At(img, 20 + 1, 20 + 12), kBlack);
  }

  void ctrlLessPressOnAMemberOfAMultipleSelectionKeepsTheSelectionAndMovesTheGroup() {
    Bench b;
    const int one = b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 20, 60, 30, kGreen);
    const int three = b.Add(220, 100, 60, 30, kBlue);
    b.Click({30, 30});
    b.Click({130, 30}, Qt::ControlModifier);
    b.p().bProjectSaved = true;
    b.Press({30, 30});
    b.MoveTo({35, 38});
    b.MoveTo({40, 45});
    b.Release({40, 45});
    QCOMPARE(b.m->SelectedCount(), 2);
    QVERIFY(b.m->IsSelected(one) && b.m->IsSelected(two) && !b.m->IsSelected(three));
    QCOMPARE(b.Pos(one), QPoint(30, 35));
    QCOMPARE(b.Pos(two), QPoint(130, 35));
    QCOMPARE(b.Pos(three), QPoint(220, 100));
    QVERIFY(!b.p().bProjectSaved);
    const QImage img = b.Composed();
    QCOMPARE(At(img, 21, 21), kWhite);
    QCOMPARE(At(img, 32, 60), Q(kRed));
    QCOMPARE(At(img, 132, 60), Q(kGreen));
    QVERIFY(HasTopMark(img, 30, 35, 60));
    QVERIFY(HasTopMark(img, 130, 35, 60));
  }

  void shiftPressOnTheOnlySelectedButtonMarksItFirstThenDeselectsAndRepaintsIt() {
    Bench b;
    const int one = b.Add(20, 20, 60, 30, kRed);
    b.Add(120, 20, 60, 30, kGreen);
    b.Click({30, 30});
    QVERIFY(b.HandlesShown());
    b.Click({30, 30}, Qt::ShiftModifier);
    QCOMPARE(b.m->SelectedCount(), 0);
    QVERIFY(!b.m->IsSelected(one));
    QCOMPARE(b.p().iCurBtn, i16(one));
    // The mark was drawn first, which hid the handles; the repaint after
    // the deselection wiped it again.
    QVERIFY(b.HandlesHidden());
    const QImage img = b.Composed();
    QVERIFY(!HasTopMark(img, 20, 20, 60));
    QCOMPARE(At(img, 50, 24), Q(kRed));
  }

  void lockedButtonsSelectOnPressDoNotDragAndArrowKeysStillMove() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 60, 60, 30, kGreen);
    b.Click({30, 30});
    b.d->mnuLOCKED_Click();
    QVERIFY(b.d->bLocked);
    b.Drag({130, 70}, {200, 120});
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.m->IsSelected(two));
    QCOMPARE(b.m->SelectedCount(), 1);
    QCOMPARE(b.Pos(two), QPoint(120, 60));
    QCOMPARE(At(b.Composed(), 121, 61), Q(kGreen));
    QTest::keyClick(b.d, Qt::Key_Right);
    QTest::keyClick(b.d, Qt::Key_Down);
    QTest::keyClick(b.d, Qt::Key_Down);
    QCOMPARE(b.Pos(two), QPoint(121, 62));
    const QImage img = b.Composed();
    QCOMPARE(At(img, 120, 61), kWhite);
    QCOMPARE(At(img, 121, 62), Q(kGreen));
  }

  void arrowKeysNudgeTheSelectedButtonsWithoutSnapping() {
    Bench b;
    Session().bAlignXY = true;
    Session().iGridX = 10;
    Session().iGridY = 10;
    const int one = b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 20, 60, 30, kGreen);
    const int three = b.Add(220, 20, 60, 30, kBlue);
    b.Click({30, 30});
    b.Click({130, 30}, Qt::ControlModifier);
    b.p().bProjectSaved = true;
    QTest::keyClick(b.d, Qt::Key_Left);
    QTest::keyClick(b.d, Qt::Key_Up);
    QCOMPARE(b.Pos(one), QPoint(19, 19));
    QCOMPARE(b.Pos(two), QPoint(119, 19));
    QCOMPARE(b.Pos(three), QPoint(220, 20));
    QVERIFY(!b.p().bProjectSaved);
    QCOMPARE(At(b.Composed(), 19, 19), Q(kRed));
  }

  void opaqueButtonDraggedOverATransparentOneGivesItANewPictureAtEachMove() {
    Bench b;
    const int one = b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(150, 20, 60, 30, kBlue, true);
    // Over a flat applet a transparent face shows the applet's colour.
    QCOMPARE(At(b.Composed(), 160, 30), kWhite);
    b.Press({30, 30});
    b.MoveTo({130, 30});  // button 1 now at 120..180
    QCOMPARE(b.Pos(one), QPoint(120, 20));
    QImage img = b.Composed();
    QCOMPARE(At(img, 160, 30), Q(kRed));
    QCOMPARE(At(img, 190, 30), kWhite);
    b.MoveTo({145, 30});  // 135..195
    img = b.Composed();
    QCOMPARE(At(img, 190, 30), Q(kRed));
    QCOMPARE(At(img, 200, 30), kWhite);
    b.Release({145, 30});
    QCOMPARE(b.Pos(two), QPoint(150, 20));
  }

  // --- Handles ---------------------------------------------------------------------------

  void bottomAndRightHandlesJumpFourPixelsOnTheFirstMove() {
    Bench b;
    const int one = b.Add(50, 50, 100, 40, kRed);
    b.Click({60, 60});
    QPoint h = b.Handle(0);
    b.Press(h);
    b.MoveTo(h);
    b.Release(h);
    QCOMPARE(b.p().button(one).Height, i16(44));
    h = b.Handle(1);
    b.Press(h);
    b.MoveTo(h);
    b.Release(h);
    QCOMPARE(b.p().button(one).Width, i16(104));
    const QImage img = b.Composed();
    QCOMPARE(At(img, 50 + 103, 50 + 43), Q(kRed));
    QCOMPARE(At(img, 50 + 104, 50 + 44), kWhite);
    // The handles follow the new size.
    QCOMPARE(b.Handle(0).y(), 50 + 44 + 2 + kSizerH / 2);
  }

  void bottomHandleStopsAtHeight5AndTopHandleIgnoresADragBelow5() {
    Bench b;
    const int one = b.Add(50, 50, 100, 40, kRed);
    const int two = b.Add(200, 50, 100, 40, kGreen);
    b.Click({60, 60});
    QPoint h = b.Handle(0);
    b.Press(h);
    b.MoveTo({h.x(), 20});
    b.Release({h.x(), 20});
    QCOMPARE(b.p().button(one).Height, i16(5));
    QCOMPARE(b.p().button(one).y, i16(50));
    QImage img = b.Composed();
    QCOMPARE(At(img, 60, 54), Q(kRed));
    QCOMPARE(At(img, 60, 55), kWhite);

    b.Click({210, 60});
    h = b.Handle(2);  // top of the handle at 42, pressed 3 pixels in
    b.Press(h);
    b.MoveTo({h.x(), h.y() + 36});  // would leave 4 pixels
    QCOMPARE(b.p().button(two).Height, i16(40));
    QCOMPARE(b.p().button(two).y, i16(50));
    b.MoveTo({h.x(), h.y() + 35});
    b.Release({h.x(), h.y() + 35});
    QCOMPARE(b.p().button(two).Height, i16(5));
    QCOMPARE(b.p().button(two).y, i16(85));
    img = b.Composed();
    QCOMPARE(At(img, 210, 84), kWhite);
    QCOMPARE(At(img, 210, 85), Q(kGreen));
    QCOMPARE(At(img, 210, 89), Q(kGreen));
  }

  void leftHandleKeepsTheLeftEdgeFivePixelsFromTheWindowEdge() {
    Bench b;
    const int one = b.Add(30, 50, 100, 40, kRed);
    b.Click({40, 60});
    const QPoint h = b.Handle(3);
    b.Press(h);
    b.MoveTo({-40, h.y()});
    QCOMPARE(b.p().button(one).x, i16(30));  // a handle coordinate of 0 or less is ignored
    b.MoveTo({4, h.y()});                    // the handle at 1: the nearest it may come
    QCOMPARE(b.p().button(one).x, i16(1 + kSizerW + 2));
    b.MoveTo({-3, h.y()});
    b.Release({-3, h.y()});
    QVERIFY(b.p().button(one).x >= 5);
    QCOMPARE(b.p().button(one).x, i16(1 + kSizerW + 2));
    // The right edge stays where it was.
    QCOMPARE(b.p().button(one).x + b.p().button(one).Width, 130);
    const QImage img = b.Composed();
    QCOMPARE(At(img, b.p().button(one).x - 1, 60), kWhite);
    QCOMPARE(At(img, b.p().button(one).x, 60), Q(kRed));
    QCOMPARE(At(img, 129, 60), Q(kRed));
  }

  // --- Snapping on release ------------------------------------------------------------------

  void releaseSnapsADroppedButtonToTheGridButNotAGroup() {
    Bench b;
    Session().bAlignXY = true;
    Session().iGridX = 10;
    Session().iGridY = 10;
    const int one = b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 100, 60, 30, kGreen);
    b.Drag({30, 30}, {47, 39});
    QCOMPARE(b.Pos(one), QPoint(30, 20));
    QCOMPARE(At(b.Composed(), 30, 20), Q(kRed));
    QCOMPARE(At(b.Composed(), 29, 20), kWhite);
    b.Click({130, 110}, Qt::ControlModifier);
    QCOMPARE(b.m->SelectedCount(), 2);
    b.Drag({130, 110}, {133, 114});
    QCOMPARE(b.Pos(two), QPoint(123, 104));
    QCOMPARE(b.Pos(one), QPoint(33, 24));
  }

  void sizingReleaseSnapsTheSizeTopRoundingUpBottomRoundingDown() {
    Bench b;
    Session().bAlignWH = true;
    Session().iGridX = 10;
    Session().iGridY = 10;
    const int one = b.Add(50, 50, 100, 40, kRed);
    b.Click({60, 60});
    QPoint h = b.Handle(2);
    b.Press(h);
    b.MoveTo({h.x(), h.y() - 7});
    QCOMPARE(b.p().button(one).Height, i16(47));
    QCOMPARE(b.p().button(one).y, i16(43));
    b.Release({h.x(), h.y() - 7});
    QCOMPARE(b.p().button(one).y, i16(40));
    QCOMPARE(b.p().button(one).Height, i16(50));
    h = b.Handle(0);
    b.Press(h);
    b.MoveTo({h.x(), h.y() + 3});  // 4 + 3 = 57
    b.Release({h.x(), h.y() + 3});
    QCOMPARE(b.p().button(one).Height, i16(50));
    const QImage img = b.Composed();
    QCOMPARE(At(img, 60, 40), Q(kRed));
    QCOMPARE(At(img, 60, 89), Q(kRed));
    QCOMPARE(At(img, 60, 90), kWhite);
  }

  // --- The empty window, the menus ---------------------------------------------------------

  void plainPressOnTheEmptyWindowEndsAMultipleSelectionCtrlKeepsIt() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 20, 60, 30, kGreen);
    b.Click({30, 30});
    b.Click({130, 30}, Qt::ControlModifier);
    b.Click({300, 150}, Qt::ControlModifier);
    QCOMPARE(b.m->SelectedCount(), 2);
    QCOMPARE(b.d->sngNewBtnX, 300.0f);
    QCOMPARE(b.d->sngNewBtnY, 150.0f);
    b.Click({310, 140});
    QCOMPARE(b.m->SelectedCount(), 1);
    QVERIFY(b.m->IsSelected(two));
    QVERIFY(b.HandlesShown());
    QCOMPARE(b.d->sngNewBtnX, 310.0f);
    const QImage img = b.Composed();
    QVERIFY(!HasTopMark(img, 20, 20, 60));
    QVERIFY(!HasTopMark(img, 120, 20, 60));
  }

  void rightPressOnTheEmptyWindowPopsUpTheCommonMenu() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    QTest::mouseClick(b.d, Qt::RightButton, {}, QPoint(300, 150));
    QTRY_VERIFY(b.d->mnuCommon->isVisible());
    QStringList texts;
    for (QAction* a : b.d->mnuCommon->actions())
      if (!a->isSeparator()) texts << a->text();
    QCOMPARE(texts, QStringList({"&New Button", "&Paste", "&Lock Buttons", "&Grid...", "&Refresh",
                                   "&Zoom"}));
    QVERIFY(b.d->mnuLOCKED->isCheckable());
    b.d->mnuCommon->hide();
  }

  void rightPressOnAButtonSelectsItAndPopsUpTheEditMenu() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(120, 20, 60, 30, kGreen);
    QTest::mouseClick(b.d, Qt::RightButton, {}, QPoint(130, 30));
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.m->IsSelected(two));
    QTRY_VERIFY(b.m->mnuEdit->isVisible());
    b.m->mnuEdit->hide();
  }

  void listClicksWithCtrlExtendTheSelectionAndTheMarksFollow() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    b.Add(120, 20, 60, 30, kGreen);
    b.Add(220, 20, 60, 30, kBlue);
    QListWidget* list = b.m->lstButtons;
    b.m->show();
    auto row = [list](int r) { return list->visualItemRect(list->item(r)).center(); };
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row(0));
    QTRY_COMPARE(b.p().iCurBtn, i16(1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, row(2));
    QTRY_COMPARE(b.p().iCurBtn, i16(3));
    QCOMPARE(b.m->SelectedCount(), 2);
    QCOMPARE(b.p().iLast_Change, i16(0));
    QImage img = b.Composed();
    QVERIFY(HasTopMark(img, 20, 20, 60));
    QVERIFY(HasTopMark(img, 220, 20, 60));
    QVERIFY(!HasTopMark(img, 120, 20, 60));
    QVERIFY(b.HandlesHidden());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row(1));
    QTRY_COMPARE(b.p().iCurBtn, i16(2));
    QCOMPARE(b.m->SelectedCount(), 1);
    img = b.Composed();
    QVERIFY(!HasTopMark(img, 20, 20, 60));
    QVERIFY(!HasTopMark(img, 220, 20, 60));
    QVERIFY(b.HandlesShown());
    QCOMPARE(b.Handle(0).x(), 120 + 30);
  }

  // --- Lock and titles ---------------------------------------------------------------------

  void lockSetsTheTitleBothCheckMarksAndGreyHandles() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    b.Click({30, 30});
    b.d->mnuLOCKED_Click();
    QCOMPARE(b.d->windowTitle(),
             QString("Design Window - Kestrel Pane 2.02   ***BUTTONS LOCKED***"));
    QVERIFY(b.d->mnuLOCKED->isChecked());
    QVERIFY(b.m->mnuLOCKED->isChecked());
    QCOMPARE(At(b.Shown(), 50, 20 + 30 + 2 + 2), kHandleGrey);
    b.m->mnuLOCKED->trigger();  // the main window's twin
    QVERIFY(!b.d->bLocked);
    QCOMPARE(b.d->windowTitle(), QString("Design Window - Kestrel Pane 2.02"));
    QVERIFY(!b.d->mnuLOCKED->isChecked());
    QVERIFY(!b.m->mnuLOCKED->isChecked());
    QCOMPARE(At(b.Shown(), 50, 20 + 30 + 2 + 2), kHandleBlue);
  }

  void activationTitlesTheWindowWithTheProjectsName() {
    Bench b;
    QEvent activate(QEvent::WindowActivate);
    b.p().sProjectName = "Bar";
    QCoreApplication::sendEvent(b.d, &activate);
    QCOMPARE(b.d->windowTitle(), QString("Design Window - Bar"));
    b.p().sProjectFile = "/some/where/Demo.kpn";
    b.d->mnuLOCKED_Click();
    QCoreApplication::sendEvent(b.d, &activate);
    QCOMPARE(b.d->windowTitle(), QString("Design Window    ***BUTTONS LOCKED*** - Demo.kpn"));
    QVERIFY(b.d->mnuLOCKED->isChecked());
  }

  void designWindowRefusesTheUsersClose() {
    Bench b;
    QVERIFY(!b.d->close());
    QVERIFY(b.d->isVisible());
  }

  // --- Size and refresh ----------------------------------------------------------------------

  void resizingTheWindowMakesItTheAppletSizeAndFillsTheFields() {
    Bench b;
    Session().bShowGrid = true;
    Session().iGridX = 10;
    Session().iGridY = 10;
    b.d->SyncGrid();
    b.p().bProjectSaved = true;
    b.d->resize(300, 150);
    QTRY_COMPARE(b.p().AppletWidth, i16(300));
    QCOMPARE(b.p().AppletHeight, i16(150));
    QCOMPARE(b.m->txtAppletWidth->text(), QString("300"));
    QCOMPARE(b.m->txtAppletHeight->text(), QString("150"));
    QVERIFY(!b.p().bProjectSaved);
    // The grid now ends at the new size.
    const QImage img = b.Composed();
    QCOMPARE(At(img, 300, 5), kHandleGrey);
    QCOMPARE(At(img, 310, 5), kWhite);
    QCOMPARE(At(img, 5, 150), kHandleGrey);
    QCOMPARE(At(img, 5, 160), kWhite);
  }

  void f5RepaintsEverythingUnderTheButtons() {
    Bench b;
    const int one = b.Add(20, 20, 60, 30, kBlue, true);
    b.p().BackGround = kGreen;
    QCOMPARE(At(b.Composed(), 200, 100), kWhite);
    QTest::keyClick(b.d, Qt::Key_F5);
    const QImage img = b.Composed();
    QCOMPARE(At(img, 200, 100), Q(kGreen));
    // The transparent button shows the new colour as well.
    QCOMPARE(At(img, 30, 30), Q(kGreen));
    QCOMPARE(b.p().button(one).x, i16(20));
  }
};

QTEST_MAIN(DesignTest)
#include "test_design.moc"
