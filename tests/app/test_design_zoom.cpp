// The design window zoomed: events come through the window system as a
// person's would, at 100, 200, 400 and 800 %, and every press, drag and
// handle works in applet pixels. Also the first click after a menu closed,
// and a drag past a transparent button.
#include <QActionGroup>
#include <QMenu>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest>

#include "design/frm_grid.h"
#include "project/project_file.h"
#include "render/scene.h"
#include "tests/app/design_bench.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// A small applet on a settled window; the zoom steps wait for the window.
struct ZoomBench : Bench {
  explicit ZoomBench(int appletW = 120, int appletH = 80) { Settle(appletW, appletH); }
  // A window manager may answer the resize later.
  void Zoom(int z) {
    d->SetZoom(z);
    QCOMPARE(d->Zoom(), z);
    QTRY_COMPARE(d->width(), p().AppletWidth * z);
    QTRY_COMPARE(d->height(), p().AppletHeight * z);
  }
  // Applet pixel (x, y) as a window position at the present zoom, a
  // little inside the pixel's square.
  QPoint Screen(int x, int y) const {
    const int z = d->Zoom();
    return QPoint(x * z + z / 2, y * z + z / 2);
  }
  void Key(Qt::Key k, Qt::KeyboardModifiers m = Qt::ControlModifier) { QTest::keyClick(w(), k, m); }
};

// The sample project on a shown design window, settled: its transparent
// button "Help" and the opaque "Contact" beside it, below it in the order.
struct DemoBench {
  App a;
  frmDesign* d = nullptr;
  int help = 0, contact = 0;
  DemoBench() {
    a.program->Main(a.demo());
    d = a.main()->Design();
    d->show();
    QVERIFY(QTest::qWaitForWindowExposed(d));
    QTRY_COMPARE(d->width(), int(p().AppletWidth));
    QTest::qWait(50);
    for (int i = 1; i <= p().ButtonCount; ++i) {
      if (p().button(i).sBName == "Help") help = i;
      if (p().button(i).sBName == "Contact") contact = i;
    }
    QVERIFY(help > 0 && contact > 0 && contact < help);
    QVERIFY(p().button(help).noBackGround[GetStateIndex(p().sState)]);
    // A window manager's late answer resizes the applet, and a resize
    // paints the background for the screen, unlike F5: start from F5.
    QTest::qWait(300);
    d->Refresh();
  }
  Project& p() { return a.p(); }
  // What the window shows now against what F5 draws afresh.
  void CompareWithAFreshDraw() {
    const QImage after = d->Composed();
    d->Refresh();
    const QImage fresh = d->Composed();
    const kp::Surface& hs = d->scene().pButtons(help);
    const QRect r(hs.Left, hs.Top, hs.Width(), hs.Height());
    if (after != fresh && !qEnvironmentVariableIsEmpty("KP_SHOT_DIR")) {
      after.save(qEnvironmentVariable("KP_SHOT_DIR") + "/stale_after.png");
      fresh.save(qEnvironmentVariable("KP_SHOT_DIR") + "/stale_fresh.png");
    }
    QCOMPARE(after.copy(r), fresh.copy(r));
    QCOMPARE(after, fresh);
  }
};

}  // namespace

class DesignZoomTest : public WatchedTest {
  Q_OBJECT

 private slots:
  // --- The view ----------------------------------------------------------------------------

