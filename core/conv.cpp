#include "core/conv.h"

#include <cctype>
#include <limits>

#include "core/env.h"
#include "core/messages.h"
#include "core/settings.h"

namespace kp {

namespace {

char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

bool SameText(std::string_view a, std::string_view b, bool ignoreCase) {
  if (a.size() != b.size()) return false;
  if (!ignoreCase) return a == b;
  for (size_t i = 0; i < a.size(); ++i)
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  return true;
}

// Optional sign, then one or more decimal digits, nothing else; the value
// must lie in [lo, hi]. Blanks are not skipped: a field with blanks is as
// broken as one with letters.
bool ParseDecimal(std::string_view text, std::int64_t lo, std::int64_t hi, std::int64_t& out) {
  size_t i = 0;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
    negative = text[i] == '-';
    ++i;
  }
  if (i == text.size()) return false;
  std::int64_t value = 0;
  for (; i < text.size(); ++i) {
    char c = text[i];
    if (c < '0' || c > '9') return false;
    value = value * 10 + (c - '0');
    // Stop well before int64 overflow; anything this large is out of range.
    if (value > (std::int64_t{1} << 40)) return false;
  }
  if (negative) value = -value;
  if (value < lo || value > hi) return false;
  out = value;
  return true;
}

std::string ReplaceExact(std::string text, std::string_view find, std::string_view repl) {
  return ReplaceAll(text, find, repl, false);
}

}  // namespace

// --- Numbers and values -------------------------------------------------

bool ParseInt16(std::string_view text, i16& out) {
  std::int64_t v = 0;
  if (!ParseDecimal(text, std::numeric_limits<i16>::min(), std::numeric_limits<i16>::max(), v))
    return false;
  out = static_cast<i16>(v);
  return true;
}

bool ParseInt32(std::string_view text, i32& out) {
  std::int64_t v = 0;
  if (!ParseDecimal(text, std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max(), v))
    return false;
  out = static_cast<i32>(v);
  return true;
}

i16 MakeCInt(std::string_view text, i16 def) {
  i16 v = def;
  return ParseInt16(text, v) ? v : def;
}

i32 MakeCLng(std::string_view text, i32 def) {
  i32 v = def;
  return ParseInt32(text, v) ? v : def;
}

i32 makeLONG(std::string_view text) { return MakeCLng(text, 0); }

i16 CurToInt(std::int64_t scaled) {
  constexpr std::int64_t kScale = 10000;
  std::int64_t whole = scaled / kScale;
  std::int64_t rest = scaled % kScale;  // same sign as scaled
  std::int64_t twice = rest * 2;
  if (twice > kScale || (twice == kScale && (whole % 2 != 0))) {
    ++whole;
  } else if (twice < -kScale || (twice == -kScale && (whole % 2 != 0))) {
    --whole;
  }
  if (whole < std::numeric_limits<i16>::min() || whole > std::numeric_limits<i16>::max()) return 0;
  return static_cast<i16>(whole);
}

std::string checkIn(std::string_view text, i16 min, i16 max, i16 def) {
  i16 v = MakeCInt(text, def);
  if (v < min) v = min;
  if (v > max) v = max;
  return std::to_string(v);
}

std::string ByteHex(std::string_view text) {
  if (text.size() == 2) return std::string(text);
  if (text.size() == 1) return "0" + std::string(text);
  return "00";
}

std::string Capitalize(std::string_view text) {
  std::string s(text);
  if (!s.empty()) s[0] = UpperAscii(s[0]);
  return s;
}

std::string StripZeros(std::string_view text, bool enable) {
  if (!enable) return std::string(text);
  size_t n = 0;
  while (n < text.size() && n < 5 && text[n] == '0') ++n;
  std::string s = Trim(text.substr(n));
  return s.empty() ? "0" : s;
}

// --- Escapes ----------------------------------------------------------------

std::string EscapeField(std::string_view text, bool alsoSpace) {
  std::string s(text);
  if (alsoSpace) s = ReplaceExact(s, " ", "&!0");
  s = ReplaceExact(s, "\"", "&!2");
  s = ReplaceExact(s, "|", "&!3");
  s = ReplaceExact(s, "^", "&!4");
  return s;
}

std::string EscapeNameField(std::string_view text) {
  return ReplaceExact(EscapeField(text, true), ";", "&!1");
}

