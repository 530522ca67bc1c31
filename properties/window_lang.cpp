#include "properties/window_lang.h"

namespace kp {

void ApplyLanguageSection(Env& env, const LangSettings& lang, UiTexts& texts,
                          const std::string& heading) {
  if (!LanguageApplies(env, lang)) return;
  std::string text;
  if (!env.fs.ReadFile(LangFilePath(env, lang), text)) return;
  ReplaceByPosition(texts, ReadLanguageSection(text, heading, texts.size()));
}

}  // namespace kp
