#include "core/text_table.h"

namespace kp {

const std::string& TextIn(const TextTable& table, std::string_view name) {
  for (const TextEntry& t : table)
    if (name == t.control) return t.text;
  static thread_local std::string missing;
  missing = std::string(name);
  return missing;
}

std::string TextWith(const TextTable& table, std::string_view name,
                     const std::vector<std::string>& args) {
  const std::string& pattern = TextIn(table, name);
  std::string out;
  out.reserve(pattern.size());
  for (size_t i = 0; i < pattern.size(); ++i) {
    const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
    if (pattern[i] == '%' && next >= '1' && next <= '9') {
      const size_t k = static_cast<size_t>(next - '1');
      // An argument the caller did not give leaves the marker, as typed.
      if (k < args.size()) {
        out += args[k];
        ++i;
        continue;
      }
    }
    out += pattern[i];
  }
  return out;
}

}  // namespace kp
