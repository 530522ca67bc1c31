// The publishing commands' own windows: the occupied-folder warning, the
// closing dialog of a build, the auto-replace check list and its report.
// The commands say which buttons a window has and what they do; a window
// finds its control for each by the control's English caption, and shows
// the caption of its own text table (which a language file may replace).
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "core/prompter.h"
#include "properties/ui_text.h"

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace kp {

// What the publishing windows share: the engine's buttons bound to the
// form's controls, the check box, and Escape pressing the cancel button.
class PublishWindow : public QDialog {
 public:
  PublishWindow(QWidget* parent, const char* name);

  // Shows the window modally for `d` until a closing button is pressed.
  DialogResult Run(const Dialog& d);

  QCheckBox* chkShowNextTime = nullptr;

 protected:
  // The form's texts as built in, to match the engine's captions with.
  virtual const UiTexts& Defaults() const = 0;
  // ... and as the language file left them.
  virtual const UiTexts& Current() const { return Defaults(); }
  // The row the buttons stand in; a button the form does not know goes
  // there too.
  QHBoxLayout* buttonRow = nullptr;
  void reject() override;

 private:
  int escapeResult_ = -1;
};

// frmSomeFilesWarning: Yes or No before writing into a folder that holds
// files. Beeps when it is shown.
class frmSomeFilesWarning : public PublishWindow {
 public:
  explicit frmSomeFilesWarning(QWidget* parent);
  static UiTexts& Texts();
  static const UiTexts& DefaultTexts();

  QLabel* txtMessage;
  QPushButton* btnYes;
  QPushButton* btnNo;
  // How often the window beeped.
  int beeps = 0;

 protected:
  const UiTexts& Defaults() const override { return DefaultTexts(); }
  const UiTexts& Current() const override { return Texts(); }
  void showEvent(QShowEvent* e) override;
};

// frmReadyForUpload: the closing dialog of a build.
class frmReadyForUpload : public PublishWindow {
 public:
  explicit frmReadyForUpload(QWidget* parent);
  static UiTexts& Texts();
  static const UiTexts& DefaultTexts();

  QLabel* lblMessage;
  QLabel* lblCaseSensitive;
  QPushButton* btnExplore;
  QPushButton* btnOK;

 protected:
  const UiTexts& Defaults() const override { return DefaultTexts(); }
  const UiTexts& Current() const override { return Texts(); }
};

// frmAutoRepHTML_MSG: the report after a replacement; the text is the
// command's.
class frmAutoRepHTML_MSG : public PublishWindow {
 public:
  explicit frmAutoRepHTML_MSG(QWidget* parent);
  static UiTexts& Texts();
  static const UiTexts& DefaultTexts();

  QPlainTextEdit* txtMessage;
  QPushButton* btnOK;
  QPushButton* btnExplore;

 protected:
  const UiTexts& Defaults() const override { return DefaultTexts(); }
  const UiTexts& Current() const override { return Texts(); }
};

// A window of the program that has no form of its own: the text, the
// buttons and the check box as the command gives them.
class GenericProgramWindow : public PublishWindow {
 public:
  explicit GenericProgramWindow(QWidget* parent, const std::string& name);
  QLabel* txtMessage;

 protected:
  const UiTexts& Defaults() const override;
};

// frmAutoRepHTML_2: the applets found in a page, to tick for replacing.
// Replace runs the list's action with the window still open; the window
// closes when the action says so.
class frmAutoRepHTML_2 : public QDialog {
 public:
  explicit frmAutoRepHTML_2(QWidget* parent);
  static UiTexts& Texts();

  // Shows the list modally. True when it closed through Replace (the
  // ticks are in list.ticked), false on Cancel.
  bool Run(CheckList& list);

  void btnSelectAll_Click();
  void btnDeselectAll_Click();
  void btnReplace_Click();

  std::vector<bool> Ticks() const;

  QLabel* txtMSG;
  QListWidget* lstApplets;
  QPushButton* btnSelectAll;
  QPushButton* btnDeselectAll;
  QPushButton* btnReplace;
  QPushButton* btnCANCEL;

 private:
  std::function<bool(const std::vector<bool>&)> action_;
};

}  // namespace kp
