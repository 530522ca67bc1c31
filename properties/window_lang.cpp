#include "properties/window_lang.h"

#include <QComboBox>

namespace kp {

size_t SectionLineCount(std::string_view heading, size_t tableSize) {
  const size_t fixed = FixedSectionLines(heading);
  return fixed ? fixed : tableSize;
}

void SetItemTexts(QComboBox* box, const UiTexts& table) {
  const std::string prefix = box->objectName().toStdString() + ".";
  for (int k = 0; k < box->count(); ++k) {
    const std::string name = prefix + std::to_string(k);
    for (const UiText& t : table)
      if (name == t.control) box->setItemText(k, DisplayText(t.text));
  }
}

std::string MoreLinesHeading(std::string_view heading) {
  std::string h(heading);
  if (!h.empty() && h.back() == ']') h.insert(h.size() - 1, "+");
  return h;
}

bool ApplyLanguageSection(Env& env, const LangSettings& lang, UiTexts& texts,
                          const std::string& heading) {
  auto lines = WindowLanguageLines(env, lang, heading, SectionLineCount(heading, texts.size()));
  if (!lines) return false;
  ReplaceByPosition(texts, *lines);
  const size_t fixed = FixedSectionLines(heading);
  if (fixed && texts.size() > fixed) {
    auto more = WindowLanguageLines(env, lang, MoreLinesHeading(heading), texts.size() - fixed);
    for (size_t k = 0; more && k < more->size(); ++k) texts[fixed + k].text = (*more)[k];
  }
  return true;
}

bool ApplyLanguageSection(Env& env, UiTexts& texts, const std::string& heading) {
  return ApplyLanguageSection(env, LangInForce(), texts, heading);
}

}  // namespace kp
