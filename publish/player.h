// The JavaScript player that shows the bar now that browsers no longer run
// Java applets. Published pages load it with one script element after the
// generated block, and it travels beside the applet's own files. The
// generated block itself is never touched: the element goes into the page
// around it.
#pragma once

#include <string>

#include "core/env.h"
#include "publish/context.h"

namespace kp {

// The player's file name, in the program folder and in every built folder.
inline constexpr const char* kPlayerFile = "KestrelPane.js";
// The setting (Params section, default "1") that lets authors keep the
// bare block: "0" adds no element and copies no file.
inline constexpr const char* kAddPlayerScriptKey = "bAddPlayerScript";

// The setting alone.
bool PlayerScriptSetting(Env& env);
void SetPlayerScriptSetting(Env& env, bool on);
// Whether this publishing call adds the element and copies the file: the
// setting, unless the caller asked for bare pages (bWithoutPlayer).
bool PlayerWanted(PublishContext& c);

// Where the page finds the player: the code base, with "/" for "\", then
// the file name. An empty code base is the page's own folder.
std::string PlayerScriptSrc(const std::string& codeBase);
// The one line the page gets (without its line end).
std::string PlayerScriptElement(const std::string& codeBase);

// True when the page already loads a script whose src ends in the player's
// file name (any case, any folder).
bool HasPlayerScript(const std::string& pageText);

// The page with the player's element on its own line right after the last
// end comment of a generated block; a page without one gets it after the
// last closing applet tag, and a page without either is left alone. A
// page that already loads the player is returned as it was.
std::string WithPlayerScript(const std::string& pageText, const std::string& codeBase);

}  // namespace kp
