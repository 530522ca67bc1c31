// The face of a button: colour, fade and picture, or for a transparent
// face what lies under it; and the buttons that must follow a repaint.
#include <algorithm>

#include "render/checked.h"
#include "render/fade.h"
#include "render/scene.h"

namespace kp {
namespace rd = render_detail;

void Scene::DrawPix(int i) {
  try {
    Surface& surf = pButtons(i);
    surf.Cls();
    const int s = GetStateIndex(p_.sState);
    if (s == 0) return;
    const tButton& b = p_.button(i);
    const i16 W = rd::I16(surf.Width()), H = rd::I16(surf.Height());
    if (b.noBackGround[s]) {
      // A flat applet needs no copy: the background colour is all there is.
      if (p_.BackImg.empty() && p_.iFadeStyle == 0 && p_.iABorderStyle == 0)
        surf.SetBackColor(p_.BackGround);
      else
        MakeTransparent(i);
      CopyCoveredButtons(i);
    } else {
      surf.SetBackColor(b.BackColor[s]);
      const i16 bw = b.BorderWidth[s];
      if (b.BorderStyle[s] != 0 && bw != 0)
        // The fade stops at the inside of the border.
        Fade(surf.img, b.BackColor[s], b.FadeColor[s], bw, bw, rd::Sub(W, rd::Mul(2, bw)),
             rd::Sub(H, rd::Mul(2, bw)), b.FadeStyle[s]);
      else
        Fade(surf.img, b.BackColor[s], b.FadeColor[s], 0, 0, W, H, b.FadeStyle[s]);
    }
    if (b.Image[s].empty()) return;
    const Picture* pic = pictures_.Load(b.Image[s]);
    if (!pic) return;  // unreadable: the face stays as painted so far
    const int mw = pic->Width(), mh = pic->Height();
    // The mask cuts the picture's shape out of the face to black, then the
    // picture (black where transparent) is laid into the hole.
    auto overlay = [&](int x, int y) {
      BitBlt(surf.img, x, y, mw, mh, pic->mask, 0, 0, Rop::SRCAND);
      BitBlt(surf.img, x, y, mw, mh, pic->obj, 0, 0, Rop::SRCPAINT);
    };
    switch (b.ImgStyle[s]) {
      case 0:
        overlay(rd::CInt(static_cast<float>(W) / 2.0f - static_cast<float>(mw) / 2.0f),
                rd::CInt(static_cast<float>(H) / 2.0f - static_cast<float>(mh) / 2.0f));
        break;
      case 1: overlay(b.ImgX[s], b.ImgY[s]); break;
      case 2:
        StretchBlt(surf.img, 0, 0, W, H, pic->mask, 0, 0, mw, mh, Rop::SRCAND);
        StretchBlt(surf.img, 0, 0, W, H, pic->obj, 0, 0, mw, mh, Rop::SRCPAINT);
        break;
      default: break;
    }
  } catch (...) {
    // Quiet: the face stays as far as it was painted.
  }
}

void Scene::MakeTransparent(int i) {
  Surface& surf = pButtons(i);
  BitBlt(surf.img, 0, 0, surf.Width(), surf.Height(), design_.img, surf.Left, surf.Top,
         Rop::SRCCOPY);
}

void Scene::CopyCoveredButtons(int i) {
  Surface& surf = pButtons(i);
  // Ascending, so a higher button overwrites a lower one as on screen.
  for (int j = 1; j <= i - 1; ++j) {
    if (!HasSurface(j) || !DoCover(i, j)) continue;
    const Surface& other = pButtons(j);
    BitBlt(surf.img, other.Left - surf.Left, other.Top - surf.Top, other.Width(), other.Height(),
           other.img, 0, 0, Rop::SRCCOPY);
  }
}

bool Scene::DoCover(int i, int j) {
  if (!HasSurface(i) || !HasSurface(j)) return false;
  const Surface& a = pButtons(i);
  const Surface& b = pButtons(j);
  // Strict: rectangles that only touch do not overlap.
  return b.Left + b.Width() > a.Left && a.Left + a.Width() > b.Left &&
         b.Top + b.Height() > a.Top && a.Top + a.Height() > b.Top;
}

void Scene::RedrawTransparentAbove(int i) {
  const int s = GetStateIndex(p_.sState);
  if (s == 0) return;
  // One level only: the repaint of j does not look further up itself.
  for (int j = i + 1; j <= p_.ButtonCount; ++j)
    if (p_.button(j).noBackGround[s] && DoCover(i, j)) RedrawButton(j, false, false, true, false);
}

void Scene::UpdateTransparentBtns(int i) {
  if (p_.ButtonCount == 0 || !p_.bReady) return;
  const int s = GetStateIndex(p_.sState);
  if (s == 0) return;
  if (i == 0) {
    for (int j = 1; j <= p_.ButtonCount; ++j)
      if (p_.button(j).noBackGround[s]) RedrawButton(j, false, false, true, false);
  } else if (i >= 1 && i <= p_.ButtonCount && p_.button(i).noBackGround[s]) {
    RedrawButton(i, false, false, true, false);
  }
}

void Scene::DrawMultiSelector(int i) {
  hooks_->HideSizers();
  Surface& surf = pButtons(i);
  const float W = static_cast<float>(surf.Width()), H = static_cast<float>(surf.Height());
  // A box between two corners, both included: black outline, white fill.
  auto box = [&](float x1f, float y1f, float x2f, float y2f) {
    const int x1 = static_cast<int>(rd::RoundEven(x1f)), y1 = static_cast<int>(rd::RoundEven(y1f));
    const int x2 = static_cast<int>(rd::RoundEven(x2f)), y2 = static_cast<int>(rd::RoundEven(y2f));
    const int l = std::min(x1, x2), r = std::max(x1, x2);
    const int t = std::min(y1, y2), b = std::max(y1, y2);
    FillRect(surf.img, l, t, r - l + 1, b - t + 1, RGB(0, 0, 0));
    FillRect(surf.img, l + 1, t + 1, r - l - 1, b - t - 1, RGB(255, 255, 255));
  };
  box(W / 2 + 3, 1, W / 2 - 3, 7);
  box(W / 2 + 3, H - 7, W / 2 - 3, H - 1);
  box(W - 1, H / 2 + 3, W - 7, H / 2 - 3);
  box(1, H / 2 + 3, 7, H / 2 - 3);
}

}  // namespace kp
