// Creating, copying, deleting, naming and restacking buttons, on the model
// alone. Btn is dense and 1-based, and the button list and the design
// window's surfaces follow it row by row; the window side does that after
// each of these calls.
#pragma once

#include <string>
#include <vector>

#include "core/env.h"
#include "core/model.h"

namespace kp {

// Where the next new button goes when the design window's pop-up asked for
// a place; 0 when none is pending.
struct NextPlacement {
  float x = 0;
  float y = 0;
};

// The spacing of a new button from the previous one: the grid steps when
// buttons snap to the grid, else 2 pixels.
struct PlacementGaps {
  i16 x = 2;
  i16 y = 2;
};
PlacementGaps GapsFor(bool bAlignXY, i16 iGridX, i16 iGridY);

// --- The warning at 101 buttons -----------------------------------------------

std::string Warning101Text();
// At exactly 101 buttons, asks whether to go on (Cancel is the default).
// True when the operation goes on.
bool ConfirmMoreButtons(const Project& p, Env& env);

// --- Placement ---------------------------------------------------------------

struct Placement {
  i16 x = 10;
  i16 y = 10;
};
// Where an added button goes: the pending pop-up place (which is used up),
// else below the previous button, else beside the topmost row, else 10, 10.
// `previous` is the button current before the add; `width` and `height`
// are the new button's.
Placement NewButtonPlacement(const Project& p, int previous, NextPlacement& next,
                             PlacementGaps gaps, i16 width, i16 height);
// Where a duplicate of a button at (x, y) goes.
Placement DuplicatePlacement(const Project& p, i16 x, i16 y);

// --- Add, duplicate, delete -------------------------------------------------

enum class ListResult {
  Done,
  Cancelled,    // the warning at 101 was answered Cancel
  Refused,      // the limit of 1001 buttons; the refusal was shown
  Failed,       // an error; its message was shown
  ProcessEnds,  // the default record was damaged: the process ends
};

// Add: the warning, the limit, a button made from the default record at
// its place with a free name; iCurBtn is the new button.
ListResult AddButton(Project& p, Env& env, NextPlacement& next, PlacementGaps gaps);
// Duplicate of iCurBtn, moved a little, with a free name. With no current
// button nothing happens (Cancelled).
ListResult DuplicateButton(Project& p, Env& env);
// Deletes iCurBtn: the records above move down one. Afterwards iCurBtn is
// 1. False when there was nothing to delete.
bool RemoveCurrentButton(Project& p);

// The message of a failed add or duplicate (they share it).
std::string AddFailedText(const std::string& description);

// --- Names ----------------------------------------------------------------------

// The trimmed name for every selected button; the name written.
std::string SetButtonNames(Project& p, const std::vector<int>& selected, const std::string& text);

// --- The button clipboard and the default button ----------------------------

// Copy: the record of iCurBtn under "_buffer".
bool CopyButton(Project& p, Env& env);
// Paste, after the add made the new current button: the stored record over
// it. False when the record was damaged and the process must end.
bool PasteOverCurrent(Project& p, Env& env);
// Make default: "Nothing selected" with no current button; else the record
// of iCurBtn becomes the default one, and the user is told.
void MakeDefaultButtonFromCurrent(Project& p, Env& env);

// --- The Edit menu ------------------------------------------------------------------

struct EditMenuState {
  bool align = false;
  bool bringToFront = false;
  bool sendBack = false;
  bool cutCopyDuplicate = false;
  bool remove = false;
  std::string deleteCaption;
};
EditMenuState EditMenuStateOf(const Project& p, int selectedRows, const std::string& deleteWord);

}  // namespace kp
