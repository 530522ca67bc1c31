// The command line's answers to the program's questions: every message
// goes to stderr; questions take the answers given by flags, otherwise the
// first button (OK / Yes).
#pragma once

#include <deque>
#include <iosfwd>

#include "core/prompter.h"

namespace kp {

class CliPrompter : public Prompter {
 public:
  explicit CliPrompter(std::ostream& err) : err_(err) {}
  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                Icon icon) override;
  bool Notice(const std::string& title, const std::string& text, const std::string& checkCaption,
              bool checked) override;

  // Answers for the next questions, in order.
  std::deque<Answer> answers;
  int shown = 0;

 private:
  std::ostream& err_;
};

}  // namespace kp
