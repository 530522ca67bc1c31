// The design window's tests share this bench: a started program with an
// empty project, buttons of one plain colour, and the mouse on the window.
#pragma once

#include <QWheelEvent>
#include <QWindow>
#include <QtTest>

#include <fstream>
#include <sstream>
#include <string>

#include "core/startup.h"
#include "design/frm_design.h"
#include "project/button_record.h"
#include "project/new_project.h"
#include "properties/frm_main.h"
#include "tests/app/app_fixture.h"

namespace kp::apptest {

constexpr Colour kRed = RGB(255, 0, 0);
constexpr Colour kGreen = RGB(0, 160, 0);
constexpr Colour kBlue = RGB(0, 0, 255);
const QColor kWhite(255, 255, 255);
const QColor kBlack(0, 0, 0);
const QColor kHandleBlue(0, 0, 128);
const QColor kHandleGrey(128, 128, 128);
const QColor kMarkerFace(255, 255, 0);

inline QColor Q(Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }
inline QColor At(const QImage& img, int x, int y) { return QColor(img.pixel(x, y)); }

// A started program with an empty project and its design window shown.
struct Bench {
  App a;
  frmDesign* d = nullptr;
  frmMain* m = nullptr;

  Bench() {
    a.program->Main("");
    NewProject(a.p(), a.env());
    m = a.main();
    d = m->Design();
    d->show();
    d->activateWindow();
    QCoreApplication::processEvents();
  }

  Project& p() { return a.p(); }

  // A plain button: one colour in every state, no border, label or picture.
  int Add(int x, int y, int w, int h, Colour back, bool transparent = false) {
    Project& pr = a.p();
    const int i = AddNewButton(pr, a.env());
    tButton& b = pr.button(i);
    b.x = static_cast<i16>(x);
    b.y = static_cast<i16>(y);
    b.Width = static_cast<i16>(w);
    b.Height = static_cast<i16>(h);
    for (int s = 1; s <= 3; ++s) {
      b.BackColor[s] = back;
      b.FadeStyle[s] = 0;
      b.BorderStyle[s] = 0;
      b.BorderWidth[s] = 0;
      b.FrameThick[s] = 0;
      b.TFrameThick[s] = 0;
      b.Image[s].clear();
      b.Label[s].clear();
      b.noBackGround[s] = transparent;
      b.PositionText[s] = false;
    }
    a.env().view.LoadButton(pr, i);
    return i;
  }

  QImage Composed() const { return d->Composed(); }
  QImage Shown() const { return d->grab().toImage(); }

  void Press(QPoint at, Qt::KeyboardModifiers mods = {}) {
    QTest::mousePress(d, Qt::LeftButton, mods, at);
  }
  void MoveTo(QPoint at) { QTest::mouseMove(d, at); }
  void Release(QPoint at, Qt::KeyboardModifiers mods = {}) {
    QTest::mouseRelease(d, Qt::LeftButton, mods, at);
  }
  void Click(QPoint at, Qt::KeyboardModifiers mods = {}) {
    Press(at, mods);
    Release(at, mods);
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers mods = {}) {
    Press(from, mods);
    MoveTo(to);
    Release(to, mods);
  }
  // The centre of handle k as the window shows it.
  QPoint Handle(int k) const {
    const PointD s = d->picSizer[static_cast<size_t>(k)].pos;
    return QPoint(static_cast<int>(s.x) + kSizerW / 2, static_cast<int>(s.y) + kSizerH / 2);
  }
  QPoint Marker() const {
    return QPoint(static_cast<int>(d->picLabelPositioner.left) + 3,
                  static_cast<int>(d->picLabelPositioner.top) + 3);
  }
  bool HandlesShown() const {
    for (const auto& s : d->picSizer)
      if (!s.visible) return false;
    return true;
  }
  bool HandlesHidden() const {
    for (const auto& s : d->picSizer)
      if (s.visible) return false;
    return true;
  }
  QPoint Pos(int i) { return QPoint(p().button(i).x, p().button(i).y); }

  // The window shown and settled at an applet of w x h: a window
  // manager's first answer must not arrive after the size.
  void Settle(int w, int h) {
    [&] { QVERIFY(QTest::qWaitForWindowExposed(d)); }();
    QTest::qWait(50);
    d->SetAppletSize(w, h);
    [&] {
      QTRY_COMPARE(d->width(), w);
      QTRY_COMPARE(d->height(), h);
    }();
    QTest::qWait(20);
  }

  // Mouse events given to the window, so that the application routes them
  // as it routes a person's: to an open menu first.
  QWindow* w() { return d->windowHandle(); }
  void WPress(QPoint at, Qt::MouseButton b = Qt::LeftButton, Qt::KeyboardModifiers m = {}) {
    QTest::mousePress(w(), b, m, at);
  }
  void WRelease(QPoint at, Qt::MouseButton b = Qt::LeftButton, Qt::KeyboardModifiers m = {}) {
    QTest::mouseRelease(w(), b, m, at);
  }
  void WMove(QPoint at) { QTest::mouseMove(w(), at); }
  void WClick(QPoint at, Qt::MouseButton b = Qt::LeftButton) {
    WPress(at, b);
    WRelease(at, b);
  }
  void WDrag(QPoint from, QPoint to) {
    WPress(from);
    WMove(to);
    WRelease(to);
  }
  // One wheel turn of `angle` eighths of a degree at a window position.
  void Wheel(QPoint at, int angle, Qt::KeyboardModifiers m) {
    const QPointF pos(at);
    QWheelEvent e(pos, d->mapToGlobal(pos), QPoint(), QPoint(0, angle), Qt::NoButton, m,
                  Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(d, &e);
  }
};

inline std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

// A picture of the window for a person to look at, when KP_SHOT_DIR asks.
inline void Shot(QWidget* w, const char* name) {
  if (!qEnvironmentVariableIsEmpty("KP_SHOT_DIR"))
    w->grab().save(qEnvironmentVariable("KP_SHOT_DIR") + "/" + name + ".png");
}

// The top mark of DrawMultiSelector on a button of width W at (x, y): a
// black outline from (W/2 - 3, 1) to (W/2 + 3, 7), white inside.
inline bool HasTopMark(const QImage& img, int x, int y, int W) {
  return At(img, x + W / 2, y + 4) == kWhite && At(img, x + W / 2 - 3, y + 1) == kBlack &&
         At(img, x + W / 2 + 3, y + 7) == kBlack;
}

}  // namespace kp::apptest
