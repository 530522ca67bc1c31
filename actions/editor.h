// The action editor's decisions, without its window: the two parallel lists
// (command texts and their display lines), what Add, Replace, Remove, Up,
// Down and Paste do to them, which parts of the form a command shows, and
// where OK stores the program. The command texts and display lines
// themselves come from program.h; nothing here knows a command's layout.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/program.h"
#include "core/model.h"

namespace kp {

// Which parts of the form show for the command at cmbAction index i.
struct ActionPanels {
  bool move = false;          // picActionMove
  bool setLabel = false;      // picSetLabel
  bool hexColor = false;      // btnGetHexColor (and txtLabel is emptied)
  bool buttonNumber = false;  // cmbButtonNumber
  bool timer = false;         // picSetTimer
  bool javaScript = false;    // txtJavaScript
  bool label = false;         // txtLabel
  bool blink = false;         // picBlink
  bool operator==(const ActionPanels&) const = default;
};
ActionPanels PanelsFor(int actionIndex);

// What Add and Replace make of the fields before they touch a list.
enum class AddVerdict {
  Ready,      // `command` holds the text to add or put in place
  NoButtons,  // the command needs a button and the applet has none
  Nothing,    // the fields do not make a command; no message
};
struct AddResult {
  AddVerdict verdict = AddVerdict::Nothing;
  std::string command;
  // Set Label with an empty label: the form shows the one blank written.
  bool labelBlanked = false;
};
// Checks and builds in the editor's order; `fields.label` takes the blank
// that an empty Set Label gets, as the form's field does.
AddResult PrepareCommand(ActionFields& fields, bool haveButtons);

// The program being edited: the command texts (lstActionsCode) and the
// display lines built from them (lstActions). A row number is a row of the
// display list; it names the same row of the command list, which holds
// only while no stored command has an unknown code.
class ProgramEditor {
 public:
  void Load(std::string_view program);
  const std::vector<std::string>& Commands() const { return commands_; }
  std::string Program() const { return JoinProgram(commands_); }
  std::vector<std::string> Lines(const ActionTexts& texts) const;

  void Add(std::string command);
  // False when no command stands at that row.
  bool Replace(int row, std::string command);
  // The row to select afterwards: the same row, or -1 past the end.
  int Remove(int row, const ActionTexts& texts);
  // The row that the moved command stands on, or -1 when nothing moved.
  int Up(int row);
  int Down(int row);
  // Appends the commands of a copied program.
  void Paste(std::string_view program);

 private:
  std::vector<std::string> commands_;
};

// The program a key names, as the editor loads it: the current button's
// for a button key, the applet's for an applet key, nullopt for another key.
std::optional<std::string> ProgramToEdit(std::string_view key, Project& p);

// OK: the program into every selected button for a button key, into the
// applet record for an applet key. False (and nothing written) for another
// key. Marks the project unsaved when it wrote.
bool StoreProgram(std::string_view key, const std::string& program, Project& p,
                  const std::vector<int>& selectedButtons);

}  // namespace kp
