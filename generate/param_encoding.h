// The applet's parameter values: the `p` parameter for the applet as a whole
// and one numbered parameter per button. The applet reads its fields by
// position, so the order, the number and the text form of every field are
// a fixed contract: a field is never dropped, only left empty or "0".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/env.h"
#include "core/model.h"

namespace kp {

// Asks whether a file or a folder exists at a path. A project often uses one
// picture on many buttons, so each path is asked of the file system once per
// generation. Any failure counts as absent, as does an empty path.
class FileProbe {
 public:
  explicit FileProbe(FileSystem& fs) : fs_(fs) {}
  bool Exists(const std::string& path);

 private:
  FileSystem& fs_;
  std::unordered_map<std::string, bool> known_;
};

// The parameter line under construction and the field before the current
// one (the HTML window's sParamLine and sLastField).
struct ParamBuilder {
  std::string sParamLine;
  std::string sLastField;

  // The value and "|": the `p` parameter has no repeat marks.
  void AddHeaderField(std::string_view value);
  void AddHeaderField(long long value);
  // "^" instead of the value when it equals the field just before (an empty
  // value never does), then "|".
  void AddButtonField(std::string_view value);
  void AddButtonField(long long value);

  // Starts `<Param Name="name" value="` with an empty field chain.
  void Begin(std::string_view name);
  // Closes the value: `">`.
  void End();
};

// Hexadecimal colour text, red first, leading zeros dropped ("0" for black).
// A value below 16 goes out as black; a negative value is read as its 32-bit
// pattern, so -1 gives "FFFFFF".
std::string ColorText(Colour colour);
// Points to pixels at 1.33 a point, rounded half to even; 0 on overflow.
i16 PixelSize(i16 points);
// "arial" 0, "courier" 1, "times" 2, "dialog" 3, anything else 0; whole
// names only, any case.
int FontIndex(std::string_view name);
// The picture's placement when a file or folder exists at Image(state),
// else 9, which tells the applet to leave the picture out.
int ImageStyleField(const tButton& b, int state, FileProbe& probe);
// Empty when there is no link or the target is "_self"; else the escaped
// target.
std::string TargetField(const tButton& b);
// Empty when the name is the automatic "Button n" of this very button;
// else the name with blanks and ";" escaped too.
std::string NameField(const tButton& b, int index);

// Field 14 of `p` and field 5 of a button.
int AppletFlags(const Project& p);
std::int32_t ButtonFlags(const tButton& b);

// "^|" repeated n times (35 >= n >= 2, longest first) becomes "^" and the
// base-36 digit of n. One left-to-right pass gives what the longest-first
// whole-text replacements give.
std::string PackRepeats(std::string_view line);
// n bars (36 >= n >= 4, longest first) become "||^" and the base-36 digit of
// n - 2. One pass, as above.
std::string PackBlanks(std::string_view line);
// The same two passes appending to `out`, for the generator's hot loop.
void PackRepeatsInto(std::string_view line, std::string& out);
void PackBlanksInto(std::string_view line, std::string& out);

// The whole `p` line: `<Param Name="p" value="...">`, not packed.
std::string AppletParamLine(const Project& p, i16 iScFirstBtn, FileProbe& probe);
// Button i's line before packing is left in b.sParamLine (the builder is
// reused between buttons to keep its memory).
void BuildButtonLine(ParamBuilder& b, const Project& p, int i, FileProbe& probe);
// Button i's line as it goes into the block: built, then PackRepeats, then
// PackBlanks.
std::string ButtonParamLine(const Project& p, int i, FileProbe& probe);

}  // namespace kp
