// Where the program reads its own files and where it writes.
//
// The program folder holds what the program reads (Kestrel.ini, the
// language file, the applet's files and the player, samples, sounds,
// tools). Installed for all users it lies under /usr/share and must never
// be written; every write (AppletTemp/, the default Projects/ and Export/)
// then goes to the user's own folder, $XDG_DATA_HOME/kestrelpane. A
// program folder of one's own (the build folder, --home) stays a folder
// that is read and written as before.
#pragma once

#include <functional>
#include <string>

#include "core/env.h"

namespace kp {

inline constexpr const char* kUserFolderName = "kestrelpane";

// The folder the program writes into: the user folder when there is one,
// else the program folder. No trailing separator.
std::string WriteFolder(const Env& env);

// The path of one of the program folder's files as the user sees it: the
// user folder's own copy (a changed Kestrel.ini, a chosen language file)
// when there is one, else the program folder's.
std::string ProgramFile(const Env& env, const std::string& name);

// What the start of either program needs to know to build its Env.
struct FolderInputs {
  std::string homeOption;  // --home DIR, "" when not given
  std::string homeEnv;     // $KESTRELPANE_HOME, "" when unset
  std::string exePath;     // the running executable, "" when unknown
  std::string dataHome;    // $XDG_DATA_HOME, "" when unset or relative
  std::string userHome;    // $HOME
  // The installed data folder relative to the executable's folder, such
  // as "../share/kestrelpane".
  std::string installedRelative;
  // Whether the user may write into a folder; the disk's answer by default.
  std::function<bool(const std::string&)> writable;
  std::function<bool(const std::string&)> fileExists;
};

struct Folders {
  std::string programFolder;  // absolute, no trailing separator
  std::string userFolder;     // "" when the program folder takes the writes
  bool installed = false;     // the program folder is the installed data folder
};

// The program folder: --home, else $KESTRELPANE_HOME, else the executable's
// folder when it holds Kestrel.ini (a build folder), else the installed
// data folder beside it when that holds Kestrel.ini, else the executable's
// folder. The user folder is set when the program folder is the installed
// one or cannot be written.
Folders ResolveFolders(const FolderInputs& in);

// The same with the process's environment and the disk; the installed data
// folder is where `cmake --install` puts it relative to the programs.
Folders ResolveFolders(const std::string& homeOption);

// First use of a user folder: makes it and gives it a Projects folder
// seeded with the program folder's sample projects, so that the open
// dialog and a relative name on the command line find them and they can
// be saved. Does nothing without a user folder or when Projects exists.
void PrepareUserFolder(Env& env);

}  // namespace kp
