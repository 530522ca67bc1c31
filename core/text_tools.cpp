#include "core/text_tools.h"

#include <cmath>
#include <cstdio>

#include "core/conv.h"

namespace kp {

std::string DecodeMultiLine(std::string_view label) { return ReplaceAll(label, "\\n", "\n"); }

std::string EncodeMultiLine(std::string_view text) {
  std::string s = ReplaceAll(text, "\r\n", "\\n");
  s = ReplaceAll(s, "\n", "\\n");
  s = ReplaceAll(s, "\\n\\n", "\\n \\n");
  if (EndsWith(s, "\\n")) s += ' ';
  return s;
}

std::string ColourToHexText(Colour c) {
  RgbParts p = PartsOfColour(c);
  char buf[8];
  std::string out;
  for (int v : {p.red, p.green, p.blue}) {
    std::snprintf(buf, sizeof buf, "%X", v);
    out += ByteHex(buf);
  }
  return out;
}

namespace {

std::optional<int> HexPair(std::string_view text, size_t from) {
  if (from >= text.size()) return 0;
  std::string_view pair = text.substr(from, 2);
  int v = 0;
  for (char ch : pair) {
    int d;
    if (ch >= '0' && ch <= '9') d = ch - '0';
    else if (ch >= 'a' && ch <= 'f') d = ch - 'a' + 10;
    else if (ch >= 'A' && ch <= 'F') d = ch - 'A' + 10;
    else return std::nullopt;
    v = v * 16 + d;
  }
  return v;
}

// A whole number from a decimal text: sign, digits, an optional fraction
// rounded half to even.
std::optional<int> WholeNumber(std::string_view text) {
  std::string t = Trim(text);
  if (t.empty()) return std::nullopt;
  size_t i = 0;
  bool negative = false;
  if (t[i] == '+' || t[i] == '-') negative = t[i++] == '-';
  size_t digits = 0;
  double v = 0;
  for (; i < t.size() && t[i] >= '0' && t[i] <= '9'; ++i, ++digits) v = v * 10 + (t[i] - '0');
  if (i < t.size() && t[i] == '.') {
    double scale = 0.1;
    for (++i; i < t.size() && t[i] >= '0' && t[i] <= '9'; ++i, ++digits, scale /= 10)
      v += (t[i] - '0') * scale;
  }
  if (i != t.size() || digits == 0 || v > 32767.5) return std::nullopt;
  double r = std::nearbyint(v);  // the default rounding mode: half to even
  return static_cast<int>(negative ? -r : r);
}

}  // namespace

std::optional<RgbParts> HexTextToParts(std::string_view text) {
  std::optional<int> r = HexPair(text, 0), g = HexPair(text, 2), b = HexPair(text, 4);
  if (!r || !g || !b) return std::nullopt;
  return RgbParts{*r, *g, *b};
}

std::optional<RgbParts> DecimalFieldsToParts(std::string_view red, std::string_view green,
                                             std::string_view blue) {
  RgbParts p;
  int* out[] = {&p.red, &p.green, &p.blue};
  std::string_view in[] = {red, green, blue};
  for (int k = 0; k < 3; ++k) {
    std::optional<int> v = WholeNumber(in[k]);
    if (!v || *v < 0) return std::nullopt;
    *out[k] = *v > 255 ? 255 : *v;
  }
  return p;
}

}  // namespace kp
