// The language settings block of "Kestrel.ini" and the positional sections
// of a language file. English is built in: whatever the files do not say
// keeps its built-in value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/env.h"

namespace kp {

// The lines after "[LANG SETTINGS]", by position, with their built-in values.
struct LangSettings {
  std::string sLangFile = "english_lng";        // 1: language file, in the program folder
  std::string sLangName = "ENGLISH";            // 2: language name
  std::string sWav2AuReadMe = "Wav2Au_ReadMe.txt";  // 3: the sound tool's read-me
  std::string sNoJava = "Java is disabled in your Browser!";  // 4
  std::string sLoading = "Loading...";          // 5
  std::string sMetaLine =                       // 6: content-type line of the page
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\">";
  std::string sHelpIndex = "\\Help\\index.htm";  // 7
  // Line 8 is read and ignored; lines 9 to 13 are left unread.
};

inline constexpr const char* kLangIniName = "Kestrel.ini";
inline constexpr const char* kLangSettingsHeading = "[LANG SETTINGS]";

// The file's lines split at LF with one trailing CR dropped, as a line
// reader of CR LF text sees them.
std::vector<std::string> TextLines(std::string_view text);

// The built-in values, then the lines after the heading (compared exactly)
// by position. A zero byte ends a value there. Lines missing at the end of
// the file keep their built-in values.
LangSettings ReadLangSettings(std::string_view iniText);

// GET_LANG_SETTINGS: reads "Kestrel.ini" of the program folder (a missing
// file gives the built-ins, silently) and puts the language texts in force.
LangSettings GET_LANG_SETTINGS(Env& env);

// The settings GET_LANG_SETTINGS last put in force, for the windows that
// are made on first use.
LangSettings& LangInForce();

// The start-up's language state: the setting of the language name under
// "2.02/Language" becomes "YES" when the language file is in the program
// folder, otherwise "NO". Returns whether the file is there.
bool StoreLanguageState(Env& env, const LangSettings& s);

// The language file named by the settings: the user folder's when the user
// keeps one there, else the program folder's.
std::string LangFilePath(const Env& env, const LangSettings& s);

// True when the windows should take their texts from the language file.
bool LanguageApplies(Env& env, const LangSettings& s);

// The `count` lines that follow the line equal to `heading` (fewer at the
// end of the file). The format has no terminator: a short section takes the
// next section's lines as its own. Empty when the heading is absent.
std::vector<std::string> ReadLanguageSection(std::string_view fileText, std::string_view heading,
                                             size_t count);

// The number of lines of a window's section, as the file format fixes it
// for the sections that translators' files already carry; 0 for a section
// whose count is its window's table.
size_t FixedSectionLines(std::string_view heading);

// A window's language routine, up to the texts: nothing when the language
// setting is not "YES"; when the language file cannot be read, the
// "Language File: ... not found" box, the setting stored as "NO" and
// nothing; otherwise the setting stored as "YES" and the `count` lines of
// the section (empty when the file has no heading for the window).
std::optional<std::vector<std::string>> WindowLanguageLines(Env& env, const LangSettings& lang,
                                                            std::string_view heading,
                                                            size_t count);

// A message variable's language line: "\n" stands for a line break.
std::string MessageLineText(std::string_view line);
// ... and back, for writing a language file.
std::string MessageLineOf(std::string_view text);

// One section of a language file as it is written.
struct LanguageSectionText {
  std::string heading;
  std::vector<std::string> lines;
};
// The whole file, CR LF line ends.
std::string LanguageFileText(const std::vector<LanguageSectionText>& sections);

}  // namespace kp
