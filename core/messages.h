// The message texts of the levels without windows that the main window's
// language section carries (after its captions, going on in "[frmMain+]"
// where its fixed lines end), with their English defaults. Messages take
// their variable parts as "%1", "%2" ...
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"

namespace kp {

// In the order of their lines in the "[frmMain]" section.
TextTable& SharedMessages();
// Every shared message back to its English default.
void ResetSharedMessages();

// A shared message, with its arguments put in.
const std::string& SharedText(std::string_view name);
std::string SharedText(std::string_view name, const std::vector<std::string>& args);

}  // namespace kp
