// The design window zoomed beyond the screen: the window keeps to the
// screen's available area and the view scrolls. Events come through the
// window system; every press, drag, handle and key still works in applet
// pixels, and only a resize at a zoom that fits changes the applet.
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QStyleHints>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest>

#include "project/project_file.h"
#include "render/scene.h"
#include "tests/app/design_bench.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// An applet half of what the screen's available area holds inside the
// window's frame, each way: 200 % just fits, 400 % and 800 % do not.
struct ScrollBench : Bench {
  QRect area;
  int W = 0, H = 0;
  ScrollBench() {
    [&] { QVERIFY(QTest::qWaitForWindowExposed(d)); }();
    QTest::qWait(50);
    area = d->screen()->availableGeometry();
    const QSize frame = d->frameGeometry().size() - d->size();
    W = (area.width() - frame.width()) / 2;
    H = (area.height() - frame.height()) / 2;
    Settle(W, H);
  }
  void Zoom(int z) {
    d->SetZoom(z);
    QCOMPARE(d->Zoom(), z);
    if (d->Scrolling()) {
      QTRY_VERIFY(d->scrollH->isVisible() && d->scrollV->isVisible());
    } else {
      QTRY_COMPARE(d->width(), W * z);
      QTRY_COMPARE(d->height(), H * z);
    }
    QTest::qWait(20);
  }
  void Scroll(int x, int y) {
    d->scrollH->setValue(x);
    d->scrollV->setValue(y);
    QCOMPARE(d->ScrollOffset(), QPoint(x, y));
  }
  // Applet pixel (x, y) as a window position: zoomed, less the offset, a
  // little inside the pixel's square.
  QPoint Win(int x, int y) const {
    const int z = d->Zoom();
    return QPoint(x * z + z / 2, y * z + z / 2) - d->ScrollOffset();
  }
  // The applet pixel under a window position.
  QPoint AppletAt(QPoint win) const {
    const QPoint a = win + d->ScrollOffset();
    return QPoint(a.x() / d->Zoom(), a.y() / d->Zoom());
  }
  bool WithinArea() const { return area.contains(d->frameGeometry()); }
};

// Every window pixel of the view shows the 1:1 picture's pixel under it.
QString ScaledMismatch(const QImage& shown, const QImage& one, const QRect& view, QPoint off,
                       int z) {
  for (int y = 0; y < view.height(); ++y)
    for (int x = 0; x < view.width(); ++x) {
      const QPoint a((x + off.x()) / z, (y + off.y()) / z);
      if (!one.rect().contains(a)) continue;
      if (shown.pixel(x, y) != one.pixel(a))
        return QString("window %1,%2 (applet %3,%4) at %5").arg(x).arg(y).arg(a.x()).arg(a.y()).arg(
            z);
    }
  return {};
}

}  // namespace

class DesignZoomScrollTest : public WatchedTest {
  Q_OBJECT

 private slots:
  // --- The window and its bars -------------------------------------------------------------

  void everyStepIsOfferedAndALargeZoomScrollsWithinTheArea() {
    ScrollBench b;
    b.p().bProjectSaved = true;
    b.d->mnuZoom->aboutToShow();
    for (QAction* a : b.d->mnuZoomSteps) QVERIFY(a->isEnabled());
    b.Zoom(2);
    QVERIFY(!b.d->Scrolling());
    QVERIFY(b.d->scrollH->isHidden() && b.d->scrollV->isHidden());
    for (int z : {4, 8}) {
      b.Zoom(z);
      QVERIFY(b.d->Scrolling());
      QVERIFY(b.WithinArea());
      QCOMPARE(b.d->frameGeometry().size(), b.area.size());
      // The bars are the window's own, along its bottom and right edges.
      QCOMPARE(b.d->scrollH->parentWidget(), b.d);
      const QRect view = b.d->ViewRect();
      QCOMPARE(b.d->scrollH->geometry().top(), view.bottom() + 1);
      QCOMPARE(b.d->scrollV->geometry().left(), view.right() + 1);
      QCOMPARE(b.d->scrollH->maximum(), b.W * z - view.width());
      QCOMPARE(b.d->scrollV->maximum(), b.H * z - view.height());
      QCOMPARE(b.d->scrollH->pageStep(), view.width());
      // A screen reader names them from the window's language section.
      QCOMPARE(b.d->scrollH->accessibleName(), QString("Scroll Sideways"));
      QCOMPARE(b.d->scrollV->accessibleName(), QString("Scroll Up and Down"));
      b.d->mnuZoom->aboutToShow();
      for (QAction* a : b.d->mnuZoomSteps) QVERIFY(a->isEnabled());
      QVERIFY(b.d->mnuZoomSteps[z == 4 ? 2 : 3]->isChecked());
    }
    QCOMPARE(int(b.p().AppletWidth), b.W);
    QCOMPARE(int(b.p().AppletHeight), b.H);
    QVERIFY(b.p().bProjectSaved);
  }

