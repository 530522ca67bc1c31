// kestrelpane-cli: the engine without windows.
//   kestrelpane-cli [--home DIR] [--settings FILE] COMMAND ARGS...
// Exit codes: 0 success, 1 a failure the program reports, 2 a usage error,
// 3 the settings were damaged and have been restored (the program would end).
#include <QGuiApplication>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "cli/cli_prompter.h"
#include "cli/commands.h"
#include "core/folders.h"
#include "core/launcher.h"
#include "core/messages.h"
#include "core/model.h"
#include "core/settings.h"
#include "core/startup.h"
#include "platform/qt_settings_store.h"

namespace {

const char* kUsage =
    "usage: kestrelpane-cli [--home DIR] [--settings FILE] COMMAND ARGS...\n"
    "Kestrel Pane's engine without windows: loads a project, writes its code,\n"
    "builds its folder, draws it.\n"
    "\n"
    "options:\n"
    "  --home DIR       the program folder to read (default: $KESTRELPANE_HOME, else\n"
    "                   the installed data folder); an installed one is never\n"
    "                   written, AppletTemp and the like go to\n"
    "                   $XDG_DATA_HOME/kestrelpane instead\n"
    "  --settings FILE  keep the settings in this INI file (created if missing)\n"
    "  --help           display this help and exit\n"
    "  --version        output version information and exit\n"
    "\n"
    "commands:\n"
    "  resave IN.kpn OUT.kpn   load a project and save it again\n"
    "  actions PROJECT.kpn     list every action program as display lines\n"
    "  info PROJECT.kpn        applet size, button count and each button's rectangle\n"
    "  html PROJECT.kpn        the applet's HTML block, as the HTML window shows it\n"
    "  page PROJECT.kpn [--no-player]\n"
    "                          the page file a build writes\n"
    "  build PROJECT.kpn PAGE [--html-only] [--yes] [--no-player]\n"
    "                          build the applet folder with PAGE as its page; --yes\n"
    "                          builds into a folder that already holds files\n"
    "  replace PROJECT.kpn PAGE [--select 1,3] [--update-files] [--no-player]\n"
    "                          replace the listed applets of PAGE (default: the first)\n"
    "  export PROJECT.kpn DEST.kpn [--yes]\n"
    "                          the project and its media in DEST's folder\n"
    "  browsers                detect the browsers once and list them\n"
    "  test PROJECT.kpn [--browser N] [--no-player]\n"
    "                          build into AppletTemp and open it in browser row N\n"
    "  render PROJECT.kpn OUT.png [--state UP|OVER|DOWN] [--grid]\n"
    "                          the design window's picture of the applet as PNG\n"
    "--no-player leaves out the player script (KestrelPane.js) and its file\n"
    "\n"
    "exit status: 0 success, 1 a failure the program reports, 2 a usage error,\n"
    "3 the settings held a damaged button record and were restored\n";

// Drawing text needs the GUI library's fonts, though no window opens; the
// other commands run without it.
std::unique_ptr<QGuiApplication> GuiFor(const std::string& command, int& argc, char** argv) {
  if (command != "render") return nullptr;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  std::string home, settingsFile;
  size_t i = 0;
  for (; i < args.size(); ++i) {
    if (args[i] == "--home" && i + 1 < args.size()) home = args[++i];
    else if (args[i] == "--settings" && i + 1 < args.size()) settingsFile = args[++i];
    else if (args[i] == "--help" || args[i] == "-h") {
      std::cout << kUsage;
      return 0;
    } else if (args[i] == "--version") {
      std::cout << "kestrelpane-cli (Kestrel Pane) " << kp::sPRJ_FILE_VERSION << "\n";
      return 0;
    } else break;
  }
  if (i >= args.size()) {
    std::cerr << kUsage;
    return 2;
  }
  std::unique_ptr<kp::QtSettingsStore> store =
      settingsFile.empty() ? std::make_unique<kp::QtSettingsStore>()
                           : std::make_unique<kp::QtSettingsStore>(settingsFile);
  kp::DiskFileSystem fs;
  kp::CliPrompter prompter(std::cerr);
  kp::ProjectView view;
  kp::PosixLauncher launcher;
  const kp::Folders folders = kp::ResolveFolders(home);
  kp::Env env{fs, *store, prompter, view, folders.programFolder, &launcher};
  env.userFolder = folders.userFolder;
  // The run is one operation: the settings file is written once, as it
  // ends, whatever the start-up and the command changed.
  store->BeginBatch();
  kp::ReportSettingsProblem(env);
  // Each run is a start: what killed runs left is cleared as the designer
  // clears it.
  kp::RemoveLeftovers(env);
  // Whichever program comes first makes the user's folder, with its samples.
  kp::PrepareUserFolder(env);
  std::vector<std::string> rest(args.begin() + static_cast<long>(i) + 1, args.end());
  auto gui = GuiFor(args[i], argc, argv);
  const int rc = kp::cli::Run(env, prompter, args[i], rest, std::cout, std::cerr);
  if (!store->EndBatch().empty())
    prompter.MsgBox(kp::SharedText("sWriteValueFailed"), kp::Buttons::OK, "fWriteValue",
                    kp::Icon::Critical);
  return rc;
}
