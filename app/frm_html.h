// frmHTML: the HTML window. Its code box holds the generated block, the one
// copy that the clipboard, the build, the auto-replace and the browser test
// read; the window regenerates it on activation when the project may have
// changed since (bHTMLStale).
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "generate/html_generator.h"
#include "properties/ui_text.h"
#include "publish/build.h"
#include "publish/context.h"

class QAction;
class QCheckBox;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;

namespace kp {

class frmMain;

class frmHTML : public QWidget {
 public:
  frmHTML(Project& p, Env& env, GeneratorState& st, PublishState& publish, frmMain& main,
          const LangSettings& lang);
  ~frmHTML() override;
  // The window's texts in the order of the "[frmHTML]" language section.
  static UiTexts& Texts();

  // Runs each time the window gains activation: caption, browser list,
  // the JavaScript test, and MakeHTML when the code is stale.
  void Form_Activate();
  // Rewrites the code box from the project.
  void MakeHTML();

  // The code box's text, with any edit the user made in the box.
  const CodeBox& Code();
  // What a publishing command borrows for one call, with the controls'
  // current values.
  PublishContext Context();
  // How many times the block was generated since the window was created.
  int Generations() const { return generations_; }

  // --- Handlers ---
  void btnReGenerate_Click();
  void btnCopyToClb_Click();
  void mnuCopy_Click() { btnCopyToClb_Click(); }
  void btnBuild_Click();
  void mnuBuild_Click();
  void mnuSaveHTML_Only_Click();
  void btnAdvanced_Click();
  void mnuSurHTML_Click();
  void mnuBrowsers_Click();
  void cmbBrowser_Click(int index);
  void btnPreview_Click();
  void btnGetAutoReplaceHTML_filename_Click();
  void btnAutoReplaceHTML_Click();
  void txtAutoReplaceHTML_FileName_KeyUp(int key);
  void btnClose_Click();

  // The two editors live beside this window; these open them.
  std::function<void()> onAdvanced;
  std::function<void()> onSurHTML;
  // MakeHTML refills the applet-paths window's boxes from the project.
  std::function<void(const AppletPathsBoxes&)> onFillAppletPaths;

  // --- Controls ---
  QMenuBar* menuBar;
  QMenu* mnuFile;
  QAction* mnuBuild;
  QAction* mnuSaveHTML_Only;
  QAction* mnuCopy;
  QMenu* mnuOptions;
  QAction* mnuSurHTML;
  QAction* mnuBrowsers;
  QPlainTextEdit* txtHTML;
  QPushButton* btnReGenerate;
  QPushButton* btnCopyToClb;
  QPushButton* btnBuild;
  QPushButton* btnAdvanced;
  QComboBox* cmbBrowser;
  QPushButton* btnPreview;
  // Says that built pages carry the player; shown while the setting is on.
  QLabel* lblPlayerNote;
  QPushButton* btnClose;
  QGroupBox* frmAutoHTMLReplace;
  QLineEdit* txtAutoReplaceHTML_FileName;
  QPushButton* btnGetAutoReplaceHTML_filename;
  QPushButton* btnAutoReplaceHTML;
  QCheckBox* chkUpdateRequired;
  // The "Please Wait..." overlay over the code box.
  QFrame* picUpLabel;
  QLabel* lblMessage;

 protected:
  bool event(QEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;

 private:
  class View;
  void BuildControls();
  void BuildLayout();
  void ApplyTexts();
  void ChangeLang_frmHTML(const LangSettings& lang);
  void GetBrowsers();
  void ShowPlayerNote();
  void ShowCode();
  void SetGenerating(bool busy);
  void ShowOverlay(const std::string& text);
  void HideOverlay();
  void PlaceOverlay();
  // After a publishing call: what it changed in the window's state.
  void TakeBack(const HtmlWindowState& win);
  void Build(bool bWithFiles);

  Project& p_;
  Env& env_;
  GeneratorState& st_;
  PublishState& publish_;
  frmMain& main_;
  std::unique_ptr<View> view_;
  CodeBox code_;
  HtmlWindowState win_;
  // The box was edited since the code was last written into it.
  bool edited_ = false;
  bool showingCode_ = false;
  bool fillingBrowsers_ = false;
  int generations_ = 0;
};

}  // namespace kp
