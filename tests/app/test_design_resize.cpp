// A new applet size, typed into the size fields with Enter or given by
// resizing the design window, leaves the window showing exactly what a
// full repaint of the project at that size shows: background, fade,
// tiles, applet border and buttons.
#include <QLineEdit>
#include <QScreen>
#include <QtTest>

#include "core/settings.h"
#include "design/frm_design.h"
#include "design/geometry.h"
#include "properties/frm_main.h"
#include "render/scene.h"
#include "render/text.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

void Retype(QLineEdit* f, const QString& text) {
  f->setFocus();
  f->selectAll();
  QTest::keyClicks(f, text);
}

// The project drawn from scratch on a surface of its own, cut to the applet.
QImage FullRepaint(const Project& shown) {
  Project p = shown;
  test::ScriptedPrompter prompter;
  QtTextMeasure measure;
  Scene scene(p, prompter, measure);
  scene.SetDesignSize(p.AppletWidth, p.AppletHeight);
  scene.RepaintAll();
  return scene.Compose().copy(0, 0, p.AppletWidth, p.AppletHeight).convertToFormat(
      QImage::Format_RGB32);
}

// What the window shows: the window system's copy of its pixels, not a
// new paint of it, so that a repaint the window never asked for is missed.
QImage Shown(frmDesign* d) {
  // The window system's own events (a size it confirms, an expose) come in
  // their time.
  QTest::qWait(300);
  return d->screen()->grabWindow(d->winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

// The selected button's sizers, which a full repaint does not draw.
bool OnSizer(frmDesign* d, int x, int y) {
  for (const frmDesign::Sizer& s : d->picSizer)
    if (s.visible && QRect(RoundHalfEven(s.pos.x), RoundHalfEven(s.pos.y), kSizerW, kSizerH)
                         .contains(x, y))
      return true;
  return false;
}

// The number of applet pixels that differ, outside the sizers; at a zoom
// each applet pixel is a square of the window's.
int Differences(const QImage& shown, const QImage& full, frmDesign* d, QPoint* first) {
  const int z = d->Zoom();
  int n = 0;
  for (int y = 0; y < full.height(); ++y)
    for (int x = 0; x < full.width(); ++x) {
      if (OnSizer(d, x, y) || shown.pixel(x * z, y * z) == full.pixel(x, y)) continue;
      if (n++ == 0) *first = QPoint(x, y);
    }
  return n;
}

#define EXPECT_FULL_REPAINT(a)                                                          \
  do {                                                                                  \
    frmDesign* d_ = (a).main()->Design();                                               \
    const QImage full_ = FullRepaint((a).p());                                          \
    const QImage shown_ = Shown(d_);                                                    \
    QCOMPARE(shown_.size(), full_.size() * d_->Zoom());                                 \
    QPoint at_;                                                                         \
    const int n_ = Differences(shown_, full_, d_, &at_);                                \
    QVERIFY2(n_ == 0, qPrintable(QString("%1 pixels differ, the first at (%2, %3)")     \
                                     .arg(n_).arg(at_.x()).arg(at_.y())));              \
  } while (0)

}  // namespace

class DesignResize : public WatchedTest {
  Q_OBJECT

  // The sample project with a gradient, the style of its background
  // picture and the program setting for tiling taken from the test's data.
  static void Open(App& a, int fadeStyle) {
    QFETCH(int, backStyle);
    QFETCH(bool, autoTile);
    a.store.Set(kSecParams, "AutoTile", autoTile ? "1" : "0");
    a.program->Main(a.demo());
    a.main()->show();
    frmDesign* d = a.main()->Design();
    d->show();
    // Room to grow on the screen: a part off the screen has no pixels to see.
    d->move(0, 0);
    QVERIFY(QTest::qWaitForWindowExposed(d));
    a.p().iFadeStyle = static_cast<i16>(fadeStyle);
    a.p().BackImgStyle = static_cast<i16>(backStyle);
    QVERIFY(a.p().BackGround != a.p().cFadeColor);
    d->RepaintAll();
    d->update();
    EXPECT_FULL_REPAINT(a);
  }

  static void Rows() {
    QTest::addColumn<int>("backStyle");
    QTest::addColumn<bool>("autoTile");
    QTest::newRow("no picture") << 0 << true;
    QTest::newRow("tiled picture") << 3 << true;
    QTest::newRow("centred picture") << 2 << true;
  }

 private slots:
  void aWidthTypedWithEnterShowsTheFadeAtTheNewWidth_data() { Rows(); }
  void aWidthTypedWithEnterShowsTheFadeAtTheNewWidth() {
    App a;
    Open(a, 1);
    const int before = a.p().AppletWidth;
    Retype(a.main()->txtAppletWidth, QString::number(before + 120));
    QTest::keyClick(a.main()->txtAppletWidth, Qt::Key_Return);
    QCOMPARE(int(a.p().AppletWidth), before + 120);
    QCOMPARE(a.main()->Design()->width(), before + 120);
    EXPECT_FULL_REPAINT(a);
    // Narrower again.
    Retype(a.main()->txtAppletWidth, QString::number(before - 100));
    QTest::keyClick(a.main()->txtAppletWidth, Qt::Key_Return);
    QCOMPARE(a.main()->Design()->width(), before - 100);
    EXPECT_FULL_REPAINT(a);
  }

  void aHeightTypedWithEnterShowsTheFadeAtTheNewHeight_data() { Rows(); }
  void aHeightTypedWithEnterShowsTheFadeAtTheNewHeight() {
    App a;
    Open(a, 2);
    const int before = a.p().AppletHeight;
    Retype(a.main()->txtAppletHeight, QString::number(before + 60));
    QTest::keyClick(a.main()->txtAppletHeight, Qt::Key_Enter);
    QCOMPARE(a.main()->Design()->height(), before + 60);
    EXPECT_FULL_REPAINT(a);
  }

  // The window system tells of a size dragged at the window's edge by a
  // resize event, which is what resize() delivers here.
  void aWindowResizedByTheEdgeShowsTheFadeAtTheNewSize_data() { Rows(); }
  void aWindowResizedByTheEdgeShowsTheFadeAtTheNewSize() {
    App a;
    Open(a, 3);
    frmDesign* d = a.main()->Design();
    const int z = d->Zoom();
    const QSize before(a.p().AppletWidth, a.p().AppletHeight);
    d->resize((before + QSize(90, 40)) * z);
    QTest::qWait(100);
    QCOMPARE(int(a.p().AppletWidth), before.width() + 90);
    QCOMPARE(a.main()->txtAppletWidth->text(), QString::number(before.width() + 90));
    EXPECT_FULL_REPAINT(a);
    d->resize((before - QSize(50, 20)) * z);
    QTest::qWait(100);
    QCOMPARE(int(a.p().AppletHeight), before.height() - 20);
    EXPECT_FULL_REPAINT(a);
  }

  // Without tiling ahead a resize paints no tiles at all, so the old
  // background stays until the author refreshes (F5).
  void aTiledPictureWithoutTilingAheadWaitsForTheRefresh_data() {
    QTest::addColumn<int>("backStyle");
    QTest::addColumn<bool>("autoTile");
    QTest::newRow("tiled picture, no tiling ahead") << 3 << false;
  }
  void aTiledPictureWithoutTilingAheadWaitsForTheRefresh() {
    App a;
    Open(a, 1);
    frmDesign* d = a.main()->Design();
    const int before = a.p().AppletWidth;
    Retype(a.main()->txtAppletWidth, QString::number(before + 120));
    QTest::keyClick(a.main()->txtAppletWidth, Qt::Key_Return);
    QCOMPARE(d->width(), before + 120);
    QPoint at;
    QVERIFY(Differences(Shown(d), FullRepaint(a.p()), d, &at) > 0);
    QTest::keyClick(d, Qt::Key_F5);
    EXPECT_FULL_REPAINT(a);
  }
};

QTEST_MAIN(DesignResize)
#include "test_design_resize.moc"
