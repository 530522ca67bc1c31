// Action programs as text: the small programs the applet runs on mouse and
// check events. The designer never runs them; it splits, shows, edits and
// joins them, and hands them to the page unchanged. The exact text is the
// contract with the applet, so every routine here is careful to the
// character.
//
// A program is "C1;C2;...;Cn;" (the empty program is ""). A command is
// blank-joined tokens, the numeric code first; operands holding user text
// are escaped so that no token holds a blank and no command holds a ";".
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/model.h"

namespace kp {

// --- Events that own a program --------------------------------------------

enum class ProgramOwner { Button, Applet };

struct ProgramEvent {
  const char* key;      // also the editor's strReturnTo
  ProgramOwner owner;
  const char* offered;  // the event as the user sees it offered
  // Exactly one of these is set, by owner.
  std::string tButton::* buttonField;
  std::string Project::* appletField;
};

inline constexpr std::array<ProgramEvent, 10> kProgramEvents{{
    {"ProgramUP", ProgramOwner::Button, " On Mouse Up", &tButton::ProgramUP, nullptr},
    {"ProgramOVER", ProgramOwner::Button, " On Entering Button", &tButton::ProgramOVER, nullptr},
    {"ProgramLEAVE", ProgramOwner::Button, " On Leaving Button", &tButton::ProgramLEAVE, nullptr},
    {"ProgramDOWN", ProgramOwner::Button, " On Mouse Down", &tButton::ProgramDOWN, nullptr},
    {"ProgramCHECK", ProgramOwner::Button, " On Check", &tButton::ProgramCHECK, nullptr},
    {"ProgramUNCHECK", ProgramOwner::Button, " On Uncheck", &tButton::ProgramUNCHECK, nullptr},
    {"AppletProgramStart", ProgramOwner::Applet, "On Applet Start", nullptr,
     &Project::AppletProgramStart},
    {"AppletProgramOVER", ProgramOwner::Applet, "On Mouse Moving above the Applet", nullptr,
     &Project::AppletProgramOVER},
    {"AppletProgramDOWN", ProgramOwner::Applet, "On Mouse Clicking the Applet", nullptr,
     &Project::AppletProgramDOWN},
    {"AppletProgramOUT", ProgramOwner::Applet, "On Mouse Exiting the Applet", nullptr,
     &Project::AppletProgramOUT},
}};

// The event of that key (case-sensitive), or nullptr for an unknown key.
const ProgramEvent* FindProgramEvent(std::string_view key);

// The program text the key names: a field of `button` for the button keys,
// of the applet record for the applet keys; nullptr for an unknown key.
std::string* ProgramField(std::string_view key, Project& project, tButton& button);

// --- Program and command text ---------------------------------------------

// Each command is what stands before a ";". Text behind the last ";" is
// dropped: a program that lost its final ";" loses its last command.
std::vector<std::string> SplitProgram(std::string_view text);
// Each command followed by ";".
std::string JoinProgram(const std::vector<std::string>& commands);

// Token n (from 1) of s, tokens separated by single blanks: two blanks in a
// row hold an empty token. A token that does not exist is "".
std::string GetToken(std::string_view s, int n);

// The generator's test for JavaScript calls: the two characters "7 "
// anywhere. Crude on purpose (a Move to x 7 counts too).
bool HasJavaScriptCall(std::string_view program);

// --- Commands and the editor's fields ---------------------------------------

inline constexpr int kFirstActionCode = 1;
inline constexpr int kLastActionCode = 10;

enum ActionCode : int {
  kActShow = 1,
  kActHide = 2,
  kActMove = 3,
  kActSetLabel = 4,
  kActSetColor = 5,
  kActWait = 6,
  kActCallJavaScript = 7,
  kActSetState = 8,
  kActBorderColor = 9,
  kActBlink = 10,
};

// The values of the editor's fields, as typed.
struct ActionFields {
  int action = 0;          // cmbAction index, from 0 (code - 1)
  std::string button;      // cmbButtonNumber text
  int stateIndex = 0;      // cmbStateSelector index, from 0 (state - 1)
  std::string x, y, width, height;  // txtX, txtY, txtWidth, txtHeight
  std::string frames;      // txtFrames
  std::string frameDelay;  // txtFrameDelay
  std::string label;       // txtLabel: the label, or the colour for codes 5 and 9
  std::string milliseconds;  // lsMiliseconds text
  std::string script;      // txtJavaScript
  std::string blinkCount;  // txtBlinkCount
  std::string blinkDelay;  // cmbBlinkDelay text
  // False when a read command's code is outside 1..10: then only `action`
  // was set, and the editor's selection of it fails.
  bool known = true;

  bool operator==(const ActionFields&) const = default;
};

// The command the fields describe, without its trailing ";". The colour of
// codes 5 and 9 is taken as it stands (the editor checks its length).
// A code outside 1..10 gives "".
std::string BuildCommand(const ActionFields& fields);

// Reading a command back into the editor: sets `action` and `known`, and
// for a known code the fields that code uses; the other fields keep what
// they hold, as the editor's controls do.
void ReadCommandInto(std::string_view command, ActionFields& fields);
// The same on fresh fields.
ActionFields ReadCommand(std::string_view command);

// The code of a command (token 1) as a number; 0 when it is no number.
int CommandCode(std::string_view command);

// --- Display lines ------------------------------------------------------------

// The translatable texts a display line is made of.
struct ActionTexts {
  std::array<std::string, 10> actions{"Show",     "Hide",       "Move",
                                      "Set Label", "Set Color", "Wait",
                                      "Call JavaScript", "Set State", "Border Color",
                                      "Blink"};
  // Captions of the three state tabs, in state order.
  std::array<std::string, 3> states{"Up State", "Mouse-Over", "Down State"};
  std::string lblWidth = "width:";
  std::string lblHeight = "height:";
};

// The line the editor lists for a command; nullopt for a code outside 1..10.
std::optional<std::string> DisplayLine(std::string_view command,
                                       const ActionTexts& texts = ActionTexts{});
// Display lines of a program's commands, those of unknown code left out.
std::vector<std::string> DisplayLines(std::string_view program,
                                      const ActionTexts& texts = ActionTexts{});

// --- Operand conversions ------------------------------------------------------

// Move's x, y, width, height: the trimmed text when it is a 16-bit whole
// number, optionally followed by one "+" or "-"; otherwise "-999".
std::string MoveOperand(std::string_view typed);
// Move's frames and frame delay: the absolute 16-bit value; 0 for an empty
// field or a failed conversion.
std::string MoveCountOperand(std::string_view typed);
// Wait's and Blink's numbers: the absolute value of the decimal number
// typed, written back the shortest way ("1.5" stays "1.5"); `def` when the
// text is no number.
std::string AbsNumberOperand(std::string_view typed, std::string_view def);

}  // namespace kp
