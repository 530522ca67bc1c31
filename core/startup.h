// The plain rules of the program's start: the version self-test, the reset
// switch, the command line's project name and the session settings read
// before the first window shows.
#pragma once

#include <string>
#include <string_view>

#include "core/env.h"
#include "core/model.h"

namespace kp {

inline constexpr const char* kVersionWrongText = "sPRJ_FILE_VERSION is wrong!";
inline constexpr const char* kResetSwitch = "/reset_kp";

// The project header built from `version` must hold "KestrelPane Project
// 2.0", or the writer would produce files this program refuses.
bool VersionSelfTest(std::string_view version);

// Only the whole command line, exactly, is the switch: anything around it
// (a trailing blank too) makes it a file name.
bool IsResetSwitch(std::string_view commandLine);

// The name the command line gives: blanks trimmed at both ends; when it
// starts with a double quote the first and the last character go, whatever
// the last one is.
std::string CommandLineName(std::string_view commandLine);

// The file to open for a name from the command line, "" when there is
// none. An absolute name ("/...") that exists is taken as it stands; any
// other is looked for in the program folder only (the user folder first,
// when there is one), never in the current one.
std::string FindProjectFile(Env& env, const std::string& name);

// The long form of a path. This platform has no short names, so a path is
// already in its long form.
std::string LongPathName(const std::string& path);

// The box for a command line whose file is not found.
std::string NotFoundText(const std::string& commandLine);

// What InitSessionVars reads from the settings, for the design window's
// grid and the generator.
struct SessionVars {
  bool bSaveBackup = false;
  bool bShowGrid = false;
  bool bAlignXY = false;
  bool bAlignWH = false;
  bool bShowGridAsDots = false;
  i16 iGridX = 10;
  i16 iGridY = 10;
  Colour lGridColor = RGB(128, 128, 128);
  bool bAddJAR = true;
};
SessionVars& Session();

// sProjectName "MyProject", the settings above, bReady and bProjectSaved
// true.
SessionVars& InitSessionVars(Project& p, Env& env);

// At start: removes the temporary files that killed runs of the program
// left in AppletTemp, the Projects and Export folders, the folders of the
// recent projects and those of the last replaced page, export and project
// dialog (those of a process still running are kept). The number removed.
int RemoveLeftovers(Env& env);

// The message texts with their English defaults; the window title text is
// the product name, a blank and the version.
void mInitilize();

}  // namespace kp
