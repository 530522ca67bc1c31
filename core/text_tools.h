// The pure side of the colour and text tools: a label's line breaks in its
// one-line form, and the colour converter's hexadecimal and decimal fields.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/model.h"

namespace kp {

// A label keeps its line breaks as the two characters "\n" so that the
// label box stays one line. The editor shows each of them as a real break.
std::string DecodeMultiLine(std::string_view label);
// The editor's text back to the label: each break (CR LF or LF) becomes
// "\n"; then "\n\n" becomes "\n \n" in one left-to-right pass, so an empty
// line keeps a blank; a text ending in "\n" gets one blank at the end.
std::string EncodeMultiLine(std::string_view text);

struct RgbParts {
  int red = 0, green = 0, blue = 0;
  bool operator==(const RgbParts&) const = default;
};

inline RgbParts PartsOfColour(Colour c) { return {c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF}; }
inline Colour ColourOfParts(const RgbParts& p) { return RGB(p.red, p.green, p.blue); }

// The six-digit form, red, green, blue, two upper-case digits each.
std::string ColourToHexText(Colour c);
// Characters 1-2, 3-4 and 5-6 read as hexadecimal (an absent pair is 0);
// anything beyond the sixth is ignored. Empty for a pair that is not
// hexadecimal.
std::optional<RgbParts> HexTextToParts(std::string_view text);
// The three decimal fields as whole numbers (a fraction rounds half to
// even); a part above 255 counts as 255. Empty when a field is empty, not a
// number, or negative.
std::optional<RgbParts> DecimalFieldsToParts(std::string_view red, std::string_view green,
                                             std::string_view blue);

}  // namespace kp
