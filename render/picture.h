// Pictures laid over a face or the background, with the mask of their
// transparent pixels. A picture is read from disk at first use and again
// whenever the file changes; an unreadable file gives nothing.
#pragma once

#include <QImage>
#include <string>
#include <unordered_map>

namespace kp {

// A loaded picture in the two buffers the overlay needs.
struct Picture {
  // The picture over black: transparent pixels are black.
  QImage obj;
  // White where the picture is transparent, black where it is opaque:
  // the picture over black XOR the picture over white.
  QImage mask;
  int Width() const { return obj.width(); }
  int Height() const { return obj.height(); }
};

// The two buffers of a decoded picture, computed from its alpha channel so
// that they equal the compositions over black and over white.
Picture MakePicture(const QImage& decoded);

class PictureCache {
 public:
  // The picture of a GIF or JPEG file; nullptr when the file cannot be
  // read or decoded. The pointer stays valid until the next call.
  const Picture* Load(const std::string& path);
  void Clear() { entries_.clear(); }

 private:
  struct Entry {
    long long size = -1;
    long long mtime = 0;
    bool ok = false;
    Picture pic;
  };
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace kp
