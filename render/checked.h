// 16-bit arithmetic as the drawing code does it: every intermediate result
// is a 16-bit integer and leaving that range is an error. The error stays
// inside this level: the routines that may meet it catch it and either
// report it (label, border) or end quietly (face, fade, background).
#pragma once

#include <cmath>
#include <string>

#include "core/model.h"

namespace kp::render_detail {

// The error a drawing routine ends with; `description` is what the error
// boxes show.
struct DrawError {
  std::string description;
};

inline DrawError Overflow() { return DrawError{"Overflow"}; }

inline i16 I16(long long v) {
  if (v < -32768 || v > 32767) throw Overflow();
  return static_cast<i16>(v);
}
inline i16 Add(long long a, long long b) { return I16(a + b); }
inline i16 Sub(long long a, long long b) { return I16(a - b); }
inline i16 Mul(long long a, long long b) { return I16(a * b); }

// Nearest integer, a tie going to the even neighbour (the default rounding
// mode), as every fractional pixel coordinate is rounded.
inline double RoundEven(double v) { return std::nearbyint(v); }
inline float RoundEven(float v) { return std::nearbyintf(v); }

// A fractional value made a 16-bit integer: rounded half to even, and an
// error when it does not fit.
inline i16 CInt(double v) {
  if (!std::isfinite(v)) throw Overflow();
  double r = RoundEven(v);
  if (r < -32768.0 || r > 32767.0) throw Overflow();
  return static_cast<i16>(r);
}
inline i16 CInt(float v) { return CInt(static_cast<double>(v)); }

}  // namespace kp::render_detail
