// The program's file-dialog filters ("description|patterns|..." pairs) in
// the form the Qt file dialog reads ("description (patterns);;...").
#pragma once

#include <string>

namespace kp {

// Each pair becomes its description with the patterns in brackets, blanks
// between patterns in place of ";", and "*.*" as "*". A description that
// already ends in a bracketed pattern list has that list replaced.
std::string QtFilter(const std::string& filter);

}  // namespace kp
