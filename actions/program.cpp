#include "actions/program.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "core/conv.h"

namespace kp {

namespace {

constexpr std::string_view kKeepAsIs = "-999";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A decimal number as a user types it: optional sign, digits with an
// optional point, optional exponent. Hexadecimal, "inf" and "nan" are
// deliberately not numbers here.
bool IsDecimalNumber(std::string_view t) {
  size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
  bool digits = false;
  while (i < t.size() && IsDigit(t[i])) ++i, digits = true;
  if (i < t.size() && t[i] == '.') {
    ++i;
    while (i < t.size() && IsDigit(t[i])) ++i, digits = true;
  }
  if (!digits) return false;
  if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
    ++i;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
    bool expDigits = false;
    while (i < t.size() && IsDigit(t[i])) ++i, expDigits = true;
    if (!expDigits) return false;
  }
  return i == t.size();
}

// The double written back the shortest way that reads back the same value.
// Plain notation over the range a user types; the applet reads these as
// plain numbers, so "1e+05" for 100000 would not do.
std::string ShortestText(double v) {
  char buf[512];
  const double a = std::fabs(v);
  const bool plain = a == 0.0 || (a >= 1e-5 && a < 1e15);
  auto res = plain ? std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed)
                   : std::to_chars(buf, buf + sizeof buf, v);
  if (res.ec != std::errc{}) return "0";
  return std::string(buf, res.ptr);
}

std::string StateText(int stateIndex) { return std::to_string(stateIndex + 1); }

std::string StateName(std::string_view token, const ActionTexts& texts) {
  const int state = MakeCInt(token, 0);
  if (state < 1 || state > 3) return "";
  return texts.states[static_cast<size_t>(state - 1)];
}

std::string MoveShown(const std::string& token) {
  return token == kKeepAsIs ? std::string("  ") : token;
}

std::string MoveRead(const std::string& token) {
  return token == kKeepAsIs ? std::string() : token;
}

}  // namespace

// --- Events ---------------------------------------------------------------

const ProgramEvent* FindProgramEvent(std::string_view key) {
  for (const auto& e : kProgramEvents) {
    if (key == e.key) return &e;
  }
  return nullptr;
}

std::string* ProgramField(std::string_view key, Project& project, tButton& button) {
  const ProgramEvent* e = FindProgramEvent(key);
  if (!e) return nullptr;
  if (e->owner == ProgramOwner::Button) return &(button.*(e->buttonField));
  return &(project.*(e->appletField));
}

// --- Program and command text -----------------------------------------------

std::vector<std::string> SplitProgram(std::string_view text) {
  std::vector<std::string> commands;
  std::string current;
  for (char c : text) {
    if (c == ';') {
      commands.push_back(std::move(current));
      current.clear();
    } else {
      current.push_back(c);
    }
  }
  return commands;
}

std::string JoinProgram(const std::vector<std::string>& commands) {
  std::string out;
  for (const auto& c : commands) {
    out += c;
    out += ';';
  }
  return out;
}

std::string GetToken(std::string_view s, int n) {
  std::string token;
  int count = 1;
  for (size_t i = 0; i <= s.size(); ++i) {
    if (i < s.size() && s[i] != ' ') {
      token.push_back(s[i]);
      continue;
    }
    if (count == n) return token;
    token.clear();
    ++count;
  }
  return "";
}

bool HasJavaScriptCall(std::string_view program) {
  return program.find("7 ") != std::string_view::npos;
}

// --- Operand conversions ------------------------------------------------------

std::string MoveOperand(std::string_view typed) {
  std::string t = Trim(typed);
  std::string_view number = t;
  if (!number.empty() && (number.back() == '+' || number.back() == '-')) {
    number.remove_suffix(1);
  }
  i16 value = 0;
  if (number.empty() || !ParseInt16(number, value)) return std::string(kKeepAsIs);
  return t;
}

std::string MoveCountOperand(std::string_view typed) {
  if (typed.empty()) return "0";
  const int value = MakeCInt(Trim(typed), 0);
  return std::to_string(std::abs(value));
}

std::string AbsNumberOperand(std::string_view typed, std::string_view def) {
  const std::string t = Trim(typed);
  if (!IsDecimalNumber(t)) return std::string(def);
  // from_chars takes no "+"; the sign does not matter after fabs anyway.
  std::string_view digits = t;
  if (digits.front() == '+' || digits.front() == '-') digits.remove_prefix(1);
  double value = 0;
  auto res = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                             std::chars_format::general);
  if (res.ec != std::errc{} || res.ptr != digits.data() + digits.size()) {
    return std::string(def);
  }
  return ShortestText(std::fabs(value));
}

// --- Commands -----------------------------------------------------------------

