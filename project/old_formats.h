// Older project forms: version 1 line files (read by the normal reader
// through ConvertOldLine) and the INI form of the sibling products.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "core/env.h"
#include "core/model.h"
#include "project/project_file.h"

namespace kp {

// "&y00".."&y03" become "&!0".."&!3"; then every "^" becomes "&!4".
std::string ConvertOldLine(std::string_view line);

// The keys of one section of an INI file as the system's profile reader
// sees them: section and key compared without case (keys held in lower
// case), the first of equal keys wins, each value cut to 99 characters
// and trimmed.
std::unordered_map<std::string, std::string> ProfileSection(const std::string& iniText,
                                                            const std::string& section);

// Reads the INI form (one section "Buttons", keys with the button's index).
LoadResult LoadProject_OLD(Project& p, Env& env, const std::string& path);

}  // namespace kp
