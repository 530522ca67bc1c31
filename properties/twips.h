// Window sizes are kept in twips, 15 to a pixel on this desktop.
#pragma once

#include <string>

#include "core/env.h"
#include "core/settings.h"

class QWidget;

namespace kp {

inline constexpr int kTwipsPerPixel = 15;
inline int TwipsToPixels(long twips) { return static_cast<int>(twips / kTwipsPerPixel); }
inline long PixelsToTwips(int pixels) { return static_cast<long>(pixels) * kTwipsPerPixel; }

// The window's position (of its frame) and inner size, in twips.
Geometry TwipsOf(const QWidget* w);
// WriteSizes of a window under its form name.
void WriteSizesOf(Env& env, const QWidget* w, const std::string& formName);
// ReadSizes for a window: the stored place and size, kept on its screen;
// a window with nothing stored stays where it is. With `positionOnly` the
// size is left to the window.
void ReadSizesInto(Env& env, QWidget* w, const std::string& formName, bool positionOnly = false);

}  // namespace kp
