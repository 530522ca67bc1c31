// The design window's commands: snapping, lining up, packing, stacking,
// the grid dialog and the label marker, driven as the user drives them.
// Each test checks the model and the painted pixels.
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest>

#include "design/frm_grid.h"
#include "tests/app/design_bench.h"

using namespace kp;
using namespace kp::apptest;

class DesignCommandsTest : public WatchedTest {
  Q_OBJECT

 private slots:
  // --- Alignment and grid -------------------------------------------------------------------

  void alignXSnaps37To30AndAlignWGives40RoundingUpAnd30Down() {
    Bench b;
    Session().iGridX = 10;
    Session().iGridY = 10;
    const int one = b.Add(37, 23, 37, 20, kRed);
    b.d->AlignX(one, true);
    QCOMPARE(b.p().button(one).x, i16(30));
    QCOMPARE(At(b.Composed(), 30, 25), Q(kRed));
    b.d->AlignW(one, true, true);
    QCOMPARE(b.p().button(one).Width, i16(40));
    QCOMPARE(At(b.Composed(), 69, 25), Q(kRed));
    b.p().button(one).Width = 37;
    b.d->AlignW(one, true, false);
    QCOMPARE(b.p().button(one).Width, i16(30));
    QCOMPARE(At(b.Composed(), 59, 25), Q(kRed));
    QCOMPARE(At(b.Composed(), 60, 25), kWhite);
  }

  void alignWWithWidth4OnAGridOf10RoundingDownGives10() {
    Bench b;
    Session().iGridX = 10;
    const int one = b.Add(20, 20, 4, 20, kRed);
    b.d->AlignW(one, false, false);
    QCOMPARE(b.p().button(one).Width, i16(10));
    QCOMPARE(At(b.Composed(), 29, 25), Q(kRed));
  }

  void alignDoesNothingWhileLocked() {
    Bench b;
    Session().iGridX = 10;
    const int one = b.Add(37, 23, 37, 20, kRed);
    b.d->mnuLOCKED_Click();
    b.d->AlignX(one, true);
    b.d->AlignW(one, true, true);
    QCOMPARE(b.p().button(one).x, i16(37));
    QCOMPARE(b.p().button(one).Width, i16(37));
  }

  void withExactlyOneItemSelectedAlignLeftMovesEveryButton() {
    Bench b;
    const int one = b.Add(15, 20, 60, 30, kRed);
    const int two = b.Add(120, 60, 60, 30, kGreen);
    const int three = b.Add(220, 100, 60, 30, kBlue);
    b.Click({130, 70});
    QCOMPARE(b.m->SelectedCount(), 1);
    b.m->mnuAlign_Left->trigger();
    for (int i : {one, two, three}) QCOMPARE(b.p().button(i).x, i16(120));
    const QImage img = b.Composed();
    QCOMPARE(At(img, 121, 21), Q(kRed));
    QCOMPARE(At(img, 121, 101), Q(kBlue));
    QCOMPARE(At(img, 16, 21), kWhite);
  }

  void alignRightWithSeveralSelectedMovesOnlyThem() {
    Bench b;
    const int one = b.Add(15, 20, 40, 30, kRed);
    const int two = b.Add(120, 60, 60, 30, kGreen);
    const int three = b.Add(220, 100, 60, 30, kBlue);
    b.Click({20, 30});
    b.Click({130, 70}, Qt::ControlModifier);
    b.d->Align_Right();
    QCOMPARE(b.p().button(one).x, i16(140));
    QCOMPARE(b.p().button(two).x, i16(120));
    QCOMPARE(b.p().button(three).x, i16(220));
    QCOMPARE(At(b.Composed(), 179, 49), Q(kRed));
  }

  void tiesInGetLEFTestGoToTheLowerIndexWhenARowIsPacked() {
    Bench b;
    const int one = b.Add(50, 100, 60, 30, kRed);
    const int two = b.Add(50, 20, 70, 40, kGreen);
    b.Click({60, 110});
    b.m->mnuAlign_Horizontal_Row->trigger();
    QCOMPARE(b.Pos(one), QPoint(0, 0));
    QCOMPARE(b.Pos(two), QPoint(62, 0));
    // With one row selected the window takes the buttons' extent.
    QTRY_COMPARE(b.p().AppletWidth, i16(132));
    QCOMPARE(b.p().AppletHeight, i16(40));
    const QImage img = b.Composed();
    QCOMPARE(At(img, 0, 0), Q(kRed));
    QCOMPARE(At(img, 62, 35), Q(kGreen));
  }

