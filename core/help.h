// The user guide: a page below the program folder, named by the help index
// line of "Kestrel.ini" (a path written with either separator), opened
// with the desktop's opener like any page.
#pragma once

#include <string>

#include "core/env.h"
#include "core/language.h"

namespace kp {

// The program folder joined with the help index: "\Help\index.htm" and
// "/Help/index.htm" name the same page.
std::string HelpIndexPath(const Env& env, const LangSettings& lang);

// Opens the guide. False after a message: the page missing (its path and
// " not found."), or the opener's own failure text.
bool mnuHelpContents_Click(Env& env, const LangSettings& lang);

}  // namespace kp
