// The command line's answers to the program's questions: every message
// goes to stderr; questions take the answers given by flags, otherwise the
// first button (OK / Yes).
#pragma once

#include <deque>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/prompter.h"

namespace kp {

class CliPrompter : public Prompter {
 public:
  explicit CliPrompter(std::ostream& err) : err_(err) {}
  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                Icon icon) override;
  bool Notice(const std::string& title, const std::string& text, const std::string& checkCaption,
              bool checked) override;
  // File dialogs take the paths the command was given, in order; with none
  // left the dialog is cancelled.
  std::string SaveFileDialog(const FileDialog& d) override;
  std::string OpenFileDialog(const FileDialog& d) override;
  // The program's own windows print their text and press the button chosen
  // for that window by a flag, otherwise the one Escape presses.
  DialogResult ShowDialog(const Dialog& d) override;
  // A check list takes the rows chosen by a flag once (unset: as shown) and
  // presses its action; a second showing is cancelled.
  bool ShowCheckList(CheckList& list) override;

  // Answers for the next questions, in order.
  std::deque<Answer> answers;
  std::deque<std::string> fileAnswers;
  std::map<std::string, int> dialogChoice;  // window name -> button index
  std::optional<std::vector<int>> checkListRows;  // rows to tick, from 1
  int shown = 0;
  int dialogsShown = 0;
  int checkListsShown = 0;

 private:
  std::ostream& err_;
};

}  // namespace kp
