#include "properties/window_lang.h"

namespace kp {

size_t SectionLineCount(std::string_view heading, size_t tableSize) {
  const size_t fixed = FixedSectionLines(heading);
  return fixed ? fixed : tableSize;
}

bool ApplyLanguageSection(Env& env, const LangSettings& lang, UiTexts& texts,
                          const std::string& heading) {
  auto lines = WindowLanguageLines(env, lang, heading, SectionLineCount(heading, texts.size()));
  if (!lines) return false;
  ReplaceByPosition(texts, *lines);
  return true;
}

bool ApplyLanguageSection(Env& env, UiTexts& texts, const std::string& heading) {
  return ApplyLanguageSection(env, LangInForce(), texts, heading);
}

}  // namespace kp
