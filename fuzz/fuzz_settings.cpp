// The settings layer and the language files on arbitrary bytes: a
// "Kestrel.ini", a language file and stored setting values that may hold
// anything. Each reader must give what its rule says, never crash, and
// what is written must read back.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/env.h"
#include "core/language.h"
#include "core/settings.h"

namespace {

class Silent : public kp::Prompter {
 public:
  kp::Answer MsgBox(const std::string&, kp::Buttons, const std::string&, kp::Icon) override {
    return kp::Answer::OK;
  }
  bool Notice(const std::string&, const std::string&, const std::string&, bool c) override {
    return c;
  }
};

void Check(bool ok) {
  if (!ok) __builtin_trap();
}

std::string CutAtNul(const std::string& s) { return s.substr(0, s.find('\0')); }

// The ini's settings block, line by line, against the built-in values.
void CheckLangSettings(const std::string& ini) {
  const kp::LangSettings got = kp::ReadLangSettings(ini);
  const kp::LangSettings def;
  const std::vector<std::string> lines = kp::TextLines(ini);
  size_t h = 0;
  while (h < lines.size() && lines[h] != kp::kLangSettingsHeading) ++h;
  const std::string* fields[] = {&got.sLangFile, &got.sLangName, &got.sWav2AuReadMe,
                                 &got.sNoJava,   &got.sLoading,  &got.sMetaLine,
                                 &got.sHelpIndex};
  const std::string* builtIn[] = {&def.sLangFile, &def.sLangName, &def.sWav2AuReadMe,
                                  &def.sNoJava,   &def.sLoading,  &def.sMetaLine,
                                  &def.sHelpIndex};
  for (size_t k = 0; k < 7; ++k) {
    Check(fields[k]->find('\0') == std::string::npos);
    Check(fields[k]->find('\n') == std::string::npos);
    const size_t line = h + 1 + k;
    if (h < lines.size() && line < lines.size())
      Check(*fields[k] == CutAtNul(lines[line]));
    else
      Check(*fields[k] == *builtIn[k]);
  }
}

// A section is the `count` lines after the first line equal to its heading.
void CheckSection(const std::string& file, const std::string& heading, size_t count) {
  const std::vector<std::string> got = kp::ReadLanguageSection(file, heading, count);
  const std::vector<std::string> lines = kp::TextLines(file);
  size_t h = 0;
  while (h < lines.size() && lines[h] != heading) ++h;
  std::vector<std::string> want;
  for (size_t k = h + 1; h < lines.size() && k < lines.size() && want.size() < count; ++k)
    want.push_back(lines[k]);
  Check(got == want);
}

// Sections written out read back line for line, when no line of one could
// be taken for a heading.
void CheckWrittenSections(const std::string& text) {
  std::vector<kp::LanguageSectionText> sections = {{"[frmMain]", {}}, {"[frmGrid]", {}}};
  size_t pos = 0;
  for (int s = 0; s < 2; ++s)
    for (int k = 0; k < 6 && pos < text.size(); ++k) {
      size_t end = text.find('\n', pos);
      if (end == std::string::npos) end = text.size();
      std::string line = kp::MessageLineOf(text.substr(pos, end - pos));
      pos = end + 1;
      for (char& ch : line)
        if (ch == '\r') ch = ' ';
      if (line == "[frmMain]" || line == "[frmGrid]") return;
      sections[static_cast<size_t>(s)].lines.push_back(line);
    }
  const std::string file = kp::LanguageFileText(sections);
  for (const auto& s : sections)
    Check(kp::ReadLanguageSection(file, s.heading, s.lines.size()) == s.lines);
}

// Stored values of any bytes through the recent list, the sizes and the
// colours.
void CheckStore(const std::string& bytes) {
  kp::DiskFileSystem fs;
  kp::MemorySettings store;
  Silent prompter;
  kp::ProjectView view;
  kp::Env env{fs, store, prompter, view, "/mem"};
  std::vector<std::string> parts;
  for (size_t pos = 0; pos <= bytes.size() && parts.size() < 12;) {
    size_t end = bytes.find('\x01', pos);
    if (end == std::string::npos) end = bytes.size();
    parts.push_back(bytes.substr(pos, end - pos));
    pos = end + 1;
  }
  parts.resize(12);
  for (int k = 1; k <= 4; ++k)
    if (!parts[static_cast<size_t>(k)].empty())
      store.Set(kp::kSecRecent, "File" + std::to_string(k), parts[static_cast<size_t>(k)]);

  const std::array<std::string, 4> old = kp::ReadRecentRaw(env);
  for (const kp::RecentEntry& e : kp::GetRecent(env)) {
    Check(e.path != "-1" && e.path == old[static_cast<size_t>(e.k - 1)]);
    Check(e.text == kp::ShortPath(e.path));
    Check(e.path.size() < 40 ? e.text == e.path : e.text.size() == 46);
  }
  const std::string path = parts[0];
  kp::WriteRecent(env, path);
  std::vector<std::string> want = {path};
  bool dropped = false;
  for (const std::string& o : old) {
    if (!dropped && o == path) {
      dropped = true;
      continue;
    }
    want.push_back(o);
  }
  want.resize(4);
  const std::array<std::string, 4> now = kp::ReadRecentRaw(env);
  Check(std::vector<std::string>(now.begin(), now.end()) == want);

  const char* sides[] = {"Left", "Top", "Width", "Height"};
  for (int k = 0; k < 4; ++k)
    store.Set(kp::kSecSizes + "/frmFuzz", sides[k], parts[static_cast<size_t>(5 + k)]);
  const kp::Geometry current{1, 2, 3, 4};
  const long sw = 19200, sh = 14400;
  const kp::Geometry g = kp::ReadSizes(env, "frmFuzz", current, sw, sh);
  if (!(g == current)) {
    Check(g.width <= sw && g.height <= sh);
    Check(g.left + g.width <= sw && g.top + g.height <= sh);
  }
  kp::WriteSizes(env, "frmFuzz", g);
  Check(kp::ReadSizes(env, "frmFuzz", current, sw, sh) == g || (g.left == 0 && g.top == 0 &&
                                                                g.width == 0 && g.height == 0));

  for (int k = 1; k <= 128; ++k)
    store.Set(kp::kSecCustColors, "C" + std::to_string(k),
              parts[static_cast<size_t>(9 + k % 3)]);
  const kp::CustColors c = kp::GetCustColors(env);
  kp::SaveCustColors(env, c);
  Check(kp::GetCustColors(env) == c);

  // A value held for the run is what the routines read, until a write.
  store.Hold(kp::kSecParams, "iGridX", parts[9]);
  Check(kp::GetParam(env, "iGridX") == parts[9]);
  Check(kp::SetParam(env, "iGridX", parts[10]));
  Check(kp::GetParam(env, "iGridX") == parts[10]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  // Three parts, cut at the first two "\x00\x00": the ini, the language
  // file, the stored values.
  size_t a = input.find(std::string_view("\0\0", 2));
  size_t b = a == std::string::npos ? a : input.find(std::string_view("\0\0", 2), a + 2);
  const std::string ini = input.substr(0, a);
  const std::string lang = a == std::string::npos ? input : input.substr(a + 2, b - a - 2);
  const std::string values = b == std::string::npos ? input : input.substr(b + 2);

  CheckLangSettings(ini);
  for (const char* heading : {"[frmMain]", "[frmGrid]", "[frmPicBroser]", "[LANG SETTINGS]"})
    CheckSection(lang, heading, 1 + static_cast<size_t>(size % 23));
  CheckWrittenSections(lang);
  CheckStore(values);
  return 0;
}
