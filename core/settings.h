// The settings layer: sections and defaults of the per-user store, the
// recent-file list, custom colours, window sizes, resets and the notices
// bound to a setting. Failures show the store routine's own message box.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/env.h"

namespace kp {

// Sections. The version is the first level of each, so every version of
// the program keeps its own settings.
inline const std::string kSecVersion = "2.02";
inline const std::string kSecParams = "2.02/Params";
inline const std::string kSecSizes = "2.02/Sizes";
inline const std::string kSecRecent = "2.02/Recent";
inline const std::string kSecBrowsers = "2.02/Browsers";
inline const std::string kSecLanguage = "2.02/Language";
inline const std::string kSecCustColors = "CustColors";

// The store routines. A failed write or delete shows a box titled with the
// routine's name; a failed read gives the default.
std::string fReadValue(Env& env, const std::string& section, const std::string& key,
                       const std::string& def);
bool fWriteValue(Env& env, const std::string& section, const std::string& key,
                 const std::string& value);
bool fDeleteKey(Env& env, const std::string& section);

// Tells the user, once at start-up, that the settings could not be read
// (an unreadable file, one that is no settings file) and that the program
// goes on with the built-in ones. False when there is nothing to tell.
bool ReportSettingsProblem(Env& env);

// The documented default of a key of the Params section ("" when none).
std::string ParamDefault(const Env& env, const std::string& key);
// A key of the Params section, with its documented default. "bAddJAR"
// (default "1") is kept in the version section itself; GetParam and
// SetParam find it there.
std::string GetParam(Env& env, const std::string& key);
bool SetParam(Env& env, const std::string& key, const std::string& value);

// --- Recent files ---------------------------------------------------------

struct RecentEntry {
  int k = 0;          // 1..4
  std::string path;   // the stored path
  std::string text;   // its menu text (ShortPath)
};
// Moves `path` to the top of the four entries (exact comparison).
void WriteRecent(Env& env, const std::string& path);
// The four stored entries, "-1" for an empty one.
std::array<std::string, 4> ReadRecentRaw(Env& env);
// The menu entries to show, in order; empty when the first entry is "-1".
std::vector<RecentEntry> GetRecent(Env& env);
// 40 characters or more: the first 17, "....", and the last 25.
std::string ShortPath(const std::string& text);

// --- Custom colours -------------------------------------------------------

using CustColors = std::array<std::uint8_t, 128>;
CustColors GetCustColors(Env& env);
void SaveCustColors(Env& env, const CustColors& c);

// --- Reset ----------------------------------------------------------------

enum class ResetResult { Done, Declined, Failed };
// quiet: deletes Params and Sizes with no question. Otherwise asks
// "Reset KestrelPane 2.02 registry?" and on Yes deletes the whole version.
ResetResult ResetSettings(Env& env, bool quiet);

// --- Window sizes (twips) -------------------------------------------------

struct Geometry {
  long left = 0, top = 0, width = 0, height = 0;
  bool operator==(const Geometry&) const = default;
};
void WriteSizes(Env& env, const std::string& formName, const Geometry& g);
// The stored geometry of a form, or `current` when all four values are 0;
// then kept on a screen of the given size.
Geometry ReadSizes(Env& env, const std::string& formName, const Geometry& current,
                   long screenWidth, long screenHeight);
// Pure rule: a window larger than the screen is reduced to the screen's
// size; one beyond the right or bottom edge is moved back to fit.
Geometry KeepOnScreen(Geometry g, long screenWidth, long screenHeight);

// --- Notices bound to a setting -------------------------------------------

// Shows a notice when the setting `settingKey` of Params (default
// `defaultValue`) equals `showValue`; the check box writes showValue when
// ticked and hideValue when not. Returns true when the notice showed.
bool MyMsgBox(Env& env, const std::string& title, const std::string& message,
              const std::string& checkText, const std::string& settingKey,
              const std::string& showValue = "1", const std::string& hideValue = "0",
              const std::string& defaultValue = "1");

}  // namespace kp
