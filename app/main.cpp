// kestrelpane: the designer.
//   kestrelpane [--home DIR] [--settings FILE] [PROJECT | /reset_kp]
//   kestrelpane --help | --version
#include <QApplication>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "app/options.h"
#include "app/program.h"
#include "core/association.h"
#include "core/folders.h"
#include "core/fs.h"
#include "core/launcher.h"
#include "core/messages.h"
#include "platform/qt_settings_store.h"
#include "publish/browsers.h"
#include "properties/qt_prompter.h"

int main(int argc, char** argv) {
  // Help, version and a usage error need no display.
  const kp::StartOptions early = kp::ParseStartOptions({argv + 1, argv + argc});
  if (!early.error.empty()) {
    std::cerr << "kestrelpane: " << early.error
              << "\nTry 'kestrelpane --help' for more information.\n";
    return 2;
  }
  if (early.help || early.version) {
    std::cout << (early.help ? kp::DesignerHelp() : kp::DesignerVersion());
    return 0;
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName("KestrelPane");
  // QApplication has taken its own options out of argv.
  std::vector<std::string> args(argv + 1, argv + argc);
  kp::StartOptions opt = kp::ParseStartOptions(args);

  std::unique_ptr<kp::QtSettingsStore> store =
      opt.settingsFile.empty() ? std::make_unique<kp::QtSettingsStore>()
                               : std::make_unique<kp::QtSettingsStore>(opt.settingsFile);
  kp::DiskFileSystem fs;
  kp::PosixLauncher launcher;
  kp::QtPrompter prompter;
  const char* dataDirs = std::getenv("XDG_DATA_DIRS");
  kp::XdgAssociation association(kp::UserDataHome(), kp::ExecutablePath(),
                                 kp::DataDirsFrom(dataDirs ? dataDirs : ""));
  const kp::Folders folders = kp::ResolveFolders(opt.home);
  kp::Program program(fs, *store, prompter, association, folders.programFolder, &launcher);
  program.env().userFolder = folders.userFolder;
  kp::PrepareUserFolder(program.env());
  // The settings file is written once a command, when its event is done; a
  // write nobody waits for reports its failure here.
  store->onWriteFailure = [&prompter](const std::string&) {
    prompter.MsgBox(kp::SharedText("sWriteValueFailed"), kp::Buttons::OK, "fWriteValue",
                    kp::Icon::Critical);
  };
  program.endProcess = [&store](int code) {
    store->Flush();
    std::_Exit(code);
  };
  // This desktop has no registry: the two registry detections find nothing.
  program.detectBrowsers = [](kp::Env& env) {
    kp::DetectBrowsers(env, [](const std::string&, const std::string&) { return std::string(); },
                       kp::BrowserSearch::FromEnvironment());
  };
  int rc = program.Main(opt.commandLine);
  if (rc < 0) rc = app.exec();
  const std::string failure = store->Flush();
  if (!failure.empty()) store->onWriteFailure(failure);
  store->onWriteFailure = nullptr;
  return rc;
}
