#include "app/program.h"

#include <QCoreApplication>

#include "app/frm_ask_to_associate.h"
#include "app/frm_browser_setup.h"
#include "app/html_windows.h"
#include "app/language_catalog.h"
#include "core/settings.h"
#include "core/startup.h"
#include "project/project_file.h"
#include "properties/colour_dialog.h"
#include "properties/frm_main.h"
#include "properties/qt_prompter.h"

namespace kp {

Program::Program(FileSystem& fs, SettingsStore& store, Prompter& prompter,
                 FileAssociation& association, std::string programFolder, Launcher* launcher)
    : env_{fs, store, prompter, view_, std::move(programFolder), launcher},
      association_(association) {}

Program::~Program() {
  view_.target = nullptr;
  view_.hideHTML = nullptr;
  if (main_) {
    main_->onBuild = nullptr;
    main_->publishState = nullptr;
  }
  html_.reset();
  if (auto* qt = dynamic_cast<QtPrompter*>(&env_.prompter); qt && qt->Owner() == main_.get())
    qt->SetOwner(nullptr);
}

void Program::DrainEvents() { QCoreApplication::processEvents(); }

int Program::Main(const std::string& commandLine) {
  if (!VersionSelfTest(sPRJ_FILE_VERSION)) env_.prompter.MsgBox(kVersionWrongText);
  ReportSettingsProblem(env_);

  lang_ = GET_LANG_SETTINGS(env_);

  SharedCustColors() = CustColors{};
  SharedCustColors() = GetCustColors(env_);

  project_.AllocateButtons();

  if (IsResetSwitch(commandLine)) {
    ResetSettings(env_, false);
    return 0;
  }

  InitSessionVars(project_, env_);
  // sCRLF and sQuote are constants of the model.
  mInitilize();
  StoreLanguageState(env_, lang_);

  main_ = std::make_unique<frmMain>(project_, env_);
  main_->SetLanguage(lang_);
  main_->endProcess = [this](int code) {
    if (endProcess) endProcess(code);
  };
  if (auto* qt = dynamic_cast<QtPrompter*>(&env_.prompter)) qt->SetOwner(main_.get());
  main_->onBrowserSetup = [this] { frmBrowserSetup::Run(main_.get(), env_); };
  html_ = std::make_unique<HtmlWindows>(project_, env_, *main_, lang_);
  main_->onBuild = [this] { html_->btnBuild_Click(); };
  main_->publishState = &html_->publish;
  view_.hideHTML = [this] { html_->HideHTMLWindow(); };
  view_.target = &main_->View();
  if (!main_->ShowMain()) return 3;
  ApplyPublishLanguage(env_, lang_);
  DrainEvents();

  OfferAssociation();

  DrainEvents();
  OpenCommandLine(commandLine);

  if (detectBrowsers) detectBrowsers(env_);
  return -1;
}

void Program::OfferAssociation() {
  if (!association_.AssociationMissing(env_)) return;
  if (GetParam(env_, "DontAskToAssociate") != "0") return;
  frmAskToAssociate ask(env_, association_, main_.get());
  ask.exec();
}

void Program::OpenCommandLine(const std::string& commandLine) {
  if (commandLine.empty()) {
    if (GetParam(env_, "DontShow_frm_Create_Recent") == "0") main_->Show_frm_Create_Recent();
    return;
  }
  const std::string path = FindProjectFile(env_, CommandLineName(commandLine));
  if (path.empty()) {
    env_.prompter.MsgBox(NotFoundText(commandLine));
    return;
  }
  main_->OpenProjectFile(LongPathName(path));
}

}  // namespace kp
