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

std::string CliPrompter::SaveFileDialog(const FileDialog&) {
  if (fileAnswers.empty()) return "";
  std::string a = fileAnswers.front();
  fileAnswers.pop_front();
  return a;
}

std::string CliPrompter::OpenFileDialog(const FileDialog& d) { return SaveFileDialog(d); }

DialogResult CliPrompter::ShowDialog(const Dialog& d) {
  ++shown;
  ++dialogsShown;
  err_ << "[" << d.caption << "] " << ForTerminal(d.text) << "\n";
  int button = d.cancelButton;
  if (auto it = dialogChoice.find(d.name); it != dialogChoice.end()) button = it->second;
  // An action button (such as opening a folder) is not pressed from here:
  // the window closes the way Escape closes it.
  if (button < 0 || static_cast<size_t>(button) >= d.buttons.size() ||
      d.buttons[static_cast<size_t>(button)].action) {
    button = d.cancelButton;
    if (button < 0 || static_cast<size_t>(button) >= d.buttons.size() ||
        d.buttons[static_cast<size_t>(button)].action) {
      button = 0;
      for (size_t i = 0; i < d.buttons.size(); ++i)
        if (!d.buttons[i].action) {
          button = static_cast<int>(i);
          break;
        }
    }
  }
  return {button, d.checked};
}

bool CliPrompter::ShowCheckList(CheckList& list) {
  ++checkListsShown;
  err_ << list.message << "\n";
  for (size_t i = 0; i < list.rows.size(); ++i)
    err_ << "  " << (i + 1) << ". " << list.rows[i] << "\n";
  if (checkListsShown > 1) return false;
  if (checkListRows) {
    list.ticked.assign(list.rows.size(), false);
    for (int row : *checkListRows)
      if (row >= 1 && static_cast<size_t>(row) <= list.rows.size())
        list.ticked[static_cast<size_t>(row - 1)] = true;
  }
  return true;
}

}  // namespace kp
