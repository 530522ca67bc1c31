#include "properties/file_filter.h"

#include <vector>

#include "core/conv.h"

namespace kp {

std::string QtFilter(const std::string& filter) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (true) {
    size_t bar = filter.find('|', start);
    parts.push_back(filter.substr(start, bar == std::string::npos ? std::string::npos : bar - start));
    if (bar == std::string::npos) break;
    start = bar + 1;
  }
  std::string out;
  for (size_t i = 0; i + 1 < parts.size(); i += 2) {
    std::string desc = Trim(parts[i]);
    std::string pats = ReplaceAll(Trim(parts[i + 1]), ";", " ");
    pats = ReplaceAll(pats, "*.*", "*");
    if (!desc.empty() && desc.back() == ')') {
      size_t open = desc.rfind('(');
      if (open != std::string::npos) desc = Trim(desc.substr(0, open));
    }
    if (!out.empty()) out += ";;";
    out += desc + " (" + pats + ")";
  }
  return out;
}

}  // namespace kp