std::string BuildCommand(const ActionFields& f) {
  const int code = f.action + 1;
  const std::string c = std::to_string(code) + " ";
  switch (code) {
    case kActShow:
    case kActHide:
      return c + EscapeNameField(f.button);
    case kActMove:
      return c + EscapeNameField(f.button) + " " + EscapeNameField(MoveOperand(f.x)) + " " +
             EscapeNameField(MoveOperand(f.y)) + " " + EscapeNameField(MoveOperand(f.width)) +
             " " + EscapeNameField(MoveOperand(f.height)) + " " +
             EscapeNameField(MoveCountOperand(f.frames)) + " " +
             EscapeNameField(MoveCountOperand(f.frameDelay));
    case kActSetLabel:
      return c + EscapeNameField(f.button) + " " + StateText(f.stateIndex) + " " +
             EscapeNameField(f.label.empty() ? std::string(" ") : f.label);
    case kActSetColor:
    case kActBorderColor:
      return c + EscapeNameField(f.button) + " " + StateText(f.stateIndex) + " " + f.label;
    case kActWait:
      return c + AbsNumberOperand(f.milliseconds, "100");
    case kActCallJavaScript:
      return c + "0 " + EscapeNameField(f.script);
    case kActSetState:
      return c + EscapeNameField(f.button) + " " + StateText(f.stateIndex);
    case kActBlink:
      return c + EscapeNameField(f.button) + " " + AbsNumberOperand(f.blinkCount, "5") + " " +
             AbsNumberOperand(f.blinkDelay, "100");
    default:
      return "";
  }
}

int CommandCode(std::string_view command) { return MakeCInt(GetToken(command, 1), 0); }

void ReadCommandInto(std::string_view cmd, ActionFields& f) {
  const int code = CommandCode(cmd);
  f.action = code - 1;
  f.known = code >= kFirstActionCode && code <= kLastActionCode;
  if (!f.known) return;
  switch (code) {
    case kActShow:
    case kActHide:
      f.button = UnescapeField(GetToken(cmd, 2));
      break;
    case kActMove:
      f.button = UnescapeField(GetToken(cmd, 2));
      f.x = MoveRead(GetToken(cmd, 3));
      f.y = MoveRead(GetToken(cmd, 4));
      f.width = MoveRead(GetToken(cmd, 5));
      f.height = MoveRead(GetToken(cmd, 6));
      f.frames = GetToken(cmd, 7);
      f.frameDelay = GetToken(cmd, 8);
      break;
    case kActSetLabel:
    case kActSetColor:
    case kActBorderColor:
      f.button = UnescapeField(GetToken(cmd, 2));
      f.stateIndex = MakeCInt(GetToken(cmd, 3), 0) - 1;
      f.label = UnescapeField(GetToken(cmd, 4));
      break;
    case kActWait:
      f.milliseconds = GetToken(cmd, 2);
      break;
    case kActCallJavaScript:
      f.script = UnescapeField(GetToken(cmd, 3));
      break;
    case kActSetState:
      f.button = UnescapeField(GetToken(cmd, 2));
      f.stateIndex = MakeCInt(GetToken(cmd, 3), 0) - 1;
      break;
    case kActBlink:
      f.button = UnescapeField(GetToken(cmd, 2));
      f.blinkCount = GetToken(cmd, 3);
      f.blinkDelay = GetToken(cmd, 4);
      break;
    default:
      break;
  }
}

ActionFields ReadCommand(std::string_view command) {
  ActionFields f;
  ReadCommandInto(command, f);
  return f;
}

// --- Display lines ------------------------------------------------------------

std::optional<std::string> DisplayLine(std::string_view cmd, const ActionTexts& texts) {
  const int code = CommandCode(cmd);
  if (code < kFirstActionCode || code > kLastActionCode) return std::nullopt;
  const std::string head = texts.actions[static_cast<size_t>(code - 1)] + ": ";
  const std::string b = UnescapeField(GetToken(cmd, 2));
  switch (code) {
    case kActShow:
    case kActHide:
      return head + b;
    case kActMove:
      return head + b + "  ->  x:" + MoveShown(GetToken(cmd, 3)) + " y:" +
             MoveShown(GetToken(cmd, 4)) + " " + texts.lblWidth + MoveShown(GetToken(cmd, 5)) +
             " " + texts.lblHeight + MoveShown(GetToken(cmd, 6)) + " f:" + GetToken(cmd, 7) +
             " d:" + GetToken(cmd, 8);
    case kActSetLabel:
      return head + b + " [" + StateName(GetToken(cmd, 3), texts) + "]  ->  \"" +
             UnescapeField(GetToken(cmd, 4)) + "\"";
    case kActSetColor:
    case kActBorderColor:
      return head + b + " [" + StateName(GetToken(cmd, 3), texts) + "]  ->  " + GetToken(cmd, 4);
    case kActWait:
      return head + GetToken(cmd, 2) + " ms";
    case kActCallJavaScript:
      return head + UnescapeField(GetToken(cmd, 3));
    case kActSetState:
      return head + b + "  ->  [" + StateName(GetToken(cmd, 3), texts) + "]";
    case kActBlink:
      return head + b + "  ->  times:" + GetToken(cmd, 3) + " delay:" + GetToken(cmd, 4) + "ms";
    default:
      return std::nullopt;
  }
}

std::vector<std::string> DisplayLines(std::string_view program, const ActionTexts& texts) {
  std::vector<std::string> lines;
  for (const auto& cmd : SplitProgram(program)) {
    if (auto line = DisplayLine(cmd, texts)) lines.push_back(std::move(*line));
  }
  return lines;
}

}  // namespace kp
