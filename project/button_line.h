// The 110 fields of a button, as the project file and the button text
// record write and read them. The two forms differ in a handful of fields
// (position, type, transparency, files, name); see the .cpp for each.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/model.h"

namespace kp {

inline constexpr int kButtonFields = 110;
inline constexpr int kAppletFields = 49;

enum class LineForm {
  Project,  // a normal save: full paths
  Export,   // file fields hold the escaped file name only
  Record,   // the button text record of the settings store
};

// Appends the button's fields, each followed by "|", without a line end.
// ownFolder is the folder of the file being written (with its separator),
// or "" when there is none.
void AppendButtonLine(std::string& out, const tButton& b, LineForm form,
                      const std::string& ownFolder = "");

// The text of a file field. A full path that a line cannot carry ("|" ends
// a field, a line break the line) but that lies directly in ownFolder is
// written as its bare name, which the reader resolves back to the same
// path; every other path is written as it stands.
std::string FileFieldText(const std::string& path, LineForm form, const std::string& ownFolder);

// Resolves a file field of a project line into the path kept in memory.
using FileResolver = std::function<std::string(std::string_view)>;

// Applies field `no` of a project line. Never fails: a bad number gives
// the field's default.
void ApplyProjectButtonField(tButton& b, int no, std::string_view f, const FileResolver& resolve);

// Applies field `no` of a text record. Returns false when a number that
// this reader has no fall-back for does not parse (a damaged record).
// Labels are left alone when builtInLabels is set: the caller gives them
// the button's free name.
bool ApplyRecordButtonField(tButton& b, int no, std::string_view f, bool builtInLabels);

}  // namespace kp
