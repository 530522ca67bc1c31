// Colour arithmetic shared by borders, text borders and fades. A colour is
// taken apart through its hexadecimal text, with the oddities that method
// brings (a colour of one hex digit reads as black), and shaded in 16-bit
// integers.
#pragma once

#include <optional>
#include <string>

#include "core/model.h"

namespace kp {

// Upper-case hexadecimal without leading zeros; a negative colour gives
// the eight digits of its 32-bit pattern.
std::string ColourHex(Colour c);

// "RED", "GREEN" or "BLUE" (any case) of a hexadecimal colour text, as two
// hex digits (or "0" and one digit); "" for a text of more than six digits
// and for any other part name.
std::string GetColorPart(const std::string& hexText, const std::string& partName);

// The value of that part: the text read as hexadecimal, "" as 0.
i16 ColorPart(Colour c, const std::string& partName);

struct ColourParts {
  i16 R = 0, G = 0, B = 0;
};
ColourParts PartsOf(Colour c);

// The colour `k` steps inside a band of `Width` steps of `Shade` each:
// lighter (bLight) or darker than R, G, B by (Width - k) * Shade, every part
// held to 0..255 by itself. Empty when the 16-bit arithmetic overflows.
std::optional<Colour> ShadeColor(i16 Shade, i16 Width, i16 R, i16 G, i16 B, i16 k, bool bLight);

}  // namespace kp
