// The design surface: the applet's colour, fade and background picture.
// The player draws only the applet; there is no screen to tile and no grid.

// The common start of every picture style: the applet's colour and its
// fade, inside the applet border when there is one.
function backgroundBase(design, a) {
  KP.cls(design);
  const bw = a.iABorderWidth;
  if (a.iABorderStyle !== 0 && bw !== 0)
    KP.Fade(design, a.BackGround, a.cFadeColor, bw, bw, KP.sub16(a.AppletWidth, KP.mul16(2, bw)),
      KP.sub16(a.AppletHeight, KP.mul16(2, bw)), a.iFadeStyle);
  else
    KP.Fade(design, a.BackGround, a.cFadeColor, 0, 0, a.AppletWidth, a.AppletHeight, a.iFadeStyle);
}

const NO_PICTURE = { w: 0, h: 0, obj: new Uint32Array(0), mask: new Uint32Array(0) };

// An unreadable picture leaves a plain surface, without a message.
KP.DrawBackGround = function (design, a, pictures) {
  const f32 = Math.fround;
  design.backColor = a.BackGround;
  try {
    let pic = NO_PICTURE;
    if (a.BackImg) {
      pic = pictures(a.BackImg);
      if (!pic) throw KP.Overflow;
    }
    const pw = pic.w, ph = pic.h;
    switch (a.BackImgStyle) {
      case 0:
        backgroundBase(design, a);
        break;
      case 1:
        backgroundBase(design, a);
        KP.overlayPicture(design, pic, a.iBgOffsetX, a.iBgOffsetY);
        break;
      case 2:
        // Centred: the offsets do not count.
        backgroundBase(design, a);
        KP.overlayPicture(design, pic, KP.cint(f32(f32(a.AppletWidth / 2) - f32(pw / 2))),
          KP.cint(f32(f32(a.AppletHeight / 2) - f32(ph / 2))));
        break;
      case 3:
        // The tiles start at the offset and run right and down only.
        backgroundBase(design, a);
        if (pw > 0 && ph > 0)
          for (let y = a.iBgOffsetY; y <= a.AppletHeight; y += ph)
            for (let x = a.iBgOffsetX; x <= a.AppletWidth; x += pw) KP.overlayPicture(design, pic, x, y);
        break;
      case 4: {
        backgroundBase(design, a);
        const x = a.iBgOffsetX, y = a.iBgOffsetY;
        KP.stretchPicture(design, pic, x, y, KP.sub16(a.AppletWidth, x), KP.sub16(a.AppletHeight, y));
        break;
      }
      default:
        break;
    }
  } catch (e) {
    KP.cls(design);
  }
};