  void aWindowNearTheScreensEdgeMovesBackWithinTheArea() {
    ScrollBench b;
    b.d->move(b.area.topLeft() + QPoint(b.area.width() / 3, b.area.height() / 4));
    QTRY_COMPARE(b.d->frameGeometry().left(), b.area.left() + b.area.width() / 3);
    b.Zoom(4);
    QTRY_VERIFY(b.WithinArea());
    QCOMPARE(b.d->frameGeometry().size(), b.area.size());
  }

  void aWideAppletScrollsOnlySideways() {
    ScrollBench b;
    b.d->SetAppletSize(b.area.width() / 2, 40);
    b.d->SetZoom(4);
    QTRY_VERIFY(b.d->scrollH->isVisible());
    QVERIFY(b.d->scrollV->isHidden());
    // As high as the applet and the bar, no higher.
    QCOMPARE(b.d->height(), 40 * 4 + b.d->scrollH->height());
    QCOMPARE(b.d->ViewRect().height(), 40 * 4);
    QCOMPARE(b.d->scrollV->maximum(), 0);
  }

  // --- Input in applet pixels while scrolled ---------------------------------------------------

  void aClickWhileScrolledSelectsTheRightButtonToTheBoundaryPixel() {
    ScrollBench b;
    const int one = b.Add(150, 100, 40, 20, kRed);
    const int two = b.Add(190, 100, 40, 20, kGreen);
    b.Zoom(8);
    b.Scroll(1000, 700);
    // Applet pixel 190 begins at window x 190 * 8 - 1000 = 520.
    b.WClick(QPoint(519, 105 * 8 - 700));
    QCOMPARE(b.p().iCurBtn, i16(one));
    QVERIFY(b.m->IsSelected(one));
    b.WClick(QPoint(520, 105 * 8 - 700));
    QCOMPARE(b.p().iCurBtn, i16(two));
    QCOMPARE(b.m->SelectedCount(), 1);
    // And the top edge: applet row 100 begins at window y 100.
    b.WClick(QPoint(300, 99));
    QCOMPARE(b.m->SelectedCount(), 1);
    QCOMPARE(b.p().iCurBtn, i16(two));
    b.WClick(QPoint(300, 100));
    QCOMPARE(b.p().iCurBtn, i16(one));
    // The handles stand around it in the scrolled view.
    const QImage img = b.d->grab().toImage();
    QCOMPARE(At(img, 170 * 8 - 1000, (100 + 20 + 2) * 8 - 700 + 1), kHandleBlue);
    QCOMPARE(At(img, 160 * 8 - 1000, 110 * 8 - 700), Q(kRed));
  }

  void aDragWhileScrolledMovesByAppletPixels() {
    ScrollBench b;
    const int one = b.Add(120, 90, 30, 20, kRed);
    b.Zoom(4);
    b.Scroll(400, 300);
    const QPoint from = b.Win(125, 95);
    QVERIFY(b.d->ViewRect().contains(from + QPoint(40, 16)));
    b.WPress(from);
    // Less than an applet pixel moves nothing.
    b.WMove(from + QPoint(1, 0));
    QCOMPARE(b.Pos(one), QPoint(120, 90));
    b.WMove(from + QPoint(40, 16));
    b.WRelease(from + QPoint(40, 16));
    QCOMPARE(b.Pos(one), QPoint(130, 94));
    const QImage img = b.d->grab().toImage();
    QCOMPARE(At(img, 130 * 4 - 400, 94 * 4 - 300), Q(kRed));
    QCOMPARE(At(img, 130 * 4 - 400 - 1, 94 * 4 - 300), kWhite);
    // An arrow key still moves one applet pixel.
    QTest::keyClick(b.w(), Qt::Key_Right);
    QCOMPARE(b.Pos(one), QPoint(131, 94));
  }

