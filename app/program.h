// The running program: its model, its outside world and its windows, and
// Main, the start routine that brings them up in a fixed order.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/association.h"
#include "core/env.h"
#include "core/language.h"
#include "core/model.h"

namespace kp {

class frmMain;
class HtmlWindows;

class Program {
 public:
  Program(FileSystem& fs, SettingsStore& store, Prompter& prompter, FileAssociation& association,
          std::string programFolder, Launcher* launcher = nullptr);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Main, with the process command line as one string. Returns -1 when the
  // window system's event loop should run, otherwise the process's exit
  // code (the reset switch, a damaged default button record).
  int Main(const std::string& commandLine);

  Project& project() { return project_; }
  Env& env() { return env_; }
  frmMain* MainWindow() { return main_.get(); }
  // The HTML window and its editors, once the main window exists.
  HtmlWindows* Html() { return html_.get(); }
  const LangSettings& Language() const { return lang_; }

  // The browser detection, run last; the publishing level provides it.
  std::function<void(Env&)> detectBrowsers;
  // How the process ends at once (a close during a load); tests replace it.
  std::function<void(int)> endProcess;

 private:
  // The windows come after the Env that needs a view: the view forwards to
  // the main window once it exists.
  class ViewProxy : public ProjectView {
   public:
    ProjectView* target = nullptr;
    std::function<void()> hideHTML;
    void SetMainParams(Project& p) override { if (target) target->SetMainParams(p); }
    void ClearButtons() override { if (target) target->ClearButtons(); }
    void LoadButton(Project& p, int i) override { if (target) target->LoadButton(p, i); }
    void SelectButton(Project& p, int i) override { if (target) target->SelectButton(p, i); }
    void SetTitles(const std::string& m, const std::string& d) override {
      if (target) target->SetTitles(m, d);
    }
    void HideHTMLWindow() override {
      if (hideHTML) hideHTML();
      if (target) target->HideHTMLWindow();
    }
    void RecentChanged() override { if (target) target->RecentChanged(); }
  };

  void DrainEvents();
  void OfferAssociation();
  void OpenCommandLine(const std::string& commandLine);

  Project project_;
  ViewProxy view_;
  Env env_;
  FileAssociation& association_;
  LangSettings lang_;
  std::unique_ptr<frmMain> main_;
  // Ends before the main window, whose children its windows are.
  std::unique_ptr<HtmlWindows> html_;
};

}  // namespace kp
