#include "render/colour.h"

#include <cstdint>

#include "core/conv.h"
#include "render/checked.h"

namespace kp {
namespace rd = render_detail;

std::string ColourHex(Colour c) {
  static const char* kDigits = "0123456789ABCDEF";
  auto u = static_cast<std::uint32_t>(c);
  if (u == 0) return "0";
  std::string out;
  while (u) {
    out.insert(out.begin(), kDigits[u & 0xF]);
    u >>= 4;
  }
  return out;
}

std::string GetColorPart(const std::string& hexText, const std::string& partName) {
  // The digits read blue, green, red from the left; a shorter text lacks
  // its leading digits, so the parts are taken from the right. Each row
  // holds {red, green, blue} as (start, length, leading zero) of the text;
  // a length of 0 means "00".
  struct Piece {
    int start, length;
    bool zero;
  };
  static const Piece kTable[7][3] = {
      {{0, 0, false}, {0, 0, false}, {0, 0, false}},  // 0 digits
      {{0, 0, false}, {0, 0, false}, {0, 0, false}},  // 1
      {{0, 2, false}, {0, 0, false}, {0, 0, false}},  // 2
      {{1, 2, false}, {0, 1, true}, {0, 0, false}},   // 3
      {{2, 2, false}, {0, 2, false}, {0, 0, false}},  // 4
      {{3, 2, false}, {1, 2, false}, {0, 1, true}},   // 5
      {{4, 2, false}, {2, 2, false}, {0, 2, false}},  // 6
  };
  const std::string name = UCase(partName);
  const int part = name == "RED" ? 0 : name == "GREEN" ? 1 : name == "BLUE" ? 2 : -1;
  if (part < 0 || hexText.size() > 6) return std::string();
  const Piece& piece = kTable[hexText.size()][part];
  if (piece.length == 0) return std::string("00");
  std::string out = piece.zero ? std::string("0") : std::string();
  out.append(hexText, static_cast<size_t>(piece.start), static_cast<size_t>(piece.length));
  return out;
}

i16 ColorPart(Colour c, const std::string& partName) {
  const std::string part = GetColorPart(ColourHex(c), partName);
  int v = 0;
  for (char ch : part) {
    int d = ch >= '0' && ch <= '9' ? ch - '0' : ch >= 'A' && ch <= 'F' ? ch - 'A' + 10
            : ch >= 'a' && ch <= 'f' ? ch - 'a' + 10 : -1;
    if (d < 0) break;
    v = v * 16 + d;
  }
  return static_cast<i16>(v);
}

ColourParts PartsOf(Colour c) {
  return {ColorPart(c, "RED"), ColorPart(c, "GREEN"), ColorPart(c, "BLUE")};
}

std::optional<Colour> ShadeColor(i16 Shade, i16 Width, i16 R, i16 G, i16 B, i16 k, bool bLight) {
  try {
    i16 part[3] = {R, G, B};
    for (i16& c : part) {
      const i16 far = rd::Mul(Width, Shade);
      const i16 near = rd::Mul(k, Shade);
      if (bLight) {
        i16 v = rd::Add(c, rd::Sub(far, near));
        if (v > 255) v = 255;
        if (v < 0) v = 0;
        c = v;
      } else {
        i16 v = rd::Add(c, rd::Sub(near, far));
        if (v < 0) v = 0;
        if (v > 255) v = 255;
        c = v;
      }
    }
    return RGB(part[0], part[1], part[2]);
  } catch (const rd::DrawError&) {
    return std::nullopt;
  }
}

}  // namespace kp