  void handlesAndTheLabelMarkerWorkWhileScrolled() {
    ScrollBench b;
    const int one = b.Add(120, 90, 60, 30, kRed);
    tButton& btn = b.p().button(one);
    for (int s = 1; s <= 3; ++s) {
      btn.PositionText[s] = true;
      btn.LabelPosX[s] = 5;
      btn.LabelPosY[s] = 5;
    }
    b.Zoom(4);
    b.Scroll(300, 250);
    b.WClick(b.Win(160, 110));
    QCOMPARE(b.p().iCurBtn, i16(one));
    // The right handle, 10 applet pixels to the right.
    const PointD right = b.d->picSizer[1].pos;
    const QPoint h = b.Win(static_cast<int>(right.x) + 3, static_cast<int>(right.y) + 3);
    b.WPress(h);
    b.WMove(h + QPoint(40, 0));
    b.WRelease(h + QPoint(40, 0));
    QCOMPARE(b.p().button(one).Width, i16(60 + 4 + 10));
    b.d->MoveLabelPositioner(one);
    QVERIFY(b.d->picLabelPositioner.visible);
    const QPoint m = b.Win(static_cast<int>(b.d->picLabelPositioner.left) + 1,
                           static_cast<int>(b.d->picLabelPositioner.top) + 1);
    b.WPress(m);
    b.WMove(m + QPoint(40, 8));
    b.WRelease(m + QPoint(40, 8));
    const int s = GetStateIndex(b.p().sState);
    QCOMPARE(b.p().button(one).LabelPosX[s], i16(15));
    QCOMPARE(b.p().button(one).LabelPosY[s], i16(7));
  }

  void aPressOnTheEmptyScrolledViewKeepsItsAppletPlace() {
    ScrollBench b;
    b.Zoom(8);
    b.Scroll(800, 400);
    b.WClick(QPoint(37, 21));
    QCOMPARE(QPoint(int(b.d->sngNewBtnX), int(b.d->sngNewBtnY)), QPoint(104, 52));
  }

  // --- The applet size -----------------------------------------------------------------------

  void aResizeWhileScrolledKeepsTheAppletSizeAndOneThatFitsStillChangesIt() {
    ScrollBench b;
    b.p().bProjectSaved = true;
    b.Zoom(8);
    b.Scroll(500, 300);
    b.d->resize(400, 300);
    QTRY_COMPARE(b.d->width(), 400);
    QTest::qWait(20);
    QCOMPARE(int(b.p().AppletWidth), b.W);
    QCOMPARE(int(b.p().AppletHeight), b.H);
    QVERIFY(b.p().bProjectSaved);
    QCOMPARE(b.m->txtAppletWidth->text(), QString::number(b.W));
    // Only the view changed: a wider scroll range, the same offset.
    const QRect view = b.d->ViewRect();
    QCOMPARE(view.width(), 400 - b.d->scrollV->width());
    QCOMPARE(b.d->scrollH->maximum(), b.W * 8 - view.width());
    QCOMPARE(b.d->ScrollOffset(), QPoint(500, 300));
    // At a zoom that fits the window's size is the applet's again.
    b.Zoom(2);
    QCOMPARE(b.d->ScrollOffset(), QPoint(0, 0));
    b.d->resize(2 * 100, 2 * 60 + 1);
    QTRY_COMPARE(int(b.p().AppletWidth), 100);
    QCOMPARE(int(b.p().AppletHeight), 60);
    QVERIFY(!b.p().bProjectSaved);
  }

  void theAppletFieldsStillSizeTheAppletWhileScrolled() {
    ScrollBench b;
    b.Zoom(4);
    QLineEdit* f = b.m->txtAppletWidth;
    f->setFocus();
    f->selectAll();
    QTest::keyClicks(f, QString::number(b.W + 50));
    QTest::keyClick(f, Qt::Key_Return);
    QCOMPARE(int(b.p().AppletWidth), b.W + 50);
    QCOMPARE(b.d->Zoom(), 4);
    QVERIFY(b.d->Scrolling());
    QTRY_COMPARE(b.d->scrollH->maximum(), (b.W + 50) * 4 - b.d->ViewRect().width());
    // Small enough to fit at 400 %: the window is the applet again.
    for (QLineEdit* e : {f, b.m->txtAppletHeight}) {
      e->setFocus();
      e->selectAll();
      QTest::keyClicks(e, "40");
      QTest::keyClick(e, Qt::Key_Return);
    }
    QCOMPARE(int(b.p().AppletWidth), 40);
    QCOMPARE(int(b.p().AppletHeight), 40);
    QCOMPARE(b.d->Zoom(), 4);
    QVERIFY(!b.d->Scrolling());
    QTRY_COMPARE(b.d->size(), QSize(160, 160));
    QVERIFY(b.d->scrollH->isHidden() && b.d->scrollV->isHidden());
  }

