#include "core/language.h"

#include "core/folders.h"
#include "core/model.h"
#include "core/settings.h"
#include "core/conv.h"

namespace kp {

namespace {

std::string CutAtNul(std::string_view line) {
  size_t nul = line.find('\0');
  return std::string(nul == std::string_view::npos ? line : line.substr(0, nul));
}

}  // namespace

std::string LangFilePath(const Env& env, const LangSettings& s) {
  return ProgramFile(env, s.sLangFile);
}

std::vector<std::string> TextLines(std::string_view text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t lf = text.find('\n', start);
    size_t end = lf == std::string_view::npos ? text.size() : lf;
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.emplace_back(line);
    if (lf == std::string_view::npos) break;
    start = lf + 1;
  }
  return lines;
}

LangSettings ReadLangSettings(std::string_view iniText) {
  LangSettings s;
  std::vector<std::string> lines = TextLines(iniText);
  size_t i = 0;
  while (i < lines.size() && lines[i] != kLangSettingsHeading) ++i;
  if (i == lines.size()) return s;
  std::string* targets[] = {&s.sLangFile, &s.sLangName, &s.sWav2AuReadMe, &s.sNoJava,
                            &s.sLoading,  &s.sMetaLine, &s.sHelpIndex};
  for (size_t k = 0; k < std::size(targets) && i + 1 + k < lines.size(); ++k)
    *targets[k] = CutAtNul(lines[i + 1 + k]);
  return s;
}

LangSettings& LangInForce() {
  static LangSettings s;
  return s;
}

LangSettings GET_LANG_SETTINGS(Env& env) {
  std::string text;
  LangSettings s;
  if (env.fs.ReadFile(ProgramFile(env, kLangIniName), text)) s = ReadLangSettings(text);
  LangTexts& t = Lang();
  t.NoJava = s.sNoJava;
  t.Loading = s.sLoading;
  t.LanguageName = s.sLangName;
  t.SoundReadMe = s.sWav2AuReadMe;
  t.MetaLine = s.sMetaLine;
  LangInForce() = s;
  return s;
}

bool StoreLanguageState(Env& env, const LangSettings& s) {
  const bool there = env.fs.FileExists(LangFilePath(env, s));
  fWriteValue(env, kSecLanguage, s.sLangName, there ? "YES" : "NO");
  return there;
}

bool LanguageApplies(Env& env, const LangSettings& s) {
  return fReadValue(env, kSecLanguage, s.sLangName, "NO") == "YES";
}

std::vector<std::string> ReadLanguageSection(std::string_view fileText, std::string_view heading,
                                             size_t count) {
  std::vector<std::string> lines = TextLines(fileText);
  std::vector<std::string> out;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (lines[i] != heading) continue;
    for (size_t k = i + 1; k < lines.size() && out.size() < count; ++k) out.push_back(lines[k]);
    break;
  }
  return out;
}

size_t FixedSectionLines(std::string_view heading) {
  struct Count {
    const char* heading;
    size_t lines;
  };
  static constexpr Count kCounts[] = {
      {"[frmMain]", 190},          {"[frmSetAction]", 30},      {"[frmDesign]", 20},
      {"[frmAutoRepHTML_MSG]", 17}, {"[frmHTML]", 30},           {"[frmAutoRepHTML_2]", 24},
      {"[frmAdvanced]", 11},        {"[frmSpecial]", 27},        {"[frmBrowserSetup]", 14},
      {"[frmGrid]", 13},            {"[frmButtonSpecial]", 20},
  };
  for (const Count& c : kCounts)
    if (heading == c.heading) return c.lines;
  return 0;
}

std::optional<std::vector<std::string>> WindowLanguageLines(Env& env, const LangSettings& lang,
                                                            std::string_view heading,
                                                            size_t count) {
  if (!LanguageApplies(env, lang)) return std::nullopt;
  std::string text;
  if (!env.fs.ReadFile(LangFilePath(env, lang), text)) {
    env.prompter.MsgBox("Language File: " + std::string(sQuote) + lang.sLangFile + sQuote +
                        " not found");
    fWriteValue(env, kSecLanguage, lang.sLangName, "NO");
    return std::nullopt;
  }
  std::vector<std::string> lines = ReadLanguageSection(text, heading, count);
  fWriteValue(env, kSecLanguage, lang.sLangName, "YES");
  return lines;
}

std::string MessageLineText(std::string_view line) {
  return ReplaceAll(std::string(line), "\\n", sCRLF);
}

std::string MessageLineOf(std::string_view text) {
  return ReplaceAll(ReplaceAll(std::string(text), sCRLF, "\\n"), "\n", "\\n");
}

std::string LanguageFileText(const std::vector<LanguageSectionText>& sections) {
  std::string out;
  for (const LanguageSectionText& s : sections) {
    out += s.heading + sCRLF;
    for (const std::string& l : s.lines) out += l + sCRLF;
  }
  return out;
}

}  // namespace kp
