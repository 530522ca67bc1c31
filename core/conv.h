// Small shared routines: tolerant number parsing, the escapes of the file
// formats, path handling and the file-name warnings. None of them throws or
// shows a message unless stated; they fall back to the given default.
//
// Paths: this platform's folder separator is "/"; when a file name is taken
// off a path, both "/" and "\" separate folders, since projects also come
// from Windows machines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/model.h"

namespace kp {

struct Env;

// --- Numbers and values -------------------------------------------------

// An optional sign and decimal digits, in range; anything else (blanks,
// empty text, fractions, overflow) is a failure and gives the default.
i16 MakeCInt(std::string_view text, i16 def);
i32 MakeCLng(std::string_view text, i32 def);
// Strict parse for readers that have no fall-back: false on failure.
bool ParseInt16(std::string_view text, i16& out);
bool ParseInt32(std::string_view text, i32& out);
i32 makeLONG(std::string_view text);  // 0 on failure
// A currency value (fixed point, scaled by 10000) to a 16-bit integer,
// rounding half to even; 0 when out of range.
i16 CurToInt(std::int64_t scaled);
// MakeCInt(text, def) held to [min, max], as text.
std::string checkIn(std::string_view text, i16 min, i16 max, i16 def);
inline std::string BoolToText(bool b) { return b ? "1" : "0"; }
inline int BoolToInt(bool b) { return b ? 1 : 0; }
// False only for exactly "0".
inline bool TextToBool(std::string_view t) { return t != "0"; }
// Length 2: as is; length 1: "0" in front; any other length: "00".
std::string ByteHex(std::string_view text);
// First character upper case, the rest unchanged (ASCII).
std::string Capitalize(std::string_view text);
// With the flag, blanks up to five leading "0" characters and trims;
// an empty result gives "0". Without the flag the text is returned as is.
std::string StripZeros(std::string_view text, bool enable);

// --- Escapes of the file formats ----------------------------------------

// With alsoSpace: " " -> "&!0". Always, in this order: '"' -> "&!2",
// "|" -> "&!3", "^" -> "&!4". "&" itself is never escaped.
std::string EscapeField(std::string_view text, bool alsoSpace = false);
// EscapeField(text, true), then ";" -> "&!1".
std::string EscapeNameField(std::string_view text);
// In this order: "&nbsp" -> " ", "&!0" -> " ", "&!1" -> ";", "&!2" -> '"',
// "&!3" -> "|", "&!4" -> "^".
std::string UnescapeField(std::string_view text);
// '"' -> "_", "|" -> "_", "\" -> "/".
std::string CleanForList(std::string_view text);

// --- Text helpers ---------------------------------------------------------

// Every occurrence, scanning left to right; an empty text or empty `find`
// gives the text back unchanged. ignoreCase compares ASCII letters only.
std::string ReplaceAll(std::string_view text, std::string_view find, std::string_view repl,
                       bool ignoreCase = false);
bool StartsWith(std::string_view text, std::string_view prefix, bool ignoreCase = false);
bool EndsWith(std::string_view text, std::string_view suffix, bool ignoreCase = false);
// Field `index` (from 1) of text split at delimiter; "" beyond the last.
std::string GetField(std::string_view text, std::string_view delimiter, int index);
// Occurrences of needle counted at every position (overlaps count).
int CountOf(std::string_view text, std::string_view needle);
std::string Trim(std::string_view text);  // blanks and tabs at both ends
std::string LCase(std::string_view text);  // ASCII
std::string UCase(std::string_view text);  // ASCII

// Project-name cleaner: a leading digit gets "_" in front (unless keepDots),
// then each character of the unsafe set becomes "_"; with keepDots the dot,
// tilde, exclamation mark and caret stay.
std::string CleanName(std::string_view text, bool keepDots = false);

// --- Paths ----------------------------------------------------------------

inline constexpr char kSep = '/';
inline bool IsSep(char c) { return c == '/' || c == '\\'; }
// Starts with "/", or has a drive ("C:\" or "C:/").
bool IsAbsolutePath(std::string_view path);
// Up to and including the last separator; "" when there is none.
std::string GetFolder(std::string_view path);
// The file name without folder (both separators count).
std::string FileNameOnly(std::string_view path);
// FileNameOnly, without the extension (text before the last ".") and
// trimmed when withoutExtension; then EscapeField without the space flag.
std::string FileNameOf(std::string_view path, bool withoutExtension = false);
// With one separator at the end ("/" here); "" stays "".
std::string EndBackslash(std::string_view path);
// With one "/" at the end; "" stays "".
std::string EndSlash(std::string_view path);
// Turns "/" of relative into "\" and counts its "..\"; cuts that many off
// its front and that many trailing folders off base; drops one leading "\";
// gives base + "\" + relative + "\" (an empty relative adds nothing).
// On this platform the result uses "/" throughout.
std::string MakeRelative(std::string_view base, std::string_view relative);

bool IsFileExist(Env& env, const std::string& path);
void MyMkDir(Env& env, const std::string& path);
void myChDir(Env& env, const std::string& path);
// Creates every missing folder along the path, from the left.
void MakeLongDir(Env& env, const std::string& path);
void PrepareDir(Env& env, const std::string& path);

// --- File-name warnings ---------------------------------------------------

// Warns (a notice with "Warn next time") about a blank in a file name and
// about "\" in a link text; each warning can be switched off by its setting.
void CheckFileName(Env& env, const std::string& path);
// The same two warnings for a link text, tested whole: a blank anywhere in
// it, and "\".
void CheckLinkName(Env& env, const std::string& text);
// Warns about a blank or a "." in a frame target name.
void CheckTargetName(Env& env, const std::string& text);

}  // namespace kp
