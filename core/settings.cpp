#include "core/settings.h"

#include <map>

#include "core/conv.h"
#include "core/messages.h"

namespace kp {

namespace {

const std::string kKeyAddJAR = "bAddJAR";

// The section a key of the Params family is kept in: "bAddJAR" predates the
// Params section and stays in the version section itself.
const std::string& SectionOf(const std::string& key) {
  return key == kKeyAddJAR ? kSecVersion : kSecParams;
}

std::string RecentKey(int k) { return "File" + std::to_string(k); }

std::string SizesSection(const std::string& formName) { return kSecSizes + "/" + formName; }

}  // namespace

// --- The store routines ----------------------------------------------------

std::string fReadValue(Env& env, const std::string& section, const std::string& key,
                       const std::string& def) {
  if (std::optional<std::string> held = env.store.Held(section, key)) return *held;
  std::optional<std::string> v = env.store.Get(section, key);
  return v ? *v : def;
}

bool fWriteValue(Env& env, const std::string& section, const std::string& key,
                 const std::string& value) {
  if (env.store.Set(section, key, value).empty()) {
    env.store.Release(section, key);
    return true;
  }
  env.prompter.MsgBox(SharedText("sWriteValueFailed"), Buttons::OK, "fWriteValue", Icon::Critical);
  return false;
}

bool fDeleteKey(Env& env, const std::string& section) {
  if (env.store.RemoveSection(section).empty()) return true;
  env.prompter.MsgBox(SharedText("sDeleteKeyFailed"), Buttons::OK, "fDeleteKey", Icon::Critical);
  return false;
}

bool ReportSettingsProblem(Env& env) {
  const std::string problem = env.store.ReadProblem();
  if (problem.empty()) return false;
  env.prompter.MsgBox(problem + sCRLF +
                          "The built-in settings apply until the program ends; changes are not "
                          "written to the file.",
                      Buttons::OK, "Settings", Icon::Exclamation);
  return true;
}

std::string ParamDefault(const Env& env, const std::string& key) {
  static const std::map<std::string, std::string> kDefaults = {
      {"bSaveBackup", "0"},
      {"bShowGrid", "0"},
      {"bAlignXY", "0"},
      {"bAlignWH", "0"},
      {"bShowGridAsDots", "0"},
      {"iGridX", "10"},
      {"iGridY", "10"},
      {"lGridColor", "8421504"},
      {"frmDesignOnTop", "0"},
      {"AutoTile", "1"},
      {"mnuMakeDefaultBtn", "0"},
      {"sDefaultBtn", "-1"},
      {"_buffer", "-1"},
      {"ProgClipBoard", ""},
      {"sProjectsPath", ""},
      {"sExportFolder", ""},
      {"sLastReplacedFolder", ""},
      {"chk_RegPixDlgBox", "0"},
      {"DontAskToAssociate", "0"},
      {"DontShow_frm_Create_Recent", "0"},
      {"DontShowSomeFilesWarning", "0"},
      {"DontShowReadyForUpload", "0"},
      {"DontShowAutoRepConfirm", "0"},
      {"ShowDifferentDirsWarning", "1"},
      {"WAV2AU_Auto_Convertion", "1"},
      {"ABorder_AutoFullRepaint", "1"},
      {"Warn_Space_in_FileName", "1"},
      {"Warn_BackSlash_in_FileName", "1"},
      {"Warn_Space_in_TargetName", "1"},
      {"Warn_Dot_in_TargetName", "1"},
      {"bAddJAR", "1"},
      {"bAddPlayerScript", "1"},
  };
  if (key == "sSearchImagesFolder") return env.programFolder + "/Samples";
  if (key == "sSearchSoundsFolder") return env.programFolder + "/Sounds";
  auto it = kDefaults.find(key);
  return it == kDefaults.end() ? "" : it->second;
}

std::string GetParam(Env& env, const std::string& key) {
  return fReadValue(env, SectionOf(key), key, ParamDefault(env, key));
}

bool SetParam(Env& env, const std::string& key, const std::string& value) {
  return fWriteValue(env, SectionOf(key), key, value);
}

// --- Recent files ------------------------------------------------------------

std::array<std::string, 4> ReadRecentRaw(Env& env) {
  std::array<std::string, 4> e;
  for (int k = 1; k <= 4; ++k) e[k - 1] = fReadValue(env, kSecRecent, RecentKey(k), "-1");
  return e;
}

void WriteRecent(Env& env, const std::string& path) {
  std::array<std::string, 4> e = ReadRecentRaw(env);
  int found = 0;
  for (int k = 1; k <= 4 && !found; ++k)
    if (e[k - 1] == path) found = k;
  // Entries above the match (or all but the oldest) move down one place.
  int last = found ? found : 4;
  for (int k = last; k >= 2; --k) e[k - 1] = e[k - 2];
  e[0] = path;
  // One change for the four entries: a run that ends half way through must
  // not leave one project in the list twice.
  std::vector<std::pair<std::string, std::string>> values;
  for (int k = 1; k <= 4; ++k) values.emplace_back(RecentKey(k), e[k - 1]);
  if (!env.store.SetMany(kSecRecent, values).empty())
    env.prompter.MsgBox(SharedText("sWriteValueFailed"), Buttons::OK, "fWriteValue",
                        Icon::Critical);
  env.view.RecentChanged();
}

std::vector<RecentEntry> GetRecent(Env& env) {
  std::array<std::string, 4> e = ReadRecentRaw(env);
  std::vector<RecentEntry> out;
  if (e[0] == "-1") return out;
  for (int k = 1; k <= 4; ++k)
    if (e[k - 1] != "-1") out.push_back({k, e[k - 1], ShortPath(e[k - 1])});
  return out;
}

std::string ShortPath(const std::string& text) {
  if (text.size() < 40) return text;
  return text.substr(0, 17) + "...." + text.substr(text.size() - 25);
}

// --- Custom colours ------------------------------------------------------------

CustColors GetCustColors(Env& env) {
  CustColors c{};
  for (int i = 1; i <= 128; ++i) {
    i16 v = MakeCInt(fReadValue(env, kSecCustColors, "C" + std::to_string(i), "0"), 0);
    c[i - 1] = (v >= 0 && v <= 255) ? static_cast<std::uint8_t>(v) : 0;
  }
  return c;
}

void SaveCustColors(Env& env, const CustColors& c) {
  // One failure box is enough: the store will refuse the rest too.
  for (int i = 1; i <= 128; ++i)
    if (!fWriteValue(env, kSecCustColors, "C" + std::to_string(i), std::to_string(c[i - 1])))
      return;
}

// --- Reset ------------------------------------------------------------------------

ResetResult ResetSettings(Env& env, bool quiet) {
  std::vector<std::string> sections;
  if (quiet) {
    sections = {kSecParams, kSecSizes};
  } else {
    if (env.prompter.MsgBox(SharedText("sResetAsk"), Buttons::YesNo, "",
                            Icon::Question) != Answer::Yes)
      return ResetResult::Declined;
    sections = {kSecVersion};
  }
  for (const std::string& s : sections) {
    std::string err = env.store.RemoveSection(s);
    if (!err.empty()) {
      env.prompter.MsgBox(SharedText("sErrorColon", {err}), Buttons::OK, "", Icon::Critical);
      return ResetResult::Failed;
    }
  }
  return ResetResult::Done;
}

// --- Window sizes -------------------------------------------------------------------

void WriteSizes(Env& env, const std::string& formName, const Geometry& g) {
  const std::string sec = SizesSection(formName);
  if (!fWriteValue(env, sec, "Left", std::to_string(g.left))) return;
  if (!fWriteValue(env, sec, "Top", std::to_string(g.top))) return;
  if (!fWriteValue(env, sec, "Width", std::to_string(g.width))) return;
  fWriteValue(env, sec, "Height", std::to_string(g.height));
}

Geometry ReadSizes(Env& env, const std::string& formName, const Geometry& current, long screenWidth,
                   long screenHeight) {
  const std::string sec = SizesSection(formName);
  Geometry g;
  g.left = MakeCLng(fReadValue(env, sec, "Left", "0"), 0);
  g.top = MakeCLng(fReadValue(env, sec, "Top", "0"), 0);
  g.width = MakeCLng(fReadValue(env, sec, "Width", "0"), 0);
  g.height = MakeCLng(fReadValue(env, sec, "Height", "0"), 0);
  if (g == Geometry{}) g = current;
  return KeepOnScreen(g, screenWidth, screenHeight);
}

Geometry KeepOnScreen(Geometry g, long screenWidth, long screenHeight) {
  if (g.width > screenWidth) g.width = screenWidth;
  if (g.height > screenHeight) g.height = screenHeight;
  if (g.left + g.width > screenWidth) g.left = screenWidth - g.width;
  if (g.top + g.height > screenHeight) g.top = screenHeight - g.height;
  return g;
}

// --- Notices bound to a setting -------------------------------------------------------

bool MyMsgBox(Env& env, const std::string& title, const std::string& message,
              const std::string& checkText, const std::string& settingKey,
              const std::string& showValue, const std::string& hideValue,
              const std::string& defaultValue) {
  const std::string current = fReadValue(env, kSecParams, settingKey, defaultValue);
  if (current != showValue) return false;
  const bool shownTicked = true;  // only reached when the setting asks to show
  const bool ticked = env.prompter.Notice(title, message, checkText, shownTicked);
  // The box writes the setting only when its state was changed, as a click
  // on it would.
  if (ticked != shownTicked)
    fWriteValue(env, kSecParams, settingKey, ticked ? showValue : hideValue);
  return true;
}

}  // namespace kp
