// The face of a button: colour, fade and picture, or for a transparent
// face what lies under it. Each routine takes the scene it works in.

// The mask cuts the picture's shape out to black, then the picture (black
// where transparent) is laid into the hole.
KP.overlayPicture = function (dst, pic, x, y) {
  if (pic.opaque) {
    KP.bitBlt(dst, x, y, pic.w, pic.h, KP.pictureObj(pic), 0, 0, KP.SRCCOPY);
    return;
  }
  KP.bitBlt(dst, x, y, pic.w, pic.h, KP.pictureMask(pic), 0, 0, KP.SRCAND);
  KP.bitBlt(dst, x, y, pic.w, pic.h, KP.pictureObj(pic), 0, 0, KP.SRCPAINT);
};

KP.stretchPicture = function (dst, pic, x, y, w, h) {
  if (pic.opaque) {
    KP.stretchBlt(dst, x, y, w, h, KP.pictureObj(pic), 0, 0, pic.w, pic.h, KP.SRCCOPY);
    return;
  }
  KP.stretchBlt(dst, x, y, w, h, KP.pictureMask(pic), 0, 0, pic.w, pic.h, KP.SRCAND);
  KP.stretchBlt(dst, x, y, w, h, KP.pictureObj(pic), 0, 0, pic.w, pic.h, KP.SRCPAINT);
};

// Quiet on every error: the face stays as far as it was painted.
KP.DrawPix = function (scene, i) {
  const f32 = Math.fround;
  try {
    const surf = scene.surface(i);
    // Every face below is painted over a fresh fill; only a surface too
    // wide for the 16-bit sizes stops before that and is left cleared.
    if (!(surf.w <= 32767 && surf.h <= 32767)) KP.cls(surf);
    const s = scene.state[i];
    const b = scene.buttons[i];
    const applet = scene.applet;
    const W = KP.i16(surf.w), H = KP.i16(surf.h);
    if (b.noBackGround[s]) {
      // A flat applet needs no copy: the background colour is all there is.
      if (!applet.BackImg && applet.iFadeStyle === 0 && applet.iABorderStyle === 0) {
        KP.setBackColor(surf, applet.BackGround);
      } else {
        KP.cls(surf);
        KP.MakeTransparent(scene, i);
      }
      KP.CopyCoveredButtons(scene, i);
    } else {
      KP.setBackColor(surf, b.BackColor[s]);
      const bw = b.BorderWidth[s];
      if (b.BorderStyle[s] !== 0 && bw !== 0)
        // The fade stops at the inside of the border.
        KP.Fade(surf, b.BackColor[s], b.FadeColor[s], bw, bw, KP.sub16(W, KP.mul16(2, bw)),
          KP.sub16(H, KP.mul16(2, bw)), b.FadeStyle[s]);
      else
        KP.Fade(surf, b.BackColor[s], b.FadeColor[s], 0, 0, W, H, b.FadeStyle[s]);
    }
    if (!b.Image[s]) return;
    const pic = scene.picture(b.Image[s]);
    if (!pic) return;
    switch (b.ImgStyle[s]) {
      case 0:
        KP.overlayPicture(surf, pic, KP.cint(f32(f32(W / 2) - f32(pic.w / 2))),
          KP.cint(f32(f32(H / 2) - f32(pic.h / 2))));
        break;
      case 1:
        KP.overlayPicture(surf, pic, b.ImgX[s], b.ImgY[s]);
        break;
      case 2:
        KP.stretchPicture(surf, pic, 0, 0, W, H);
        break;
      default:
        break;
    }
  } catch (e) {
    // Quiet, as in the designer.
  }
};

KP.MakeTransparent = function (scene, i) {
  const surf = scene.surface(i);
  KP.bitBlt(surf, 0, 0, surf.w, surf.h, scene.design, surf.Left, surf.Top, KP.SRCCOPY);
};

// Ascending, so a higher button overwrites a lower one as on screen. A
// hidden button is not on screen, so nothing of it shows through.
KP.CopyCoveredButtons = function (scene, i) {
  const surf = scene.surface(i);
  for (let j = 1; j <= i - 1; ++j) {
    if (!scene.hasSurface(j) || !scene.buttons[j] || scene.buttons[j].Hidden) continue;
    if (!KP.DoCover(scene, i, j)) continue;
    const other = scene.surface(j);
    KP.bitBlt(surf, other.Left - surf.Left, other.Top - surf.Top, other.w, other.h, other, 0, 0, KP.SRCCOPY);
  }
};

// Strict: rectangles that only touch do not overlap.
KP.DoCover = function (scene, i, j) {
  if (!scene.hasSurface(i) || !scene.hasSurface(j)) return false;
  const a = scene.surface(i), b = scene.surface(j);
  return b.Left + b.w > a.Left && a.Left + a.w > b.Left && b.Top + b.h > a.Top && a.Top + a.h > b.Top;
};
