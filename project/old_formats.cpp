#include "project/old_formats.h"

#include "core/conv.h"
#include "core/messages.h"
#include "core/session.h"

namespace kp {

std::string ConvertOldLine(std::string_view line) {
  std::string s(line);
  for (char d = '0'; d <= '3'; ++d)
    s = ReplaceAll(s, std::string("&y0") + d, std::string("&!") + d);
  return ReplaceAll(s, "^", "&!4");
}

std::unordered_map<std::string, std::string> ProfileSection(const std::string& iniText,
                                                            const std::string& section) {
  std::unordered_map<std::string, std::string> keys;
  const std::string wantSection = LCase(section);
  bool inSection = false;
  size_t pos = 0;
  while (pos < iniText.size()) {
    size_t end = iniText.find_first_of("\r\n", pos);
    if (end == std::string::npos) end = iniText.size();
    std::string line = Trim(std::string_view(iniText).substr(pos, end - pos));
    pos = end + 1;
    if (!line.empty() && line[0] == '[') {
      size_t close = line.find(']');
      inSection =
          close != std::string::npos && LCase(Trim(line.substr(1, close - 1))) == wantSection;
      continue;
    }
    size_t eq = line.find('=');
    if (!inSection || eq == std::string::npos) continue;
    std::string value = Trim(line.substr(eq + 1));
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front())
      value = value.substr(1, value.size() - 2);
    // The profile reader fills a buffer of 100 characters.
    if (value.size() > 99) value.resize(99);
    keys.emplace(LCase(Trim(line.substr(0, eq))), Trim(value));
  }
  return keys;
}

LoadResult LoadProject_OLD(Project& p, Env& env, const std::string& path) {
  p.AllocateButtons();
  p.bReady = false;
  env.prompter.ProgressShow(SharedText("sLoadingProject"));
  env.prompter.Busy(true);
  p.ButtonCount = 0;
  p.iCurBtn = 0;
  env.view.ClearButtons();
  env.view.SetTitles(p.sMainTitle, DesignTitle(p.sMainTitle));

  std::string ini;
  env.fs.ReadFile(path, ini);  // an unreadable file reads as one without keys
  const auto keys = ProfileSection(ini, "Buttons");
  auto get = [&](const std::string& key, const char* def) {
    auto it = keys.find(LCase(key));
    return it == keys.end() ? std::string(def) : it->second;
  };
  get("Version", "-1");
  p.ButtonCount = MakeCInt(get("ButtonCount", "0"), 0);
  p.BackGround = MakeCLng(get("BackGround", "0"), 0);
  p.DOWNBtn = MakeCInt(get("DOWNBtn", "0"), 0);
  p.AppletWidth = MakeCInt(get("AppletWidth", "420"), 420);
  p.AppletHeight = MakeCInt(get("AppletHeight", "180"), 180);
  p.BackImg = get("BackImg", "");
  p.BackImgStyle = MakeCInt(get("BackImgStyle", "0"), 0);
  p.iDescentX = 0;
  p.iDescentY = 0;
  SetMainParams(p, env);

  static const char* kStates[4] = {"", "UP", "OVER", "DOWN"};
  LoadResult result = LoadResult::Loaded;
  const int count = p.ButtonCount;
  for (int i = 1; i <= count; ++i) {
    if (i > kBtnUpperBound) {
      p.ButtonCount = static_cast<i16>(i - 1);
      env.prompter.MsgBox(SharedText("sErrorLoading", {"Subscript out of range"}), Buttons::OK,
                          "", Icon::Critical);
      result = LoadResult::Failed;
      break;
    }
    env.prompter.ProgressSet(
        SharedText("sLoadingButton", {std::to_string(i), std::to_string(count)}), i * 100 / count);
    const std::string n = std::to_string(i);
    tButton& b = p.button(i);
    b.x = MakeCInt(get("x_" + n, "0"), 0);
    b.y = MakeCInt(get("y_" + n, "0"), 0);
    b.Width = MakeCInt(get("Width_" + n, "0"), 0);
    b.Height = MakeCInt(get("Height_" + n, "0"), 0);
    for (int s = 1; s <= 3; ++s) b.Label[s] = get("Label" + std::string(kStates[s]) + "_" + n, "");
    b.URL = get("URL_" + n, "");
    b.Status = get("Status_" + n, "");
    b.Target = get("Target_" + n, "");
    for (int s = 1; s <= 3; ++s) {
      const std::string st = kStates[s];
      b.BackColor[s] = MakeCLng(get("BackColor" + st + "_" + n, "0"), 0);
      b.FontSize[s] = MakeCInt(get("FontSize" + st + "_" + n, "10"), 10);
      b.Font[s] = get("Font" + st + "_" + n, "Arial");
      b.FontStyle[s] = MakeCInt(get("FontStyle" + st + "_" + n, "0"), 0);
      b.FontColor[s] = MakeCLng(get("FontColor" + st + "_" + n, "0"), 0);
      b.Image[s] = get("Image" + st + "_" + n, "");
      b.Snd[s] = get("Snd" + st + "_" + n, "");
    }
    bool transparent = get("noBackGround_" + n, "0") == "1";
    for (int s = 1; s <= 3; ++s) b.noBackGround[s] = transparent;
    b.ShowHand = get("ShowHand_" + n, "0") == "1";
    p.iCurBtn = static_cast<i16>(i);
    env.view.LoadButton(p, i);
  }
  p.bProjectSaved = true;
  p.sMainTitle = ProjectTitle(p);
  env.prompter.Busy(false);
  env.prompter.ProgressHide();
  env.view.SetTitles(p.sMainTitle, DesignTitle(p.sMainTitle));
  p.bReady = true;
  return result;
}

}  // namespace kp