std::string UnescapeField(std::string_view text) {
  // Most fields hold no escape at all; the readers call this for every one.
  if (text.find('&') == std::string_view::npos) return std::string(text);
  std::string s(text);
  s = ReplaceExact(s, "&nbsp", " ");
  s = ReplaceExact(s, "&!0", " ");
  s = ReplaceExact(s, "&!1", ";");
  s = ReplaceExact(s, "&!2", "\"");
  s = ReplaceExact(s, "&!3", "|");
  s = ReplaceExact(s, "&!4", "^");
  return s;
}

std::string CleanForList(std::string_view text) {
  std::string s(text);
  for (char& c : s) {
    if (c == '"' || c == '|')
      c = '_';
    else if (c == '\\')
      c = '/';
  }
  return s;
}

// --- Text helpers -------------------------------------------------------------

std::string ReplaceAll(std::string_view text, std::string_view find, std::string_view repl,
                       bool ignoreCase) {
  if (text.empty() || find.empty()) return std::string(text);
  std::string out;
  if (!ignoreCase) {
    size_t pos = text.find(find);
    if (pos == std::string_view::npos) return std::string(text);
    out.reserve(text.size());
    size_t from = 0;
    for (; pos != std::string_view::npos; pos = text.find(find, from)) {
      out.append(text.substr(from, pos - from));
      out.append(repl);
      from = pos + find.size();
    }
    out.append(text.substr(from));
    return out;
  }
  out.reserve(text.size());
  size_t i = 0;
  while (i < text.size()) {
    if (i + find.size() <= text.size() && SameText(text.substr(i, find.size()), find, ignoreCase)) {
      out.append(repl);
      i += find.size();
    } else {
      out.push_back(text[i]);
      ++i;
    }
  }
  return out;
}

bool StartsWith(std::string_view text, std::string_view prefix, bool ignoreCase) {
  return text.size() >= prefix.size() &&
         SameText(text.substr(0, prefix.size()), prefix, ignoreCase);
}

bool EndsWith(std::string_view text, std::string_view suffix, bool ignoreCase) {
  return text.size() >= suffix.size() &&
         SameText(text.substr(text.size() - suffix.size()), suffix, ignoreCase);
}

std::string GetField(std::string_view text, std::string_view delimiter, int index) {
  if (index < 1) return "";
  if (delimiter.empty()) return index == 1 ? std::string(text) : "";
  size_t start = 0;
  for (int n = 1;; ++n) {
    size_t pos = text.find(delimiter, start);
    if (n == index)
      return std::string(text.substr(start, pos == std::string_view::npos ? pos : pos - start));
    if (pos == std::string_view::npos) return "";
    start = pos + delimiter.size();
  }
}

int CountOf(std::string_view text, std::string_view needle) {
  if (needle.empty() || needle.size() > text.size()) return 0;
  int n = 0;
  for (size_t i = 0; i + needle.size() <= text.size(); ++i)
    if (text.compare(i, needle.size(), needle) == 0) ++n;
  return n;
}

std::string Trim(std::string_view text) {
  size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t')) --e;
  return std::string(text.substr(b, e - b));
}

std::string LCase(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = LowerAscii(c);
  return s;
}

std::string UCase(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = UpperAscii(c);
  return s;
}

std::string CleanName(std::string_view text, bool keepDots) {
  std::string s(text);
  if (!keepDots && !s.empty() && s[0] >= '0' && s[0] <= '9') s.insert(s.begin(), '_');
  static constexpr std::string_view kUnsafe = " '\"/\\|.;:?`@~&!#$%^*()+-={}[]<>";
  static constexpr std::string_view kKeptWithDots = ".~!^";
  for (char& c : s) {
    if (kUnsafe.find(c) == std::string_view::npos) continue;
    if (keepDots && kKeptWithDots.find(c) != std::string_view::npos) continue;
    c = '_';
  }
  return s;
}

// --- Paths ----------------------------------------------------------------------

bool IsAbsolutePath(std::string_view path) {
  if (!path.empty() && path[0] == '/') return true;
  return path.size() >= 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
         IsSep(path[2]);
}

std::string GetFolder(std::string_view path) {
  for (size_t i = path.size(); i > 0; --i)
    if (IsSep(path[i - 1])) return std::string(path.substr(0, i));
  return "";
}

