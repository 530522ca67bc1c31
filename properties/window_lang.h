// The language file's section of a small window: its lines replace the
// window's texts by position, when a language other than the default is in
// use. A missing file leaves the English texts.
#pragma once

#include <QString>
#include <string>

#include "core/env.h"
#include "core/language.h"
#include "properties/ui_text.h"

class QComboBox;
class QWidget;

namespace kp {

// The lines a window's section holds: the fixed count of the format, else
// the window's table.
size_t SectionLineCount(std::string_view heading, size_t tableSize);

// A window whose texts outgrew the lines the format fixes for its section
// keeps the rest in a section of its own: "[frmSetAction]" goes on in
// "[frmSetAction+]".
std::string MoreLinesHeading(std::string_view heading);

// The window's language routine on its table (see WindowLanguageLines),
// with the section that carries its further lines.
// True when the file was read.
bool ApplyLanguageSection(Env& env, const LangSettings& lang, UiTexts& texts,
                          const std::string& heading);
// The same with the settings in force.
bool ApplyLanguageSection(Env& env, UiTexts& texts, const std::string& heading);

// The items of a list the program fills: entry "<box's name>.<k>" of the
// table is item k.
void SetItemTexts(QComboBox* box, const UiTexts& table);

// A child control made with its object name, so that tests and the
// language routine find it.
template <class T>
T* NamedControl(T* control, const char* name) {
  control->setObjectName(QString::fromLatin1(name));
  return control;
}

}  // namespace kp
