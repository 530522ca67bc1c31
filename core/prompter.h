// Every message box, question, notice and progress window goes through a
// Prompter. The GUI answers with dialogs, the CLI with flags and stderr,
// tests with scripted answers; the texts are exactly the program's own.
#pragma once

#include <string>

namespace kp {

enum class Buttons { OK, OKCancel, YesNo, YesNoCancel };
enum class Answer { OK, Cancel, Yes, No };
enum class Icon { None, Information, Exclamation, Critical, Question };

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

  // The busy pointer (hourglass) on or off.
  virtual void Busy(bool /*on*/) {}
  // Lets pending window events run (a no-op headless).
  virtual void ProcessEvents() {}
};

}  // namespace kp
