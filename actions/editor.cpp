#include "actions/editor.h"

#include <utility>

namespace kp {

ActionPanels PanelsFor(int i) {
  const int code = i + 1;
  ActionPanels s;
  s.move = code == kActMove;
  s.setLabel = code == kActSetLabel || code == kActSetColor || code == kActSetState ||
               code == kActBorderColor;
  s.hexColor = code == kActSetColor || code == kActBorderColor;
  s.buttonNumber = code != kActWait;
  s.timer = code == kActWait;
  s.javaScript = code == kActCallJavaScript;
  s.label = code != kActSetState;
  s.blink = code == kActBlink;
  return s;
}

namespace {

bool NeedsButton(int code) {
  return code >= kFirstActionCode && code <= kLastActionCode && code != kActWait &&
         code != kActCallJavaScript;
}

}  // namespace

AddResult PrepareCommand(ActionFields& f, bool haveButtons) {
  AddResult r;
  const int code = f.action + 1;
  if (code < kFirstActionCode || code > kLastActionCode) return r;
  if (NeedsButton(code) && !haveButtons) {
    r.verdict = AddVerdict::NoButtons;
    return r;
  }
  if (code == kActSetLabel && f.label.empty()) {
    f.label = " ";
    r.labelBlanked = true;
  }
  // A colour is exactly six characters; whether they are hexadecimal
  // digits is the applet's business.
  if ((code == kActSetColor || code == kActBorderColor) && f.label.size() != 6) return r;
  if (code == kActCallJavaScript && f.script.empty()) return r;
  r.command = BuildCommand(f);
  r.verdict = AddVerdict::Ready;
  return r;
}

// --- ProgramEditor ---------------------------------------------------------------

void ProgramEditor::Load(std::string_view program) { commands_ = SplitProgram(program); }

std::vector<std::string> ProgramEditor::Lines(const ActionTexts& texts) const {
  std::vector<std::string> lines;
  lines.reserve(commands_.size());
  for (const auto& c : commands_) {
    if (auto line = DisplayLine(c, texts)) lines.push_back(std::move(*line));
  }
  return lines;
}

void ProgramEditor::Add(std::string command) { commands_.push_back(std::move(command)); }

bool ProgramEditor::Replace(int row, std::string command) {
  if (row < 0 || row >= static_cast<int>(commands_.size())) return false;
  commands_[static_cast<size_t>(row)] = std::move(command);
  return true;
}

int ProgramEditor::Remove(int row, const ActionTexts& texts) {
  if (row < 0 || row >= static_cast<int>(commands_.size())) return -1;
  commands_.erase(commands_.begin() + row);
  // Selecting the same row fails past the last one, and nothing stays
  // selected.
  return row < static_cast<int>(Lines(texts).size()) ? row : -1;
}

int ProgramEditor::Up(int row) {
  if (row <= 0 || row >= static_cast<int>(commands_.size())) return -1;
  std::swap(commands_[static_cast<size_t>(row)], commands_[static_cast<size_t>(row - 1)]);
  return row - 1;
}

int ProgramEditor::Down(int row) {
  if (row < 0 || row + 1 >= static_cast<int>(commands_.size())) return -1;
  std::swap(commands_[static_cast<size_t>(row)], commands_[static_cast<size_t>(row + 1)]);
  return row + 1;
}

void ProgramEditor::Paste(std::string_view program) {
  for (auto& c : SplitProgram(program)) commands_.push_back(std::move(c));
}

// --- The model ------------------------------------------------------------------

std::optional<std::string> ProgramToEdit(std::string_view key, Project& p) {
  const ProgramEvent* e = FindProgramEvent(key);
  if (!e) return std::nullopt;
  if (e->owner == ProgramOwner::Applet) return p.*(e->appletField);
  if (p.iCurBtn < 1 || p.iCurBtn > p.ButtonCount) return std::string();
  return p.button(p.iCurBtn).*(e->buttonField);
}

bool StoreProgram(std::string_view key, const std::string& program, Project& p,
                  const std::vector<int>& selectedButtons) {
  const ProgramEvent* e = FindProgramEvent(key);
  if (!e) return false;
  if (e->owner == ProgramOwner::Applet) {
    p.*(e->appletField) = program;
  } else {
    for (int i : selectedButtons) {
      if (i >= 1 && i <= p.ButtonCount) p.button(i).*(e->buttonField) = program;
    }
  }
  p.bProjectSaved = false;
  return true;
}

}  // namespace kp
