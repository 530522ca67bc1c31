#include "cli/cli_prompter.h"

#include <ostream>

namespace kp {
namespace {

// Boxes break lines with CR LF; a terminal wants LF alone.
std::string ForTerminal(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i)
    if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')) out.push_back(text[i]);
  return out;
}

}  // namespace

Answer CliPrompter::MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                           Icon) {
  ++shown;
  if (!title.empty()) err_ << "[" << title << "] ";
  err_ << ForTerminal(text) << "\n";
  if (!answers.empty()) {
    Answer a = answers.front();
    answers.pop_front();
    return a;
  }
  return (buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel) ? Answer::Yes : Answer::OK;
}

bool CliPrompter::Notice(const std::string& title, const std::string& text, const std::string&,
                         bool checked) {
  ++shown;
  err_ << "[" << title << "] " << ForTerminal(text) << "\n";
  return checked;
}

}  // namespace kp
