// Feeds arbitrary bytes to the action program routines as a stored program
// (as a project file or the program clipboard may hold it) and checks what
// must hold whatever the text: the editor can split it, list it, read each
// command into its fields and write it back without breaking the format.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "actions/program.h"

namespace {

void Check(bool ok, const char* what, std::string_view detail) {
  if (ok) return;
  std::fprintf(stderr, "invariant broken: %s\n  [%.*s]\n", what, static_cast<int>(detail.size()),
               detail.data());
  std::abort();
}

bool Known(int code) { return code >= kp::kFirstActionCode && code <= kp::kLastActionCode; }

bool IsColourCode(int code) { return code == kp::kActSetColor || code == kp::kActBorderColor; }

int Blanks(std::string_view s) {
  int n = 0;
  for (char c : s) n += c == ' ';
  return n;
}

// Tokens after the code that each command writes.
int OperandCount(int code) {
  switch (code) {
    case kp::kActShow:
    case kp::kActHide:
    case kp::kActWait:
      return 1;
    case kp::kActMove:
      return 7;
    case kp::kActSetLabel:
    case kp::kActSetColor:
    case kp::kActBorderColor:
    case kp::kActBlink:
      return 3;
    case kp::kActCallJavaScript:
    case kp::kActSetState:
      return 2;
    default:
      return 0;
  }
}

// A command the editor wrote: right code, no ";" and no blank inside an
// operand, unless a colour field that is taken as it stands holds them.
void CheckBuilt(const std::string& built, const kp::ActionFields& f) {
  const int code = f.action + 1;
  if (!Known(code)) {
    Check(built.empty(), "unknown code builds nothing", built);
    return;
  }
  Check(kp::GetToken(built, 1) == std::to_string(code), "built command starts with its code",
        built);
  Check(kp::CommandCode(built) == code, "built command reads back its code", built);
  Check(kp::DisplayLine(built).has_value(), "built command has a display line", built);
  const bool rawColour = IsColourCode(code);
  const bool colourHasSemicolon = rawColour && f.label.find(';') != std::string::npos;
  const bool colourHasBlank = rawColour && f.label.find(' ') != std::string::npos;
  Check(colourHasSemicolon || built.find(';') == std::string::npos,
        "built command holds no semicolon", built);
  if (!colourHasBlank) {
    Check(Blanks(built) == OperandCount(code), "built command has its number of tokens", built);
  }
  if (code == kp::kActCallJavaScript) {
    Check(kp::HasJavaScriptCall(kp::JoinProgram({built})), "generator sees the JavaScript call",
          built);
  }
}

void CheckCommand(const std::string& cmd, const kp::ActionTexts& texts) {
  Check(cmd.find(';') == std::string::npos, "split command holds no semicolon", cmd);
  const int code = kp::CommandCode(cmd);
  const kp::ActionFields f = kp::ReadCommand(cmd);
  Check(f.action == code - 1, "read sets the action from the code", cmd);
  Check(f.known == Known(code), "read flags unknown codes", cmd);
  Check(kp::DisplayLine(cmd, texts).has_value() == f.known, "display line only for known codes",
        cmd);
  if (!f.known) {
    Check(f == kp::ActionFields{.action = code - 1, .known = false},
          "unknown code sets nothing but the action", cmd);
    Check(kp::BuildCommand(f).empty(), "unknown code builds nothing", cmd);
    return;
  }

  const std::string built = kp::BuildCommand(f);
  CheckBuilt(built, f);

  // Once written by the editor, a command reads back and rewrites to the
  // same text (a colour with a blank in it is the exception: it is not
  // escaped, so its read cuts at the blank).
  const kp::ActionFields again = kp::ReadCommand(built);
  Check(again.known && again.action == f.action, "rebuilt command reads back", built);
  if (!(IsColourCode(code) && again.label != f.label)) {
    Check(kp::BuildCommand(again) == built, "rewriting a written command is stable", built);
  }
  if (built.find(';') == std::string::npos) {
    const auto split = kp::SplitProgram(kp::JoinProgram({built}));
    Check(split.size() == 1 && split[0] == built, "written command survives join and split",
          built);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string program(reinterpret_cast<const char*>(data), size);
  const kp::ActionTexts texts;

  const std::vector<std::string> commands = kp::SplitProgram(program);
  const size_t last = program.rfind(';');
  const std::string kept = last == std::string::npos ? std::string() : program.substr(0, last + 1);
  Check(kp::JoinProgram(commands) == kept, "join gives the program up to its last semicolon",
        program);

  const std::vector<std::string> lines = kp::DisplayLines(program, texts);
  size_t known = 0;
  for (const auto& cmd : commands) {
    if (Known(kp::CommandCode(cmd))) ++known;
  }
  Check(lines.size() == known, "one display line per known command", program);

  for (const auto& cmd : commands) CheckCommand(cmd, texts);

  // The same bytes as typed field values, for every code: what the editor
  // writes from any typing keeps the format.
  for (int action = -1; action <= kp::kLastActionCode; ++action) {
    kp::ActionFields f;
    f.action = action;
    f.stateIndex = size > 0 ? data[0] % 5 - 1 : 0;
    f.button = f.x = f.y = f.width = f.height = f.frames = f.frameDelay = f.label =
        f.milliseconds = f.script = f.blinkCount = f.blinkDelay = program;
    CheckBuilt(kp::BuildCommand(f), f);
  }
  return 0;
}
