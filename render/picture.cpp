#include "render/picture.h"

#include <sys/stat.h>

#include <QImageReader>
#include <QString>

namespace kp {
namespace {

// A channel composed over a background value, as the picture box shows a
// picture with transparency on its back colour.
inline std::uint32_t Over(std::uint32_t c, std::uint32_t a, std::uint32_t bg) {
  return (c * a + bg * (255 - a) + 127) / 255;
}

}  // namespace

Picture MakePicture(const QImage& decoded) {
  Picture pic;
  if (decoded.isNull()) return pic;
  const QImage src = decoded.convertToFormat(QImage::Format_ARGB32);
  const int w = src.width(), h = src.height();
  pic.obj = QImage(w, h, QImage::Format_RGB32);
  pic.mask = QImage(w, h, QImage::Format_RGB32);
  for (int y = 0; y < h; ++y) {
    const auto* s = reinterpret_cast<const std::uint32_t*>(src.constScanLine(y));
    auto* o = reinterpret_cast<std::uint32_t*>(pic.obj.scanLine(y));
    auto* m = reinterpret_cast<std::uint32_t*>(pic.mask.scanLine(y));
    for (int x = 0; x < w; ++x) {
      const std::uint32_t a = s[x] >> 24;
      std::uint32_t black = 0, white = 0;
      for (int shift = 0; shift <= 16; shift += 8) {
        const std::uint32_t c = (s[x] >> shift) & 0xFF;
        black |= Over(c, a, 0) << shift;
        white |= Over(c, a, 255) << shift;
      }
      o[x] = 0xFF000000u | black;
      m[x] = 0xFF000000u | (black ^ white);
    }
  }
  return pic;
}

const Picture* PictureCache::Load(const std::string& path) {
  if (path.empty()) return nullptr;
  // One stat a look-up: a load asks for the same few pictures for every
  // button, and QFileInfo's local modification time reads the time zone
  // each time.
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) {
    entries_.erase(path);
    return nullptr;
  }
  const long long size = static_cast<long long>(st.st_size);
  const long long mtime =
      static_cast<long long>(st.st_mtim.tv_sec) * 1000 + st.st_mtim.tv_nsec / 1000000;
  Entry& e = entries_[path];
  if (e.size == size && e.mtime == mtime) return e.ok ? &e.pic : nullptr;
  e = Entry{};
  e.size = size;
  e.mtime = mtime;
  QImageReader reader(QString::fromLocal8Bit(path.data(), static_cast<qsizetype>(path.size())));
  reader.setAutoTransform(false);
  const QByteArray format = reader.format();
  // Pictures are GIF or JPEG; anything else counts as unreadable.
  if (format == "gif" || format == "jpeg" || format == "jpg") {
    QImage img = reader.read();
    if (!img.isNull()) {
      e.pic = MakePicture(img);
      e.ok = true;
    }
  }
  return e.ok ? &e.pic : nullptr;
}

}  // namespace kp
