// The program's own options before the command line that Main reads:
//   kestrelpane [--home DIR] [--settings FILE] [PROJECT | /reset_kp]
#pragma once

#include <string>
#include <vector>

namespace kp {

struct StartOptions {
  std::string home;          // --home DIR
  std::string settingsFile;  // --settings FILE
  // Everything after the options, joined by single blanks: Main's command
  // line, as one string.
  std::string commandLine;
  bool help = false;     // --help
  bool version = false;  // --version
  // A usage error ("unrecognized option '--x'"); the program says it and
  // ends with exit code 2 before any window opens.
  std::string error;
};

StartOptions ParseStartOptions(const std::vector<std::string>& args);

// What --help and --version print.
std::string DesignerHelp();
std::string DesignerVersion();

// The program folder: --home, else $KESTRELPANE_HOME, else the folder of
// the executable when it holds the program's files, else the installed data
// folder (core/folders.h); absolute, without a trailing separator.
std::string ProgramFolder(const std::string& homeOption);
// The running executable's path.
std::string ExecutablePath();
// The user's data folder: $XDG_DATA_HOME, else ~/.local/share.
std::string UserDataHome();

}  // namespace kp
