// Walking a "|"-terminated field line, as every reader of the formats does:
// each "|" ends a field, and characters after the last "|" are dropped.
#pragma once

#include <charconv>
#include <string>
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

// Writers of one field and its "|".
inline void AddNum(std::string& out, long v) {
  char buf[24];
  auto r = std::to_chars(buf, buf + sizeof buf, v);
  out.append(buf, r.ptr);
  out.push_back('|');
}
inline void AddText(std::string& out, std::string_view s) {
  out.append(s);
  out.push_back('|');
}
inline void AddBool(std::string& out, bool b) { AddText(out, b ? "1" : "0"); }

}  // namespace kp
