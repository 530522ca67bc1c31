// The design surface: applet colour, fade, background picture and grid,
// with the tests that let a repaint that changes nothing cost nothing.
#include "render/checked.h"
#include "render/fade.h"
#include "render/scene.h"

namespace kp {
namespace rd = render_detail;

void Scene::DrawBackGround(bool bForce, bool bToScreen) {
  bool repaint = true;
  if (!bForce) {
    if (p_.BackImg.empty()) repaint = false;
    else if (p_.BackImg == sLastBackImg && p_.BackImgStyle == iLastBackStyle &&
             p_.AppletWidth == iLastBackWidth && p_.AppletHeight == iLastBackHeight)
      repaint = false;
  }
  if (repaint) PaintBackground(bForce, bToScreen);
  if (grid.bShowGrid) DrawGrid();
}

// The common start of every picture style: the applet's colour and its
// fade, inside the applet border when there is one.
void Scene::Base() {
  design_.Cls();
  const i16 bw = p_.iABorderWidth;
  if (p_.iABorderStyle != 0 && bw != 0)
    Fade(design_.img, p_.BackGround, p_.cFadeColor, bw, bw,
         rd::Sub(p_.AppletWidth, rd::Mul(2, bw)), rd::Sub(p_.AppletHeight, rd::Mul(2, bw)),
         p_.iFadeStyle);
  else
    Fade(design_.img, p_.BackGround, p_.cFadeColor, 0, 0, p_.AppletWidth, p_.AppletHeight,
         p_.iFadeStyle);
}

void Scene::PaintBackground(bool bForce, bool bToScreen) {
  sLastBackImg = p_.BackImg;
  // Only the colour to clear to; the pixels stay until a style paints.
  design_.backColor = p_.BackGround;
  try {
    static const Picture kNone;
    const Picture* pic = &kNone;  // an empty path is an empty picture
    if (!p_.BackImg.empty()) {
      pic = pictures_.Load(p_.BackImg);
      if (!pic) throw rd::DrawError{"File not found"};
    }
    const int pw = pic->Width(), ph = pic->Height();
    auto overlay = [&](int x, int y) {
      BitBlt(design_.img, x, y, pw, ph, pic->mask, 0, 0, Rop::SRCAND);
      BitBlt(design_.img, x, y, pw, ph, pic->obj, 0, 0, Rop::SRCPAINT);
    };
    switch (p_.BackImgStyle) {
      case 0:
        bTiledToScreen = false;
        Base();
        break;
      case 1:
        Base();
        overlay(p_.iBgOffsetX, p_.iBgOffsetY);
        bTiledToScreen = false;
        break;
      case 2:
        // Centred: the offsets do not count.
        Base();
        overlay(rd::CInt(static_cast<float>(p_.AppletWidth) / 2.0f - static_cast<float>(pw) / 2.0f),
                rd::CInt(static_cast<float>(p_.AppletHeight) / 2.0f -
                         static_cast<float>(ph) / 2.0f));
        bTiledToScreen = false;
        break;
      case 3:
        if (!Tile(bForce, bToScreen, *pic)) return;  // cancelled: the cache stays as it was
        break;
      case 4: {
        Base();
        const int x = p_.iBgOffsetX, y = p_.iBgOffsetY;
        const int w = rd::Sub(p_.AppletWidth, x), h = rd::Sub(p_.AppletHeight, y);
        StretchBlt(design_.img, x, y, w, h, pic->mask, 0, 0, pw, ph, Rop::SRCAND);
        StretchBlt(design_.img, x, y, w, h, pic->obj, 0, 0, pw, ph, Rop::SRCPAINT);
        bTiledToScreen = false;
        break;
      }
      default: break;
    }
    iLastBackWidth = p_.AppletWidth;
    iLastBackHeight = p_.AppletHeight;
    iLastBackStyle = p_.BackImgStyle;
    sLastTiledImg = sLastBackImg;
  } catch (...) {
    // Above all an unreadable picture: a plain surface, no message.
    design_.Cls();
  }
}

bool Scene::Tile(bool bForce, bool bToScreen, const Picture& pic) {
  if (!bForce && sLastTiledImg == sLastBackImg && iLastBackStyle == p_.BackImgStyle) return true;
  bTiling = true;
  const int pw = pic.Width(), ph = pic.Height();
  auto overlay = [&](int x, int y) {
    BitBlt(design_.img, x, y, pw, ph, pic.mask, 0, 0, Rop::SRCAND);
    BitBlt(design_.img, x, y, pw, ph, pic.obj, 0, 0, Rop::SRCPAINT);
  };
  // The tiles start at the offset and run right and down only.
  if (bToScreen) {
    if (bAutoTile) {
      bCancelTile = false;
      Base();
      if (pw > 0 && ph > 0) {
        for (int y = p_.iBgOffsetY; y <= screenHeight; y += ph) {
          for (int x = p_.iBgOffsetX; x <= screenWidth; x += pw) {
            overlay(x, y);
            // The whole screen takes a while: let the Cancel button through.
            prompter_.ProcessEvents();
            if (prompter_.ProgressCancelled()) bCancelTile = true;
            if (bCancelTile) {
              bTiling = false;
              prompter_.ProgressHide();
              return false;
            }
          }
        }
      }
      bTiledToScreen = true;
    }
  } else {
    Base();
    if (pw > 0 && ph > 0)
      for (int y = p_.iBgOffsetY; y <= p_.AppletHeight; y += ph)
        for (int x = p_.iBgOffsetX; x <= p_.AppletWidth; x += pw) overlay(x, y);
    bTiledToScreen = false;
  }
  bTiling = false;
  prompter_.ProgressHide();
  return true;
}

void Scene::DrawGrid() {
  prompter_.Busy(true);
  const GridOptions& g = grid;
  // A step of 0 would never end; the grid dialog keeps steps at 2 or more.
  if (g.iGridX > 0 && g.iGridY > 0) {
    if (g.bShowGridAsDots) {
      for (int y = 0; y <= p_.AppletHeight; y += g.iGridY)
        for (int x = 0; x <= p_.AppletWidth; x += g.iGridX) PSet(design_.img, x, y, g.lGridColor);
    } else {
      for (int y = 0; y <= p_.AppletHeight; y += g.iGridY)
        DrawLine(design_.img, 0, y, p_.AppletWidth, y, g.lGridColor);
      for (int x = 0; x <= p_.AppletWidth; x += g.iGridX)
        DrawLine(design_.img, x, 0, x, p_.AppletHeight, g.lGridColor);
    }
  }
  prompter_.Busy(false);
}

}  // namespace kp
