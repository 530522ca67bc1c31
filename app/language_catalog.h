// Every section of a language file with its targets in line order: line k
// of a section is the text *targets[k-1]. The tables are the one source of
// the English texts; the shipped "english_lng" is written from them.
#pragma once

#include <string>
#include <vector>

#include "core/env.h"
#include "core/language.h"

namespace kp {

struct CatalogSection {
  std::string heading;
  std::vector<std::string*> targets;
  // The lines the format fixes for the section (0: the table's size).
  size_t fixedLines = 0;
};

std::vector<CatalogSection> LanguageCatalog();

// The language routine of the publishing windows and messages, run once
// the main window has its texts.
void ApplyPublishLanguage(Env& env, const LangSettings& lang);

// The language file of the texts now in the tables: with the built-in
// English, the shipped "english_lng".
std::string LanguageFileOfTables();

}  // namespace kp