  void zoomingBackTo100GivesTheWindowTheAppletSize() {
    ScrollBench b;
    b.Zoom(8);
    b.Scroll(200, 100);
    b.Zoom(1);
    QVERIFY(!b.d->Scrolling());
    QCOMPARE(b.d->size(), QSize(b.W, b.H));
    QVERIFY(b.d->scrollH->isHidden() && b.d->scrollV->isHidden());
    QCOMPARE(b.d->ScrollOffset(), QPoint(0, 0));
    QCOMPARE(b.d->ViewRect(), b.d->rect());
    QCOMPARE(int(b.p().AppletWidth), b.W);
    b.d->resize(b.W + 10, b.H);
    QTRY_COMPARE(int(b.p().AppletWidth), b.W + 10);
  }

  void aSavedFileIsTheSameWhileScrolled() {
    ScrollBench b;
    b.Add(10, 10, 40, 20, kRed);
    const std::string one = b.a.home.path() + "/one.kpn";
    const std::string eight = b.a.home.path() + "/eight.kpn";
    QVERIFY(SaveProject(b.p(), b.a.env(), one, false, false));
    b.Zoom(8);
    b.Scroll(300, 200);
    b.d->resize(500, 400);
    QTest::qWait(20);
    QVERIFY(SaveProject(b.p(), b.a.env(), eight, false, false));
    QVERIFY(!FileBytes(one).empty());
    QCOMPARE(FileBytes(eight), FileBytes(one));
  }

  // --- The pixels --------------------------------------------------------------------------------

  void theScrolledViewShowsTheOneToOnePixelsScaled() {
    ScrollBench b;
    Session().bShowGrid = true;
    Session().iGridX = 10;
    Session().iGridY = 10;
    b.d->SyncGrid();
    b.d->Refresh();
    b.Add(60, 40, 50, 30, kRed);
    b.Add(150, 90, 40, 40, kBlue);
    const QImage one = b.d->grab().toImage();
    QCOMPARE(one.size(), QSize(b.W, b.H));
    for (int z : {4, 8}) {
      b.Zoom(z);
      // An offset that is no whole number of applet pixels.
      b.Scroll(333, 211);
      const QImage img = b.d->grab().toImage();
      const QString bad = ScaledMismatch(img, one, b.d->ViewRect(), b.d->ScrollOffset(), z);
      QVERIFY2(bad.isEmpty(), qPrintable(bad));
    }
  }

