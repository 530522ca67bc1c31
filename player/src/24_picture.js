// Pictures laid over a face or the background, in the two surfaces the
// overlay needs: the picture over black, and the mask, white where the
// picture is transparent and black where it is opaque (the picture over
// black XOR the picture over white).

// A channel composed over a background value, as a picture box shows a
// picture with transparency on its back colour.
function pictureOver(c, a, bg) {
  return Math.floor((c * a + bg * (255 - a) + 127) / 255);
}

KP.pictureFromRGBA = function (w, h, rgba) {
  w = Math.max(0, w | 0);
  h = Math.max(0, h | 0);
  if (w === 0 || h === 0) w = h = 0;
  const obj = new Uint32Array(w * h), mask = new Uint32Array(w * h);
  let seeThrough = 0;
  for (let k = 0, o = 0; k < w * h; ++k, o += 4) {
    const a = rgba[o + 3];
    let black = 0, white = 0;
    for (let ch = 0; ch < 3; ++ch) {
      const c = rgba[o + ch];
      black |= pictureOver(c, a, 0) << (8 * ch);
      white |= pictureOver(c, a, 255) << (8 * ch);
    }
    obj[k] = 0xFF000000 | black;
    mask[k] = 0xFF000000 | (black ^ white);
    seeThrough |= black ^ white;
  }
  // With a black mask, laying the picture over anything gives the picture
  // itself: `opaque` lets that be one copy instead of two passes.
  return { w: w, h: h, obj: obj, mask: mask, opaque: seeThrough === 0 };
};

// The surfaces a raster operation takes.
KP.pictureObj = function (pic) {
  return { w: pic.w, h: pic.h, px: pic.obj };
};
KP.pictureMask = function (pic) {
  return { w: pic.w, h: pic.h, px: pic.mask };
};

// The picture of an image file through the browser's own decoder; null
// when it cannot be loaded or read back (a page that shows the rest of
// the bar is better than one that stops).
KP.loadPicture = function (url) {
  return new Promise(function (resolve) {
    let img;
    try {
      img = new Image();
    } catch (e) {
      resolve(null);
      return;
    }
    img.onload = function () {
      try {
        const w = img.naturalWidth, h = img.naturalHeight;
        if (!(w > 0 && h > 0)) { resolve(null); return; }
        const canvas = document.createElement('canvas');
        canvas.width = w;
        canvas.height = h;
        const ctx = canvas.getContext('2d', { willReadFrequently: true });
        ctx.clearRect(0, 0, w, h);
        ctx.drawImage(img, 0, 0);
        resolve(KP.pictureFromRGBA(w, h, ctx.getImageData(0, 0, w, h).data));
      } catch (e) {
        resolve(null);
      }
    };
    img.onerror = function () { resolve(null); };
    try {
      img.src = url;
    } catch (e) {
      resolve(null);
    }
  });
};
