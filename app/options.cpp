#include "app/options.h"

#include <cstdlib>
#include <filesystem>

#include "core/folders.h"
#include "core/model.h"

namespace kp {

std::string DesignerHelp() {
  return "usage: kestrelpane [--home DIR] [--settings FILE] [PROJECT.kpn | /reset_kp]\n"
         "Kestrel Pane: lay out the buttons of a bar for web pages, give each a look\n"
         "for its three states, links and action programs, and build the page.\n"
         "\n"
         "  PROJECT.kpn      the project to open; a relative name is looked for in the\n"
         "                   user's data folder, then in the program folder\n"
         "  /reset_kp        ask whether to reset this version's settings, then end\n"
         "  --home DIR       the program folder to read (default: $KESTRELPANE_HOME,\n"
         "                   else the installed data folder); an installed one is never\n"
         "                   written: AppletTemp, Projects and Export are kept in\n"
         "                   $XDG_DATA_HOME/kestrelpane instead\n"
         "  --settings FILE  keep the settings in this INI file (created if missing)\n"
         "  --help           display this help and exit\n"
         "  --version        output version information and exit\n"
         "\n"
         "exit status: 0 success, 2 a usage error, 3 the settings held a damaged\n"
         "button record and were restored\n";
}

std::string DesignerVersion() {
  return std::string("kestrelpane (Kestrel Pane) ") + sPRJ_FILE_VERSION + "\n";
}

StartOptions ParseStartOptions(const std::vector<std::string>& args) {
  StartOptions o;
  size_t i = 0;
  for (; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--home" || a == "--settings") {
      if (i + 1 == args.size()) {
        o.error = "option '" + a + "' requires an argument";
        return o;
      }
      (a == "--home" ? o.home : o.settingsFile) = args[++i];
    } else if (a == "--help" || a == "-h") {
      o.help = true;
    } else if (a == "--version") {
      o.version = true;
    } else if (a.rfind("--", 0) == 0) {
      // A desktop passes full paths, so nothing that names a project
      // starts with two dashes.
      o.error = "unrecognized option '" + a + "'";
      return o;
    } else {
      break;
    }
  }
  for (size_t k = i; k < args.size(); ++k) {
    if (k > i) o.commandLine += ' ';
    o.commandLine += args[k];
  }
  return o;
}

std::string ExecutablePath() {
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::string() : exe.string();
}

std::string ProgramFolder(const std::string& homeOption) {
  return ResolveFolders(homeOption).programFolder;
}

std::string UserDataHome() {
  if (const char* d = std::getenv("XDG_DATA_HOME"); d && *d == '/') return d;
  const char* home = std::getenv("HOME");
  return std::string(home ? home : "") + "/.local/share";
}

}  // namespace kp
