// The HTML window and its two editors, with the program-wide state of the
// generator and of publishing. The windows are created on first use and
// live until shutdown. The main window, the design window and the
// applet-paths window make the generated code stale whenever they are
// activated, so that coming back to the HTML window regenerates it.
#pragma once

#include <QPointer>
#include <memory>

#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "generate/html_generator.h"
#include "properties/ui_text.h"
#include "publish/context.h"

class QAction;
class QObject;

namespace kp {

class frmAppletPaths;
class frmHTML;
class frmMain;
class frmSurHTML;

class HtmlWindows {
 public:
  HtmlWindows(Project& p, Env& env, frmMain& main, const LangSettings& lang);
  ~HtmlWindows();
  HtmlWindows(const HtmlWindows&) = delete;
  HtmlWindows& operator=(const HtmlWindows&) = delete;

  // The texts of the main window's entries for the two editors.
  static UiTexts& MainMenuTexts();

  GeneratorState st;
  PublishState publish;

  frmHTML* HTML();
  frmSurHTML* SurHTML();
  frmAppletPaths* AppletPaths();
  // The windows that exist so far (nullptr before their first use).
  frmHTML* ExistingHTML() const;
  frmSurHTML* ExistingSurHTML() const;
  frmAppletPaths* ExistingAppletPaths() const;

  // The main window's btnBuild_Click: the HTML window shown and activated,
  // restored first when it is minimised.
  void btnBuild_Click();
  // The editors, opened from the HTML window or the main window's menu.
  void ShowSurHTML();
  void ShowAppletPaths();
  // A project is being loaded.
  void HideHTMLWindow();

  QAction* mnuSurHTML = nullptr;
  QAction* mnuAppletPaths = nullptr;

 private:
  class Watcher;
  void BackFromAppletPaths();

  Project& p_;
  Env& env_;
  frmMain& main_;
  LangSettings lang_;
  std::unique_ptr<Watcher> watcher_;
  QPointer<frmHTML> html_;
  QPointer<frmSurHTML> sur_;
  QPointer<frmAppletPaths> paths_;
};

}  // namespace kp
