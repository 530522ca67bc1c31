// The JavaScript caller: a page whose applet calls JavaScript needs the
// MAYSCRIPT attribute, a script after the applet tag and an onload call on
// the body tag. The script is kept in Kestrel.ini beside the program so it
// can change without a new program.
#pragma once

#include <string>
#include <string_view>

#include "core/env.h"
#include "core/model.h"

namespace kp {

inline constexpr const char* kCallerBody = "<Body onload=\"InitJSCaller();\">";
inline constexpr const char* kOnloadAttribute = " onload=\"InitJSCaller();\"";

// The lines between "[JSCALLER]" and "[END OF JSCALLER]" (headings matched
// whole, in any case) of the program folder's Kestrel.ini, each "AppletName"
// replaced by `appletName`, each line preceded by CR LF. A missing or
// unreadable file gives "".
std::string GetJSCaller(Env& env, const std::string& appletName);
// The same from the file's text.
std::string JSCallerFromText(std::string_view iniText, const std::string& appletName);

// With the caller: every "<body>" (any case) of sHTMLbefore becomes the
// caller body. Without: every onload attribute (any case) is removed. The
// project's own text changes, so the change is saved with it.
void FixBodyTag(Project& p, bool bUseJSCaller);

}  // namespace kp