  void verticalColumnTakesItsHeightFromItsOwnRun() {
    Bench b;
    const int one = b.Add(50, 100, 60, 30, kRed);
    const int two = b.Add(80, 20, 70, 40, kGreen);
    b.Click({60, 110});
    b.d->Align_Vertical_Column();
    QCOMPARE(b.Pos(two), QPoint(0, 0));
    QCOMPARE(b.Pos(one), QPoint(0, 42));
    QTRY_COMPARE(b.p().AppletHeight, i16(74));
    QCOMPARE(b.p().AppletWidth, i16(70));
  }

  void bringToFrontOnTheLastButtonHasNoNeighbourAndChangesNothing() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    const int two = b.Add(50, 30, 60, 30, kGreen);
    b.Click({100, 50});
    const tButton before = b.p().button(two);
    b.d->Public_mnuBringToFront_Click();
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.p().button(two) == before);
    QCOMPARE(At(b.Composed(), 60, 40), Q(kGreen));
  }

  void bringToFrontExchangesTheRecordsAndTheUpperSurfaceShowsThem() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    b.Add(50, 30, 60, 30, kGreen);
    b.p().button(1).sBName = "Lower";
    b.p().button(2).sBName = "Upper";
    b.Click({25, 25});
    QCOMPARE(At(b.Composed(), 60, 40), Q(kGreen));
    b.d->Public_mnuBringToFront_Click();
    QCOMPARE(b.p().iCurBtn, i16(2));
    QCOMPARE(b.p().button(2).sBName, std::string("Lower"));
    QCOMPARE(b.p().button(1).sBName, std::string("Upper"));
    QVERIFY(b.m->IsSelected(2) && !b.m->IsSelected(1));
    QCOMPARE(b.m->lstButtons->item(0)->text(), QString("Upper"));
    QCOMPARE(b.m->lstButtons->item(1)->text(), QString("Lower"));
    QCOMPARE(At(b.Composed(), 60, 40), Q(kRed));
    b.d->Public_mnuSendBack_Click();
    QCOMPARE(b.p().iCurBtn, i16(1));
    QCOMPARE(At(b.Composed(), 60, 40), Q(kGreen));
    b.d->Public_mnuSendBack_Click();  // no neighbour below the first
    QCOMPARE(b.p().iCurBtn, i16(1));
    QCOMPARE(b.p().button(1).sBName, std::string("Lower"));
  }

  void gridDialogApplyStoresTheSettingsAndPaintsTheGrid() {
    Bench b;
    b.d->mnuGrid_Click();
    frmGrid* g = b.d->Grid();
    QVERIFY(g->isVisible());
    QCOMPARE(g->windowTitle(), QString("Grid Options"));
    QCOMPARE(g->chkGrid->text(), QString("Show Grid"));
    QCOMPARE(g->txtX->text(), QString("10"));
    g->chkGrid->setChecked(true);
    g->txtX->clear();
    QTest::keyClicks(g->txtX, "25");
    QCOMPARE(g->scrollX->value(), 25);
    QVERIFY(!g->bApplied);
    g->btnApply->click();
    QVERIFY(g->bApplied);
    QVERIFY(Session().bShowGrid);
    QCOMPARE(Session().iGridX, i16(25));
    QCOMPARE(b.a.store.Get(kSecParams, "bShowGrid"), std::optional<std::string>("1"));
    QCOMPARE(b.a.store.Get(kSecParams, "iGridX"), std::optional<std::string>("25"));
    QImage img = b.Composed();
    QCOMPARE(At(img, 25, 5), kHandleGrey);
    QCOMPARE(At(img, 24, 5), kWhite);
    QCOMPARE(At(img, 12, 10), kHandleGrey);
    // Cancel leaves the session as it was; OK applies and closes.
    g->chkGrid->setChecked(false);
    g->btnCANCEL->click();
    QVERIFY(!g->isVisible());
    QVERIFY(Session().bShowGrid);
    b.d->mnuGrid_Click();
    QVERIFY(g->chkGrid->isChecked());
    g->chkGrid->setChecked(false);
    g->btnOK->click();
    QVERIFY(!g->isVisible());
    QVERIFY(!Session().bShowGrid);
    img = b.Composed();
    QCOMPARE(At(img, 25, 5), kWhite);
  }

  void gridStepsAreHeldBetween2And999With10ForText() {
    Bench b;
    b.d->mnuGrid_Click();
    frmGrid* g = b.d->Grid();
    g->txtX->clear();
    QTest::keyClicks(g->txtX, "abc");
    QCOMPARE(g->scrollX->value(), 10);
    g->txtX->clear();
    QTest::keyClicks(g->txtX, "5000");
    QCOMPARE(g->scrollX->value(), 999);
    g->txtY->clear();
    QTest::keyClicks(g->txtY, "1");
    QCOMPARE(g->scrollY->value(), 2);
    g->scrollY->setValue(40);
    QCOMPARE(g->txtY->text(), QString("40"));
    g->txtX->setFocus();
    QTest::keyClick(g->txtX, Qt::Key_Return);
    QVERIFY(g->isVisible());
    g->btnCANCEL->click();
  }

  void alignNowOnLockedButtonsAsksAndStopsOnNo() {
    Bench b;
    const int one = b.Add(37, 23, 60, 30, kRed);
    b.d->mnuLOCKED_Click();
    b.d->mnuGrid_Click();
    frmGrid* g = b.d->Grid();
    b.a.prompter.answers = {Answer::No};
    g->btnAlignXY_NOW->click();
    QCOMPARE(b.a.prompter.boxes.back().title, std::string("Buttons locked!"));
    QCOMPARE(b.a.prompter.boxes.back().text, std::string("Unlock Buttons?"));
    QVERIFY(b.a.prompter.boxes.back().buttons == Buttons::YesNo);
    QVERIFY(b.d->bLocked);
    QCOMPARE(b.Pos(one), QPoint(37, 23));
    b.a.prompter.answers = {Answer::Yes};
    g->btnAlignXY_NOW->click();
    QVERIFY(!b.d->bLocked);
    QVERIFY(!b.d->mnuLOCKED->isChecked());
    QVERIFY(!b.m->mnuLOCKED->isChecked());
    QCOMPARE(b.Pos(one), QPoint(30, 20));
    QCOMPARE(At(b.Composed(), 30, 20), Q(kRed));
    g->btnCANCEL->click();
  }

  void resizeNowSnapsEveryButtonsSizeDown() {
    Bench b;
    const int one = b.Add(10, 10, 37, 33, kRed);
    const int two = b.Add(100, 10, 4, 58, kGreen);
    b.d->mnuGrid_Click();
    frmGrid* g = b.d->Grid();
    g->txtX->clear();
    QTest::keyClicks(g->txtX, "20");
    g->btnAlignWH_NOW->click();
    QCOMPARE(Session().iGridX, i16(20));
    QCOMPARE(b.p().button(one).Width, i16(20));
    QCOMPARE(b.p().button(one).Height, i16(30));
    QCOMPARE(b.p().button(two).Width, i16(20));
    QCOMPARE(b.p().button(two).Height, i16(50));
    g->btnCANCEL->click();
  }

  // --- The label marker ---------------------------------------------------------------------

  void switchingPositionTextOffHidesTheMarkerAtOnce() {
    Bench b;
    const int one = b.Add(40, 40, 100, 40, kRed);
    b.p().button(one).PositionText[1] = true;
    b.p().button(one).LabelPosX[1] = 10;
    b.p().button(one).LabelPosY[1] = 5;
    b.Click({100, 70});
    QVERIFY(b.d->picLabelPositioner.visible);
    QCOMPARE(b.d->picLabelPositioner.left, 40.0 + 10 - 1);
    QCOMPARE(b.d->picLabelPositioner.top, 40.0 + 5 + 1);
    QCOMPARE(At(b.Shown(), 49 + 2, 46 + 2), kMarkerFace);
    b.p().button(one).PositionText[1] = false;
    b.d->RedrawButton(one);
    QVERIFY(!b.d->picLabelPositioner.visible);
    QCOMPARE(At(b.Shown(), 49 + 2, 46 + 2), Q(kRed));
  }

  void afterAMarkerDragMoveLabelPositionerPutsTheMarkerWhereTheMouseLeftIt() {
    Bench b;
    const int one = b.Add(40, 40, 100, 40, kRed);
    b.p().button(one).PositionText[1] = true;
    b.p().button(one).LabelPosX[1] = 10;
    b.p().button(one).LabelPosY[1] = 5;
    b.Click({100, 70});
    const QPoint m = b.Marker();
    b.Press(m);
    b.MoveTo(m + QPoint(4, 2));
    b.MoveTo(m + QPoint(7, 4));
    b.Release(m + QPoint(7, 4));
    const double left = b.d->picLabelPositioner.left, top = b.d->picLabelPositioner.top;
    QCOMPARE(left, 49.0 + 7);
    QCOMPARE(top, 46.0 + 4);
    QCOMPARE(b.p().button(one).LabelPosX[1], i16(17));
    QCOMPARE(b.p().button(one).LabelPosY[1], i16(9));
    QCOMPARE(b.p().iLast_Change, i16(3));
    b.d->MoveLabelPositioner(one);
    QCOMPARE(b.d->picLabelPositioner.left, left);
    QCOMPARE(b.d->picLabelPositioner.top, top);
    QCOMPARE(At(b.Shown(), 56 + 2, 50 + 2), kMarkerFace);
  }

  void withThreeSelectedButtonsAMarkerDragGivesAllThreeTheSameLabelPosX() {
    Bench b;
    const int one = b.Add(20, 20, 80, 40, kRed);
    const int two = b.Add(120, 20, 80, 40, kGreen);
    const int three = b.Add(220, 20, 80, 40, kBlue);
    for (int i : {one, two, three}) {
      b.p().button(i).PositionText[1] = true;
      b.p().button(i).LabelPosX[1] = static_cast<i16>(i);
      b.p().button(i).LabelPosY[1] = 4;
      b.p().button(i).LabelPosX[2] = 77;
    }
    b.Click({90, 50});
    b.Click({190, 50}, Qt::ControlModifier);
    b.Click({290, 50}, Qt::ControlModifier);
    QCOMPARE(b.m->SelectedCount(), 3);
    QCOMPARE(b.p().iCurBtn, i16(three));
    b.d->MoveLabelPositioner(three);
    const QPoint m = b.Marker();
    b.Drag(m, m + QPoint(12, 6));
    for (int i : {one, two, three}) {
      QCOMPARE(b.p().button(i).LabelPosX[1], i16(15));
      QCOMPARE(b.p().button(i).LabelPosY[1], i16(10));
      QCOMPARE(b.p().button(i).LabelPosX[2], i16(77));
    }
  }

  void lockedButtonsStillLetTheMarkerBeDragged() {
    Bench b;
    const int one = b.Add(40, 40, 100, 40, kRed);
    b.p().button(one).PositionText[1] = true;
    b.p().button(one).LabelPosX[1] = 10;
    b.p().button(one).LabelPosY[1] = 5;
    b.Click({100, 70});
    b.d->mnuLOCKED_Click();
    const QPoint m = b.Marker();
    b.Drag(m, m + QPoint(5, 3));
    QCOMPARE(b.p().button(one).LabelPosX[1], i16(15));
    QCOMPARE(b.p().button(one).LabelPosY[1], i16(8));
    QCOMPARE(b.Pos(one), QPoint(40, 40));
  }

  void gridEntryOfTheCommonMenuOpensTheGridOptions() {
    Bench b;
    b.d->mnuGrid->trigger();
    QVERIFY(b.d->Grid()->isVisible());
    b.d->Grid()->btnCANCEL->click();
    b.m->mnuGrid->trigger();
    QVERIFY(b.d->Grid()->isVisible());
    b.d->Grid()->btnCANCEL->click();
  }

  void editMenuOffersAlignmentOnlyWithTwoButtons() {
    Bench b;
    b.Add(20, 20, 60, 30, kRed);
    emit b.m->mnuEdit->aboutToShow();
    QVERIFY(!b.m->mnuAlign->isEnabled());
    b.Add(120, 20, 60, 30, kGreen);
    emit b.m->mnuEdit->aboutToShow();
    QVERIFY(b.m->mnuAlign->isEnabled());
  }
};

QTEST_MAIN(DesignCommandsTest)
#include "test_design_commands.moc"