  void zoomScalesTheWindowButNeverTheAppletOrTheProject() {
    ZoomBench b(120, 80);
    b.p().bProjectSaved = true;
    for (int z : {2, 4, 1, 4}) {
      b.d->SetZoom(z);
      QCOMPARE(b.d->Zoom(), z);
      // A window manager may answer later.
      QTRY_COMPARE(b.d->width(), 120 * z);
      QTRY_COMPARE(b.d->height(), 80 * z);
      QCOMPARE(b.p().AppletWidth, i16(120));
      QCOMPARE(b.p().AppletHeight, i16(80));
    }
    // Quick steps, before the window manager answered the first.
    b.d->SetZoom(1);
    b.d->SetZoom(2);
    b.d->SetZoom(4);
    QTRY_COMPARE(b.d->width(), 120 * 4);
    QTest::qWait(100);
    QCOMPARE(b.d->width(), 120 * 4);
    QCOMPARE(b.p().AppletWidth, i16(120));
    QCOMPARE(b.p().AppletHeight, i16(80));
    QVERIFY(b.p().bProjectSaved);
    // The surfaces stay at 1:1: the picture of the scene is not zoomed.
    b.Add(30, 20, 10, 10, kRed);
    const QImage img = b.Composed();
    QCOMPARE(At(img, 30, 20), Q(kRed));
    QCOMPARE(At(img, 39, 29), Q(kRed));
    QCOMPARE(At(img, 40, 29), kWhite);
  }

  void zoomedViewShowsEveryAppletPixelAsASquareWithoutSmoothing() {
    ZoomBench b(90, 60);
    Session().bShowGrid = true;
    Session().iGridX = 10;
    Session().iGridY = 10;
    b.d->SyncGrid();
    b.d->Refresh();
    b.Add(20, 20, 30, 20, kRed);
    const QImage one = b.Shown();
    for (int z : {2, 8}) {
      b.Zoom(z);
      const QImage img = b.Shown();
      QCOMPARE(img.width(), 90 * z);
      for (int y = 0; y < 60; y += 3)
        for (int x = 0; x < 90; x += 1) {
          const QColor want = At(one, x, y);
          // Every screen pixel of the square, corners and inside.
          QCOMPARE(At(img, x * z, y * z), want);
          QCOMPARE(At(img, x * z + z - 1, y * z + z - 1), want);
          QCOMPARE(At(img, x * z + z / 2, y * z), want);
        }
      // The grid line at x = 10 is z pixels wide and no wider.
      QCOMPARE(At(img, 10 * z, 5 * z), kHandleGrey);
      QCOMPARE(At(img, 11 * z - 1, 5 * z), kHandleGrey);
      QCOMPARE(At(img, 11 * z, 5 * z), kWhite);
      QCOMPARE(At(img, 10 * z - 1, 5 * z), kWhite);
      Shot(b.d, z == 2 ? "design_zoom_200" : "design_zoom_800");
    }
  }

  void shortcutsStepTheZoomAndCtrl0GoesBackTo100() {
    ZoomBench b(90, 60);
    b.Key(Qt::Key_Plus);
    QCOMPARE(b.d->Zoom(), 2);
    b.Key(Qt::Key_Equal);  // the plus key without Shift
    QCOMPARE(b.d->Zoom(), 4);
    b.Key(Qt::Key_Plus);
    QCOMPARE(b.d->Zoom(), 8);
    b.Key(Qt::Key_Plus);  // the last step
    QCOMPARE(b.d->Zoom(), 8);
    b.Key(Qt::Key_Minus);
    QCOMPARE(b.d->Zoom(), 4);
    QTRY_COMPARE(b.d->width(), 90 * 4);
    b.Key(Qt::Key_0);
    QCOMPARE(b.d->Zoom(), 1);
    QTRY_COMPARE(b.d->width(), 90);
    b.Key(Qt::Key_Minus);
    QCOMPARE(b.d->Zoom(), 1);
    // Without Ctrl the keys are no zoom keys.
    b.Key(Qt::Key_Plus, Qt::NoModifier);
    QCOMPARE(b.d->Zoom(), 1);
  }

  void ctrlWheelStepsTheZoomAWholeNotchAtATime() {
    ZoomBench b(90, 60);
    b.Wheel(QPoint(10, 10), 120, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 2);
    b.Wheel(QPoint(10, 10), 60, Qt::ControlModifier);  // half a notch, as a touchpad sends it
    QCOMPARE(b.d->Zoom(), 2);
    b.Wheel(QPoint(10, 10), 60, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 4);
    b.Wheel(QPoint(10, 10), -120, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 2);
    b.Wheel(QPoint(10, 10), 120, Qt::NoModifier);
    QCOMPARE(b.d->Zoom(), 2);
    b.Wheel(QPoint(10, 10), -240, Qt::ControlModifier);
    QCOMPARE(b.d->Zoom(), 1);
    QCOMPARE(b.p().AppletWidth, i16(90));
  }

