// Walking a "|"-terminated field line, as every reader of the formats does:
// each "|" ends a field, and characters after the last "|" are dropped.
#pragma once

#include <string_view>

namespace kp {

// Calls fn(number, text) for each complete field, numbers from 0. Stops
// early when fn returns false; returns false then, true otherwise.
template <class Fn>
bool ForEachField(std::string_view line, Fn&& fn) {
  int no = 0;
  size_t start = 0;
  for (size_t pos = line.find('|'); pos != std::string_view::npos; pos = line.find('|', start)) {
    if (!fn(no++, line.substr(start, pos - start))) return false;
    start = pos + 1;
  }
  return true;
}

}  // namespace kp
