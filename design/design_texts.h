// The user-visible texts of the design window, of the grid dialog and of
// the entries the design window adds to the main window's Edit menu, each
// in one ordered table of {control, text} with the English defaults. A
// language file replaces a window's texts by position, so the order of a
// table is part of the file format.
#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <vector>

namespace kp {

struct DesignText {
  const char* control;  // the control (or message variable) the text is for
  std::string text;
};
using DesignTexts = std::vector<DesignText>;

// The section "[frmDesign]" of a language file: 20 lines.
DesignTexts& frmDesignTexts();
inline constexpr const char* kDesignSection = "[frmDesign]";
inline constexpr size_t kDesignSectionLines = 20;

// The section "[frmGrid]": 13 lines. The grid dialog's three buttons are
// in "[frmDesign]", where lines were free.
DesignTexts& frmGridTexts();
inline constexpr const char* kGridSection = "[frmGrid]";
inline constexpr size_t kGridSectionLines = 13;

// The alignment, grid, lock and refresh entries of the main window's Edit
// menu.
DesignTexts& DesignMenuTexts();

// The text for a control; a name missing from the table shows as itself.
const std::string& DesignTextOf(const DesignTexts& table, std::string_view control);
QString DesignQText(const DesignTexts& table, std::string_view control);
// A language section's lines replace the texts from the first on.
void ReplaceDesignTexts(DesignTexts& table, const std::vector<std::string>& lines);

// Bytes of the model or the settings as a window shows them: UTF-8 when
// they are valid UTF-8, otherwise byte by byte.
QString BytesText(const std::string& bytes);

}  // namespace kp