  void theCommonMenuShowsAndSetsTheZoom() {
    ZoomBench b(90, 60);
    b.d->SetZoom(4);
    QStringList texts;
    for (QAction* a : b.d->mnuZoom->actions()) texts << a->text();
    QCOMPARE(texts, QStringList({"&100 %", "&200 %", "&400 %", "&800 %"}));
    QCOMPARE(b.d->mnuZoom->title(), QString("&Zoom"));
    QVERIFY(b.d->mnuZoomSteps[2]->isChecked());
    QVERIFY(!b.d->mnuZoomSteps[0]->isChecked());
    b.d->mnuZoomSteps[1]->trigger();
    QCOMPARE(b.d->Zoom(), 2);
    QVERIFY(b.d->mnuZoomSteps[1]->isChecked());
    QVERIFY(!b.d->mnuZoomSteps[2]->isChecked());
  }

  void aStepTheScreenCannotHoldIsStillOfferedAndALargerAppletScrolls() {
    ZoomBench b(90, 60);
    const QRect area = b.d->screen()->availableGeometry();
    b.Zoom(8);
    QVERIFY(!b.d->Scrolling());
    // An applet as wide as the screen at 800 % no longer fits: the zoom
    // stays and the view scrolls within the screen.
    b.d->SetAppletSize(area.width() / 4, 60);
    QCOMPARE(b.d->Zoom(), 8);
    QCOMPARE(b.p().AppletWidth, i16(area.width() / 4));
    QVERIFY(!b.d->ZoomFits(8));
    QVERIFY(b.d->Scrolling());
    QTRY_VERIFY(b.d->scrollH->isVisible());
    QVERIFY(b.d->frameGeometry().width() <= area.width());
    QCOMPARE(b.p().AppletWidth, i16(area.width() / 4));
    b.d->mnuZoom->aboutToShow();
    for (QAction* a : b.d->mnuZoomSteps) QVERIFY(a->isEnabled());
  }

  void aSavedFileIsTheSameWhateverTheZoom() {
    ZoomBench b(100, 70);
    b.Add(10, 10, 40, 20, kRed);
    const std::string one = b.a.home.path() + "/one.kpn";
    const std::string four = b.a.home.path() + "/four.kpn";
    QVERIFY(SaveProject(b.p(), b.a.env(), one, false, false));
    b.Zoom(4);
    QVERIFY(SaveProject(b.p(), b.a.env(), four, false, false));
    QVERIFY(!FileBytes(one).empty());
    QCOMPARE(FileBytes(four), FileBytes(one));
  }

  // --- Input in applet pixels ------------------------------------------------------------------

