// Every user-visible text of a window lives in one ordered table of
// {control, text}, with the English defaults. A language file replaces the
// texts by position, so the order of a table is part of the file format.
#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"

namespace kp {

// The same record as the plain levels' message tables, so that a window
// shows a table of the level below it as its own.
using UiText = TextEntry;
using UiTexts = TextTable;

// The text for a control. A name missing from the table is a programming
// error; it shows as the name itself so that it is seen at once.
const std::string& TextOf(const UiTexts& table, std::string_view control);
QString QTextOf(const UiTexts& table, std::string_view control);

// A language section's lines replace the texts from the first on; lines
// beyond the table are not this window's.
void ReplaceByPosition(UiTexts& table, const std::vector<std::string>& lines);

// Texts from the model and the settings are bytes: a path is UTF-8 on this
// platform, a project's texts are Windows-1252. Valid UTF-8 shows as UTF-8,
// anything else byte by byte as Latin-1.
QString DisplayText(const std::string& bytes);
// A path typed or chosen in a window, as the file system's bytes.
std::string PathBytes(const QString& path);
QString PathText(const std::string& path);

}  // namespace kp
