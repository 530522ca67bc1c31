// The project file (.kpn): line 1 names the format, line 2 is the applet,
// then one line a button, the page blocks and the settings block. Windows
// code page bytes with CR LF; every byte of a text field round-trips.
#pragma once

#include <string>

#include "core/env.h"
#include "core/model.h"

namespace kp {

inline constexpr const char* kProjectHeader = "KestrelPane Project 2.02";
// The maker's home page, named where a file of another version is refused.
inline constexpr const char* kHomePage = "https://kestrelpane.example/";

// The whole file text of the project. bNamesOnly selects the export form:
// file fields carry names only and the settings block only the name.
// ownFolder is the folder the file goes to (see FileFieldText).
std::string ProjectFileText(const Project& p, bool bNamesOnly, const std::string& ownFolder = "");

// Writes the project to `path`: never over a good file with a broken one,
// and never a file that would load back differently. A text the format
// cannot carry (a "|" in a raw field, a line break, a typed escape, a
// block marker line) stops the save before anything is written, with a
// message naming the button and the field. bKeepState leaves bProjectSaved
// and the recent list alone. Returns false after showing the message.
bool SaveProject(Project& p, Env& env, const std::string& path, bool bKeepState,
                 bool bNamesOnly);

enum class LoadResult {
  Loaded,       // the project (or its imported form) is in the model
  Failed,       // a failure box was shown; the buttons read so far stay
  Refused,      // not a project of this version: the model is empty
  ProcessEnds,  // a damaged default record: the settings were restored
};

// Reads a project file of any supported form into the model.
LoadResult LoadProject2(Project& p, Env& env, const std::string& path);

// The page and settings blocks, read from a file's text by themselves.
// Each returns false when its start marker is absent.
bool load_sHTMLbefore(Project& p, const std::string& fileText);
bool load_sHTMLalt(Project& p, const std::string& fileText);
bool load_sHTMLafter(Project& p, const std::string& fileText);
bool load_ProjectSettings(Project& p, const std::string& fileText);

}  // namespace kp
