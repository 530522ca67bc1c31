// Every message box, question, notice and progress window goes through a
// Prompter. The GUI answers with dialogs, the CLI with flags and stderr,
// tests with scripted answers; the texts are exactly the program's own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kp {

// OKCancelDefaultCancel: OK and Cancel with Cancel as the default button,
// for a question whose safe answer is to stop.
enum class Buttons { OK, OKCancel, YesNo, YesNoCancel, OKCancelDefaultCancel };
enum class Answer { OK, Cancel, Yes, No };
enum class Icon { None, Information, Exclamation, Critical, Question };

// A file-open or file-save dialog. The filter is the program's own text,
// pairs of "description|patterns" joined by "|".
struct FileDialog {
  std::string title;       // "" means the dialog's own title
  std::string filter;
  std::string folder;      // where the dialog starts
  std::string fileName;    // proposed name
  std::string defaultExt;  // added to a typed name without one ("html")
  bool overwritePrompt = false;  // save: replacing a file must be confirmed
  bool pathMustExist = false;
  bool fileMustExist = false;    // open: only an existing file is accepted
  // save: `folder` may be missing; the caller makes it once a name in it is
  // accepted, so a cancelled dialog leaves nothing behind.
  bool folderMadeOnAccept = false;
  bool hideReadOnly = true;
};

// A button of one of the program's own small windows. A button with an
// action runs it and the window stays open (such as "View files in Windows
// &Explorer"); a button without one closes the window.
struct DialogButton {
  std::string caption;
  std::function<void()> action;
};

// One of the program's own modal windows that is more than a message box:
// a text, a row of buttons and at most one check box (frmSomeFilesWarning,
// frmReadyForUpload, frmAutoRepHTML_MSG).
struct Dialog {
  std::string name;     // the window's name, such as "frmSomeFilesWarning"
  std::string caption;
  std::string text;
  std::vector<DialogButton> buttons;
  std::string checkCaption;  // "" when the window has no check box
  bool checked = true;       // the check box's state when shown
  bool beep = false;         // the window beeps when it is activated
  int cancelButton = -1;     // the closing button Escape presses, -1 none
};

struct DialogResult {
  int button = 0;        // index of the closing button pressed
  bool checked = true;   // the check box's state on close
};

// A modal check list with one action button (frmAutoRepHTML_2): rows the
// user ticks, "Select All" and "Clear All" working on the ticks alone, the
// action and Cancel.
struct CheckList {
  std::string name;
  std::string caption;
  std::string message;
  std::vector<std::string> rows;
  std::vector<bool> ticked;  // in: as shown; out: as left by the user
  std::string selectAllCaption;
  std::string clearAllCaption;
  std::string actionCaption;
  std::string cancelCaption;
  // Run by the action button with the ticks as they stand, while the list
  // is still open. True closes the list; false keeps it open, such as after
  // "Please check at least one applet.". A prompter that does not run it
  // returns from the action button, and the caller runs the action itself.
  std::function<bool(const std::vector<bool>& ticked)> action;
};

class Prompter {
 public:
  virtual ~Prompter() = default;

  // A message box. The title "" means the program's own title.
  virtual Answer MsgBox(const std::string& text, Buttons buttons = Buttons::OK,
                        const std::string& title = "", Icon icon = Icon::None) = 0;

  // A notice with one check box (such as "Warn next time"), shown with the
  // box in state `checked`; returns the box's state when the notice closes.
  virtual bool Notice(const std::string& title, const std::string& text,
                      const std::string& checkCaption, bool checked) = 0;

  // The progress window: shown with a text, then updated with a text and a
  // bar in percent, then hidden. ProgressCancelled tells whether the user
  // pressed its Cancel since it was shown.
  virtual void ProgressShow(const std::string& /*text*/) {}
  virtual void ProgressSet(const std::string& /*text*/, int /*percent*/) {}
  virtual bool ProgressCancelled() { return false; }
  virtual void ProgressHide() {}

  // File dialogs: the chosen path, or "" when the dialog was cancelled.
  virtual std::string SaveFileDialog(const FileDialog& /*d*/) { return ""; }
  virtual std::string OpenFileDialog(const FileDialog& /*d*/) { return ""; }
  // An open dialog that takes several files; none when cancelled. Where
  // only one can be picked, that one.
  virtual std::vector<std::string> OpenFilesDialog(const FileDialog& d) {
    std::string one = OpenFileDialog(d);
    if (one.empty()) return {};
    return {one};
  }

  // Shows one of the program's own windows modally until a closing button
  // is pressed. Action buttons run their action in between.
  virtual DialogResult ShowDialog(const Dialog& d) {
    for (size_t i = 0; i < d.buttons.size(); ++i)
      if (!d.buttons[i].action) return {static_cast<int>(i), d.checked};
    return {0, d.checked};
  }

  // Shows a check list modally. True when the action button was pressed
  // (with list.ticked as the user left them), false on Cancel.
  virtual bool ShowCheckList(CheckList& /*list*/) { return false; }

  // The busy pointer (hourglass) on or off.
  virtual void Busy(bool /*on*/) {}
  // Lets pending window events run (a no-op headless).
  virtual void ProcessEvents() {}
};

}  // namespace kp
