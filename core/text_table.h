// A table of texts by name with their English defaults, in the order of a
// language file's section: line k of the section replaces entry k. The
// levels without windows keep their messages in such tables, so that a
// language file reaches them as it reaches the windows' captions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kp {

struct TextEntry {
  const char* control;  // the control or message variable the text is for
  std::string text;
};
using TextTable = std::vector<TextEntry>;

// The text of `name`. A name missing from the table is a programming
// error; it comes back as the name itself so that it is seen at once.
const std::string& TextIn(const TextTable& table, std::string_view name);

// The text of `name` with "%1", "%2" ... replaced by the arguments, so a
// translation may put them where its grammar wants them.
std::string TextWith(const TextTable& table, std::string_view name,
                     const std::vector<std::string>& args);

}  // namespace kp