  void theSampleProjectAt800PercentScrolledShowsItsPixels() {
    App a;
    a.program->Main(a.demo());
    frmDesign* d = a.main()->Design();
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d));
    QTRY_COMPARE(d->width(), int(a.p().AppletWidth));
    QTest::qWait(300);
    d->Refresh();
    const QImage one = d->grab().toImage();
    const int W = a.p().AppletWidth, H = a.p().AppletHeight;
    for (int z : {4, 8}) {
      d->SetZoom(z);
      QVERIFY(d->Scrolling());
      QTRY_VERIFY(d->scrollH->isVisible());
      QVERIFY(d->screen()->availableGeometry().contains(d->frameGeometry()));
      // Into the middle.
      d->scrollH->setValue(d->scrollH->maximum() / 2);
      d->scrollV->setValue(d->scrollV->maximum() / 2);
      QVERIFY(d->ScrollOffset().x() > 0);
      const QImage img = d->grab().toImage();
      const QString bad = ScaledMismatch(img, one, d->ViewRect(), d->ScrollOffset(), z);
      QVERIFY2(bad.isEmpty(), qPrintable(bad));
      Shot(d, qPrintable(QString("design_demo_scrolled_%1").arg(z * 100)));
    }
    QCOMPARE(int(a.p().AppletWidth), W);
    QCOMPARE(int(a.p().AppletHeight), H);
  }

  // --- Wheel and keys ------------------------------------------------------------------------------

  void theWheelScrollsDownAndWithShiftSideways() {
    ScrollBench b;
    b.Zoom(8);
    b.Scroll(400, 400);
    const int notch = QGuiApplication::styleHints()->wheelScrollLines() * 20;
    b.Wheel(QPoint(50, 50), -120, Qt::NoModifier);
    QCOMPARE(b.d->ScrollOffset(), QPoint(400, 400 + notch));
    b.Wheel(QPoint(50, 50), 120, Qt::NoModifier);
    QCOMPARE(b.d->ScrollOffset(), QPoint(400, 400));
    b.Wheel(QPoint(50, 50), -120, Qt::ShiftModifier);
    QCOMPARE(b.d->ScrollOffset(), QPoint(400 + notch, 400));
    QCOMPARE(b.d->Zoom(), 8);
    // The end of the range holds.
    for (int k = 0; k < 200; ++k) b.Wheel(QPoint(50, 50), 120, Qt::NoModifier);
    QCOMPARE(b.d->ScrollOffset().y(), 0);
  }

  void ctrlWheelZoomsAroundTheAppletPixelUnderTheMouse() {
    ScrollBench b;
    b.Zoom(4);
    b.Scroll(300, 200);
    const QPoint mouse(150, 90);
    const QPoint under = b.AppletAt(mouse);
    b.Wheel(mouse, 120, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 8);
    QTest::qWait(20);
    QCOMPARE(b.AppletAt(mouse), under);
    b.Wheel(mouse, -120, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 4);
    QTest::qWait(20);
    QCOMPARE(b.AppletAt(mouse), under);
  }

  void aKeyZoomKeepsTheViewsCentre() {
    ScrollBench b;
    b.Zoom(4);
    b.Scroll(250, 150);
    const QPoint centre = b.AppletAt(b.d->ViewRect().center());
    QTest::keyClick(b.w(), Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 8);
    QTest::qWait(20);
    const QPoint after = b.AppletAt(b.d->ViewRect().center());
    QVERIFY2((after - centre).manhattanLength() <= 2,
             qPrintable(QString("%1,%2 then %3,%4")
                            .arg(centre.x())
                            .arg(centre.y())
                            .arg(after.x())
                            .arg(after.y())));
  }

  void pageKeysHomeEndAndTheBarsOwnKeysScroll() {
    ScrollBench b;
    b.Zoom(8);
    b.Scroll(0, 0);
    const int page = b.d->scrollV->pageStep();
    QTest::keyClick(b.w(), Qt::Key_PageDown);
    QCOMPARE(b.d->ScrollOffset(), QPoint(0, page));
    QTest::keyClick(b.w(), Qt::Key_PageDown, Qt::ShiftModifier);
    QCOMPARE(b.d->ScrollOffset(), QPoint(b.d->scrollH->pageStep(), page));
    QTest::keyClick(b.w(), Qt::Key_End);
    QCOMPARE(b.d->ScrollOffset().y(), b.d->scrollV->maximum());
    QTest::keyClick(b.w(), Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(b.d->ScrollOffset().x(), 0);
    // Tab reaches a bar; its arrow keys move the view.
    b.d->setFocus();
    QTest::keyClick(b.d, Qt::Key_Tab);
    QVERIFY(b.d->scrollH->hasFocus() || b.d->scrollV->hasFocus());
    b.d->scrollH->setFocus();
    QTest::keyClick(b.d->scrollH, Qt::Key_Right);
    QCOMPARE(b.d->ScrollOffset().x(), b.d->scrollH->singleStep());
    QTest::keyClick(b.d->scrollH, Qt::Key_Left);
    QCOMPARE(b.d->ScrollOffset().x(), 0);
    b.d->scrollV->setFocus();
    QTest::keyClick(b.d->scrollV, Qt::Key_Up);
    QCOMPARE(b.d->ScrollOffset().y(), b.d->scrollV->maximum() - b.d->scrollV->singleStep());
    // A click on a bar leaves the arrow keys with the buttons.
    b.d->setFocus();
    QTest::mouseClick(b.d->scrollV, Qt::LeftButton, {},
                      QPoint(b.d->scrollV->width() / 2, b.d->scrollV->height() / 2));
    QVERIFY(!b.d->scrollV->hasFocus());
  }
};

QTEST_MAIN(DesignZoomScrollTest)
#include "test_design_zoom_scroll.moc"