  void aClickAt400SelectsTheButtonUnderTheMouse() {
    ZoomBench b(120, 80);
    const int one = b.Add(10, 10, 40, 20, kRed);
    const int two = b.Add(60, 10, 40, 20, kGreen);
    b.Zoom(4);
    b.WClick(b.Screen(20, 15));
    QCOMPARE(b.p().iCurBtn, i16(one));
    // The last screen pixel before button two lies on applet pixel 59.
    b.WClick(QPoint(60 * 4 - 1, 15 * 4));
    QCOMPARE(b.p().iCurBtn, i16(one));
    QVERIFY(b.m->IsSelected(one));
    b.WClick(QPoint(60 * 4, 15 * 4));
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.m->IsSelected(two));
    QCOMPARE(b.m->SelectedCount(), 1);
    // The handles stand around it, drawn in applet pixels.
    const QImage img = b.Shown();
    QCOMPARE(At(img, 80 * 4, (10 + 20 + 2) * 4 + 1), kHandleBlue);
    QCOMPARE(At(img, 65 * 4, 15 * 4), Q(kGreen));
  }

  void aDragMovesByAppletPixelsAtEveryZoom() {
    for (int z : {1, 2, 4, 8}) {
      ZoomBench b(90, 60);
      const int one = b.Add(10, 10, 30, 20, kRed);
      b.Zoom(z);
      const QPoint from = b.Screen(15, 15);
      b.WPress(from);
      // Less than an applet pixel moves nothing.
      b.WMove(from + QPoint(z - 1 - z / 2, 0));
      QCOMPARE(b.Pos(one), QPoint(10, 10));
      b.WMove(from + QPoint(40, 16));
      b.WRelease(from + QPoint(40, 16));
      QCOMPARE(b.Pos(one), QPoint(10 + 40 / z, 10 + 16 / z));
      const QImage img = b.Shown();
      const QPoint at = b.Pos(one);
      QCOMPARE(At(img, at.x() * z, at.y() * z), Q(kRed));
      QCOMPARE(At(img, at.x() * z - 1, at.y() * z), kWhite);
    }
  }

  void theArrowKeysStillNudgeOneAppletPixelWhenZoomed() {
    ZoomBench b(90, 60);
    const int one = b.Add(10, 10, 30, 20, kRed);
    b.Zoom(4);
    b.WClick(b.Screen(15, 15));
    QTest::keyClick(b.w(), Qt::Key_Right);
    QCOMPARE(b.Pos(one), QPoint(11, 10));
  }

  void handlesResizeInAppletPixelsWhenZoomed() {
    ZoomBench b(120, 80);
    const int one = b.Add(10, 10, 40, 20, kRed);
    b.Zoom(4);
    b.WClick(b.Screen(20, 15));
    // The right handle: 6 applet pixels, so 24 screen pixels square.
    const PointD right = b.d->picSizer[1].pos;
    const QPoint h(static_cast<int>(right.x * 4) + 12, static_cast<int>(right.y * 4) + 12);
    b.WPress(h);
    b.WMove(h + QPoint(40, 0));
    b.WRelease(h + QPoint(40, 0));
    // 10 applet pixels, and the jump of 4 of the first move.
    QCOMPARE(b.p().button(one).Width, i16(40 + 4 + 10));
    const PointD bottom = b.d->picSizer[0].pos;
    const QPoint hb(static_cast<int>(bottom.x * 4) + 12, static_cast<int>(bottom.y * 4) + 12);
    b.WPress(hb);
    b.WMove(hb + QPoint(0, 20));
    b.WRelease(hb + QPoint(0, 20));
    QCOMPARE(b.p().button(one).Height, i16(20 + 4 + 5));
    const QImage img = b.Shown();
    QCOMPARE(At(img, (10 + 54) * 4 - 1, (10 + 29) * 4 - 1), Q(kRed));
    QCOMPARE(At(img, (10 + 54) * 4, 12 * 4), kWhite);
  }

  void theLabelMarkerMovesByAppletPixelsWhenZoomed() {
    ZoomBench b(120, 80);
    const int one = b.Add(10, 10, 60, 30, kRed);
    tButton& btn = b.p().button(one);
    for (int s = 1; s <= 3; ++s) {
      btn.PositionText[s] = true;
      btn.LabelPosX[s] = 5;
      btn.LabelPosY[s] = 5;
    }
    b.Zoom(4);
    b.WClick(b.Screen(50, 30));
    b.d->MoveLabelPositioner(one);
    QVERIFY(b.d->picLabelPositioner.visible);
    const QPoint m(static_cast<int>(b.d->picLabelPositioner.left * 4) + 6,
                   static_cast<int>(b.d->picLabelPositioner.top * 4) + 6);
    b.WPress(m);
    b.WMove(m + QPoint(40, 8));
    b.WRelease(m + QPoint(40, 8));
    const int s = GetStateIndex(b.p().sState);
    QCOMPARE(b.p().button(one).LabelPosX[s], i16(15));
    QCOMPARE(b.p().button(one).LabelPosY[s], i16(7));
  }

  void resizingTheZoomedWindowGivesTheAppletItsSizeInAppletPixels() {
    ZoomBench b(90, 60);
    b.Zoom(2);
    b.p().bProjectSaved = true;
    b.d->resize(300, 161);
    QTRY_COMPARE(b.p().AppletWidth, i16(150));
    QCOMPARE(b.p().AppletHeight, i16(80));
    QCOMPARE(b.m->txtAppletWidth->text(), QString("150"));
    QVERIFY(!b.p().bProjectSaved);
    // The panel's size comes back zoomed.
    b.d->SetAppletSize(100, 50);
    QTRY_COMPARE(b.d->width(), 200);
    QTRY_COMPARE(b.d->height(), 100);
    QCOMPARE(b.p().AppletWidth, i16(100));
  }

  // --- The first click after a menu or a dialog --------------------------------------------

  void theFirstClickAfterTheCommonMenuClosedSelects() {
    ZoomBench b(200, 100);
    const int one = b.Add(10, 10, 40, 20, kRed);
    const int two = b.Add(100, 10, 40, 20, kGreen);
    b.WClick({20, 20});
    QCOMPARE(b.p().iCurBtn, i16(one));
    b.WPress({180, 80}, Qt::RightButton);
    QTRY_VERIFY(b.d->mnuCommon->isVisible());
    // The release reaches the menu, as a person's does.
    b.WRelease({180, 80}, Qt::RightButton);
    QTest::keyClick(b.d->mnuCommon, Qt::Key_Escape);
    QTRY_VERIFY(!b.d->mnuCommon->isVisible());
    b.WClick({110, 20});
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.m->IsSelected(two));
    QTest::keyClick(b.w(), Qt::Key_Right);
    QCOMPARE(b.Pos(two), QPoint(101, 10));
    QCOMPARE(b.Pos(one), QPoint(10, 10));
  }

  void theFirstClickAfterTheEditMenuClosedSelects() {
    ZoomBench b(200, 100);
    const int one = b.Add(10, 10, 40, 20, kRed);
    const int two = b.Add(100, 10, 40, 20, kGreen);
    b.WPress({20, 20}, Qt::RightButton);
    QTRY_VERIFY(b.m->mnuEdit->isVisible());
    b.WRelease({20, 20}, Qt::RightButton);
    QCOMPARE(b.p().iCurBtn, i16(one));
    b.m->mnuEdit->hide();
    b.WPress({110, 20});
    b.WMove({115, 25});
    b.WRelease({115, 25});
    QCOMPARE(b.p().iCurBtn, i16(two));
    QCOMPARE(b.Pos(two), QPoint(105, 15));
  }

  void theFirstClickAfterAMenuTookTheLeftReleaseSelects() {
    ZoomBench b(200, 100);
    const int one = b.Add(10, 10, 40, 20, kRed);
    const int two = b.Add(100, 10, 40, 20, kGreen);
    b.WPress({20, 20});
    QCOMPARE(b.p().iCurBtn, i16(one));
    // A menu opens while the button is held, and takes its release.
    b.d->mnuCommon->popup(b.d->mapToGlobal(QPoint(150, 60)));
    QTRY_VERIFY(b.d->mnuCommon->isVisible());
    b.WRelease({20, 20});
    QTest::keyClick(b.d->mnuCommon, Qt::Key_Escape);
    QTRY_VERIFY(!b.d->mnuCommon->isVisible());
    b.WClick({110, 20});
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(!b.d->bMouseDownBtn);
    QCOMPARE(b.Pos(one), QPoint(10, 10));
  }

  void theFirstClickAfterTheGridDialogClosedSelects() {
    ZoomBench b(200, 100);
    b.Add(10, 10, 40, 20, kRed);
    const int two = b.Add(100, 10, 40, 20, kGreen);
    b.WClick({20, 20});
    b.WPress({180, 80}, Qt::RightButton);
    QTRY_VERIFY(b.d->mnuCommon->isVisible());
    b.WRelease({180, 80}, Qt::RightButton);
    QMenu* menu = b.d->mnuCommon;
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(b.d->mnuGrid).center());
    QTRY_VERIFY(b.d->Grid() && b.d->Grid()->isVisible());
    QVERIFY(!menu->isVisible());
    b.d->Grid()->close();
    QTRY_VERIFY(!b.d->Grid()->isVisible());
    b.WClick({110, 20});
    QCOMPARE(b.p().iCurBtn, i16(two));
    QVERIFY(b.m->IsSelected(two));
  }

  void theSampleProjectZoomedShowsExactlyItsPixels() {
    DemoBench b;
    if (QTest::currentTestFailed()) return;
    const QImage one = b.d->grab().toImage();
    const int W = b.p().AppletWidth, H = b.p().AppletHeight;
    for (int z : {2, 4, 8}) {
      b.d->SetZoom(z);
      QCOMPARE(b.d->Zoom(), z);
      // A step the screen cannot hold shows the part its view holds.
      const QRect area = b.d->screen()->availableGeometry();
      QTRY_VERIFY(b.d->width() == W * z || b.d->frameGeometry().width() == area.width());
      QCOMPARE(b.d->Scrolling(), !b.d->ZoomFits(z));
      const QRect view = b.d->ViewRect();
      const QPoint off = b.d->ScrollOffset();
      const QImage img = b.d->grab().toImage();
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          const QPoint at = QPoint(x * z, y * z) - off;
          const QPoint last = at + QPoint(z - 1, z - 1);
          if (!view.contains(at) || !view.contains(last)) continue;
          const QRgb want = one.pixel(x, y);
          if (img.pixel(at) != want || img.pixel(last) != want)
            QFAIL(qPrintable(QString("applet pixel %1,%2 at %3").arg(x).arg(y).arg(z)));
        }
      Shot(b.d, qPrintable(QString("design_demo_%1").arg(z * 100)));
    }
    QCOMPARE(b.p().AppletWidth, i16(W));
  }

  // --- A drag past a transparent button ------------------------------------------------------

  void aDragPastTheTransparentHelpLeavesNoPieceInIt() {
    DemoBench b;
    if (QTest::currentTestFailed()) return;
    const tButton c = b.p().button(b.contact);
    const QPoint from(c.x + c.Width / 2, c.y + c.Height / 2);
    QWindow* w = b.d->windowHandle();
    QTest::mousePress(w, Qt::LeftButton, {}, from);
    // Over Help, then away from it and back where it came from.
    QTest::mouseMove(w, from + QPoint(70, 0));
    QVERIFY(b.d->scene().DoCover(b.contact, b.help));
    QTest::mouseMove(w, from + QPoint(70, 70));
    QTest::mouseMove(w, from);
    QTest::mouseRelease(w, Qt::LeftButton, {}, from);
    QCOMPARE(b.p().button(b.contact).x, c.x);
    b.CompareWithAFreshDraw();
  }

  void anArrowKeyPastTheTransparentHelpLeavesNoPieceInIt() {
    DemoBench b;
    if (QTest::currentTestFailed()) return;
    const tButton c = b.p().button(b.contact);
    QWindow* w = b.d->windowHandle();
    QTest::mouseClick(w, Qt::LeftButton, {}, QPoint(c.x + c.Width / 2, c.y + c.Height / 2));
    QCOMPARE(b.p().iCurBtn, i16(b.contact));
    const int gap = b.p().button(b.help).x - (c.x + c.Width);
    for (int k = 0; k < gap + 3; ++k) QTest::keyClick(w, Qt::Key_Right);
    QVERIFY(b.d->scene().DoCover(b.contact, b.help));
    for (int k = 0; k < gap + 3; ++k) QTest::keyClick(w, Qt::Key_Left);
    QCOMPARE(b.p().button(b.contact).x, c.x);
    b.CompareWithAFreshDraw();
  }
};

QTEST_MAIN(DesignZoomTest)
#include "test_design_zoom.moc"