std::string FileNameOnly(std::string_view path) {
  for (size_t i = path.size(); i > 0; --i)
    if (IsSep(path[i - 1])) return std::string(path.substr(i));
  return std::string(path);
}

std::string FileNameOf(std::string_view path, bool withoutExtension) {
  std::string name = FileNameOnly(path);
  if (withoutExtension) {
    size_t dot = name.rfind('.');
    if (dot != std::string::npos) name.erase(dot);
    name = Trim(name);
  }
  return EscapeField(name, false);
}

std::string EndBackslash(std::string_view path) {
  if (path.empty()) return "";
  if (IsSep(path.back())) return std::string(path);
  return std::string(path) + kSep;
}

std::string EndSlash(std::string_view path) {
  if (path.empty()) return "";
  if (path.back() == '/') return std::string(path);
  return std::string(path) + '/';
}

std::string MakeRelative(std::string_view base, std::string_view relative) {
  std::string rel = ReplaceExact(std::string(relative), "\\", "/");
  std::string b = ReplaceExact(std::string(base), "\\", "/");
  int ups = CountOf(rel, "../");
  for (int n = 0; n < ups && StartsWith(rel, "../"); ++n) rel.erase(0, 3);
  for (int n = 0; n < ups; ++n) {
    // One trailing folder off the base, keeping its separator.
    while (!b.empty() && b.back() == '/') b.pop_back();
    size_t cut = b.rfind('/');
    b = (cut == std::string::npos) ? "" : b.substr(0, cut + 1);
  }
  if (!rel.empty() && rel[0] == '/') rel.erase(0, 1);
  std::string out = EndBackslash(b);
  if (!rel.empty()) out += EndBackslash(rel);
  return out;
}

bool IsFileExist(Env& env, const std::string& path) {
  if (path.empty()) return false;
  return env.fs.FileExists(path);
}

void MyMkDir(Env& env, const std::string& path) {
  if (!path.empty()) (void)env.fs.MakeDir(path);
}

void myChDir(Env& env, const std::string& path) {
  // A drive letter means nothing here; the folder change covers it.
  if (!path.empty()) (void)env.fs.ChangeDir(path);
}

void MakeLongDir(Env& env, const std::string& path) {
  std::string p = ReplaceExact(path, "\\", "/");
  for (size_t i = 0; i <= p.size(); ++i) {
    if (i < p.size() && p[i] != '/') continue;
    std::string folder = p.substr(0, i);
    if (folder.empty()) continue;                          // the root
    if (folder.size() == 2 && folder[1] == ':') continue;  // a drive
    if (!env.fs.DirExists(folder)) (void)env.fs.MakeDir(folder);
  }
}

void PrepareDir(Env& env, const std::string& path) {
  MakeLongDir(env, path);
  myChDir(env, path);
}

// --- File-name warnings ------------------------------------------------------------

namespace {
// A warning about a name, with its "Warn next time" box.
void WarnName(Env& env, const char* message, const char* settingKey) {
  MyMsgBox(env, SharedText("sStrangeTitle"), SharedText(message), SharedText("sWarnNextTime"),
           settingKey);
}

void WarnSpaceInFileName(Env& env) { WarnName(env, "sSpaceInFileName", "Warn_Space_in_FileName"); }

void WarnBackslashInFileName(Env& env) {
  WarnName(env, "sBackslashInFileName", "Warn_BackSlash_in_FileName");
}

}  // namespace

void CheckFileName(Env& env, const std::string& path) {
  if (FileNameOnly(path).find(' ') != std::string::npos) WarnSpaceInFileName(env);
  if (path.find('\\') != std::string::npos) WarnBackslashInFileName(env);
}

void CheckLinkName(Env& env, const std::string& text) {
  if (text.find(' ') != std::string::npos) WarnSpaceInFileName(env);
  if (text.find('\\') != std::string::npos) WarnBackslashInFileName(env);
}

void CheckTargetName(Env& env, const std::string& text) {
  if (text.find(' ') != std::string::npos) WarnName(env, "sSpaceInTarget", "Warn_Space_in_TargetName");
  if (text.find('.') != std::string::npos) WarnName(env, "sDotInTarget", "Warn_Dot_in_TargetName");
}

}  // namespace kp
