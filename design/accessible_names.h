// Names for a screen reader. A field takes the text of the label beside it
// (as the label's buddy, so a translated caption is read as translated); a
// control with neither caption nor label takes its tool tip; a scroll bar
// beside a field takes the field's name.
#pragma once

class QWidget;

namespace kp {

// Binds the labels of one window to their fields and names what is left.
// Safe to run again: it only fills what has no name yet, and renews the
// names it gave from tool tips and fields.
void NameControls(QWidget* window);

// Runs NameControls on every window of the program as it is shown.
void NameControlsOfEveryWindow();

}  // namespace kp
