// Undo and redo of the author's changes. The history keeps one copy of the
// project as it stood at the last step and, per step, only the fields that
// changed since: the button slots by index, the applet record (which holds
// the page blocks and the button count) and the current button. A step is
// recorded when a window says a user operation ended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "core/model.h"

namespace kp {

// One field that changed, before and after. Numbers (i16, colours, flags)
// share one form; texts keep their bytes.
struct NumberChange {
  std::uint16_t slot;
  i32 before;
  i32 after;
};
struct TextChange {
  std::uint16_t slot;
  std::string before;
  std::string after;
};
struct RecordPatch {
  std::vector<NumberChange> numbers;
  std::vector<TextChange> texts;
  bool empty() const { return numbers.empty() && texts.empty(); }
  std::size_t Bytes() const;
};
struct ButtonPatch {
  i16 index = 0;
  RecordPatch fields;
};

struct HistoryStep {
  std::string name;
  std::vector<ButtonPatch> buttons;
  RecordPatch applet;
  i16 curBefore = 0;
  i16 curAfter = 0;
  // The selected buttons before and after, as the windows told them.
  std::vector<i16> selBefore;
  std::vector<i16> selAfter;
  std::size_t Bytes() const;
};

// What an undo or redo changed, so the windows redraw no more than that.
struct HistoryChange {
  bool done = false;
  std::vector<int> buttons;  // indexes whose record changed, ascending
  bool applet = false;       // any field of the applet record
  int countBefore = 0;
  int countAfter = 0;
  std::vector<int> selection;  // the selected buttons to show again
};

// Field-wise differences of two records; `Patch` applies one side.
RecordPatch DiffButtons(const tButton& before, const tButton& after);
RecordPatch DiffApplet(const Project& before, const Project& after);
void ApplyToButton(tButton& b, const RecordPatch& patch, bool after);
void ApplyToApplet(Project& p, const RecordPatch& patch, bool after);
// Slot numbers by name, for naming a step after what it changed.
int ButtonSlotOf(const std::string& field);
int AppletSlotOf(const std::string& field);

// The words of the Edit menu's history entries; a language file may
// replace them. "%1" stands for a number of buttons.
struct HistoryWords {
  std::string Undo = "Undo";
  std::string Redo = "Redo";
  std::string AddOne = "Add Button";
  std::string AddMany = "Add %1 Buttons";
  std::string DeleteOne = "Delete Button";
  std::string DeleteMany = "Delete %1 Buttons";
  std::string MoveOne = "Move Button";
  std::string MoveMany = "Move %1 Buttons";
  std::string SizeOne = "Resize Button";
  std::string SizeMany = "Resize %1 Buttons";
  std::string RenameOne = "Rename Button";
  std::string RenameMany = "Rename %1 Buttons";
  std::string ChangeOne = "Change Button";
  std::string ChangeMany = "Change %1 Buttons";
  std::string AppletSize = "Resize Applet";
  std::string PageBlocks = "Change Page Blocks";
  std::string AppletPrograms = "Change Applet Program";
  std::string Applet = "Change Applet Options";
  std::string Project = "Change Project";
  std::string Duplicate = "Duplicate";
  std::string Paste = "Paste";
  std::string Cut = "Cut";
  std::string BringToFront = "Bring to Front";
  std::string SendBack = "Send Back";
  std::string Align = "Align";
  std::string Action = "Change Action Program";
};
HistoryWords& Words();
// "%1" of a word replaced by n.
std::string WordFor(const std::string& one, const std::string& many, std::size_t n);

// A name for a step from what changed: "Move 2 Buttons", "Add Button" ...
std::string StepNameOf(const HistoryStep& step, int countBefore, int countAfter);

class EditHistory {
 public:
  static constexpr std::size_t kDefaultLimit = 200;
  explicit EditHistory(std::size_t limit = kDefaultLimit) : limit_(limit) {}

  // A loaded, new or fresh project: no steps, and this state is saved.
  void Reset(const Project& p);
  // Records the changes since the last step; false when nothing changed.
  // An empty name lets the history name the step after what changed. The
  // selection, when given, is remembered even when nothing changed, so a
  // step knows what was selected when it began.
  bool Commit(const Project& p, const std::string& name = {},
              const std::vector<int>& selection = {});
  // The project was saved as it stands (pending changes become a step).
  void MarkSaved(const Project& p);

  bool CanUndo() const { return cursor_ > 0; }
  bool CanRedo() const { return cursor_ < steps_.size(); }
  std::string UndoName() const;
  std::string RedoName() const;
  // Pending changes are committed first; bProjectSaved follows the saved
  // state.
  HistoryChange Undo(Project& p);
  HistoryChange Redo(Project& p);

  // What the windows' redraw after an undo or redo wrote back (a label
  // centred again) joins the state the cursor stands on, not a new step.
  void Absorb(const Project& p);

  bool AtSaved() const { return saved_ == static_cast<long>(cursor_); }
  std::size_t StepCount() const { return steps_.size(); }
  std::size_t Cursor() const { return cursor_; }
  std::size_t Limit() const { return limit_; }
  // The steps' own bytes (the one copy of the project not counted).
  std::size_t StepBytes() const;
  // The steps and the copy.
  std::size_t MemoryBytes() const;

 private:
  HistoryChange Apply(Project& p, const HistoryStep& s, bool after);

  std::size_t limit_;
  Project base_;
  bool hasBase_ = false;
  std::vector<i16> baseSel_;
  std::deque<HistoryStep> steps_;
  std::size_t cursor_ = 0;
  // The cursor position of the saved state; -1 when no step reaches it.
  long saved_ = 0;
};

}  // namespace kp
