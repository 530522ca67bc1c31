#include "publish/browsers.h"

#include <cstdlib>
#include <filesystem>

#include "core/conv.h"
#include "core/messages.h"
#include "core/settings.h"

namespace kp {

namespace {

const char* const kUnnamed = "Unnamed";

std::string Key(const char* prefix, int i) { return prefix + std::to_string(i); }

std::string Read(Env& env, const std::string& key, const std::string& def) {
  return fReadValue(env, kSecBrowsers, key, def);
}

int StoredCount(Env& env) {
  int n = MakeCInt(Read(env, "Count", "0"), 0);
  return n < 0 ? 0 : n;
}

// Appends one entry to the stored list.
void AppendBrowser(Env& env, const std::string& path, const std::string& name) {
  const int n = StoredCount(env);
  fWriteValue(env, kSecBrowsers, Key("B", n), path);
  fWriteValue(env, kSecBrowsers, Key("Name", n), name);
  fWriteValue(env, kSecBrowsers, "Count", std::to_string(n + 1));
}

bool IsExecutableFile(const std::string& path) {
  std::error_code ec;
  auto st = std::filesystem::status(path, ec);
  if (ec || !std::filesystem::is_regular_file(st)) return false;
  using std::filesystem::perms;
  return (st.permissions() & (perms::owner_exec | perms::group_exec | perms::others_exec)) !=
         perms::none;
}

std::string FindOnPath(const std::string& searchPath, const std::string& program) {
  if (program.empty()) return "";
  if (program.find('/') != std::string::npos)
    return IsExecutableFile(program) && IsAbsolutePath(program) ? program : "";
  size_t start = 0;
  while (start <= searchPath.size()) {
    size_t end = searchPath.find(':', start);
    if (end == std::string::npos) end = searchPath.size();
    std::string dir = searchPath.substr(start, end - start);
    // An empty entry means the current folder, which says nothing about
    // what is installed.
    if (!dir.empty() && dir[0] == '/') {
      std::string candidate = EndBackslash(dir) + program;
      if (IsExecutableFile(candidate)) return candidate;
    }
    start = end + 1;
  }
  return "";
}

std::vector<std::string> SplitColons(const std::string& text) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(':', start);
    if (end == std::string::npos) end = text.size();
    if (end > start) parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

struct KnownBrowser {
  const char* flag;
  const char* name;
  std::vector<std::string> programs;
  std::vector<std::string> desktopFiles;
};

const std::vector<KnownBrowser>& KnownBrowsers() {
  static const std::vector<KnownBrowser> kKnown = {
      {"Firefox",
       "Firefox",
       {"firefox", "firefox-esr"},
       {"firefox.desktop", "firefox-esr.desktop"}},
      {"Chromium",
       "Chromium",
       {"chromium", "chromium-browser"},
       {"chromium.desktop", "chromium-browser.desktop"}},
      {"GoogleChrome",
       "Google Chrome",
       {"google-chrome", "google-chrome-stable"},
       {"google-chrome.desktop", "google-chrome-stable.desktop"}},
      {"Epiphany",
       "Epiphany",
       {"epiphany", "epiphany-browser"},
       {"org.gnome.Epiphany.desktop", "epiphany.desktop", "epiphany-browser.desktop"}},
  };
  return kKnown;
}

std::string FindKnownBrowser(Env& env, const BrowserSearch& search, const KnownBrowser& b) {
  for (const std::string& program : b.programs)
    if (std::string found = FindOnPath(search.path, program); !found.empty()) return found;
  for (const std::string& dir : search.dataDirs) {
    for (const std::string& desktop : b.desktopFiles) {
      std::string text;
      if (!env.fs.ReadFile(EndBackslash(dir) + "applications/" + desktop, text)) continue;
      std::string program = DesktopExecProgram(text);
      if (std::string found = FindOnPath(search.path, program); !found.empty()) return found;
    }
  }
  return "";
}

}  // namespace

void GetBrowsers(Env& env, BrowserList& list) {
  list.cmbBrowser.assign(1, "Default");
  list.List1.clear();
  list.listIndex = 0;
  const int count = StoredCount(env);
  for (int i = 0; i < count; ++i) {
    list.List1.push_back(Read(env, Key("B", i), ""));
    list.cmbBrowser.push_back(Read(env, Key("Name", i), kUnnamed));
  }
  int selected = MakeCInt(Read(env, "Selected", "0"), 0);
  if (selected == -1) selected = 0;
  // A row beyond the list cannot be selected: the box stays on "Default".
  if (selected >= 0 && static_cast<size_t>(selected) < list.cmbBrowser.size())
    list.listIndex = selected;
}

void cmbBrowser_Click(Env& env, BrowserList& list, int index) {
  list.listIndex = index;
  fWriteValue(env, kSecBrowsers, "Selected", std::to_string(index));
}

BrowserSetup BrowserSetup_Load(Env& env) {
  BrowserSetup s;
  const int count = StoredCount(env);
  for (int i = 0; i < count; ++i) {
    s.ListPaths.push_back(Read(env, Key("B", i), ""));
    s.ListNames.push_back(Read(env, Key("Name", i), kUnnamed));
  }
  return s;
}

void BrowserSetup_OK(Env& env, const BrowserSetup& setup) {
  const size_t n = setup.ListNames.size();
  fWriteValue(env, kSecBrowsers, "Count", std::to_string(n));
  for (size_t i = 0; i < n; ++i) {
    fWriteValue(env, kSecBrowsers, Key("B", static_cast<int>(i)),
                i < setup.ListPaths.size() ? setup.ListPaths[i] : "");
    fWriteValue(env, kSecBrowsers, Key("Name", static_cast<int>(i)), setup.ListNames[i]);
  }
  // Leaving the setup with Ok always puts the HTML window back on
  // "Default".
  fWriteValue(env, kSecBrowsers, "Selected", "-1");
}

void BrowserSetup_Remove(BrowserSetup& setup) {
  const int row = setup.selected;
  if (row < 0 || static_cast<size_t>(row) >= setup.ListNames.size()) return;
  setup.ListNames.erase(setup.ListNames.begin() + row);
  if (static_cast<size_t>(row) < setup.ListPaths.size())
    setup.ListPaths.erase(setup.ListPaths.begin() + row);
  setup.selected = -1;
}

std::string BrowserNameFromPath(const std::string& path) {
  std::string name = FileNameOnly(path);
  if (size_t dot = name.rfind('.'); dot != std::string::npos) name.erase(dot);
  return Capitalize(name);
}

void AddEditBrowser_Browse(Env& env, AddEditBrowser& box) {
  FileDialog fd;
  fd.filter = SharedText("sProgramFilter");
  fd.folder = GetFolder(box.txtPath);
  fd.pathMustExist = true;
  std::string chosen = env.prompter.OpenFileDialog(fd);
  if (chosen.empty()) return;
  box.txtPath = chosen;
  if (box.txtName.empty()) box.txtName = BrowserNameFromPath(chosen);
}

void AddEditBrowser_OKAdd(BrowserSetup& setup, const AddEditBrowser& box) {
  setup.ListPaths.push_back(box.txtPath);
  setup.ListNames.push_back(box.txtName.empty() ? kUnnamed : box.txtName);
}

void AddEditBrowser_OKEdit(BrowserSetup& setup, const AddEditBrowser& box) {
  const int row = setup.selected;
  if (row < 0 || static_cast<size_t>(row) >= setup.ListNames.size() ||
      static_cast<size_t>(row) >= setup.ListPaths.size())
    return;
  setup.ListPaths[static_cast<size_t>(row)] = box.txtPath;
  setup.ListNames[static_cast<size_t>(row)] = box.txtName.empty() ? kUnnamed : box.txtName;
}

// --- Detection ------------------------------------------------------------------

std::string ShortVersion(const std::string& version) {
  return version.size() > 4 ? Trim(version.substr(0, 4)) : version;
}

bool DetectNetscape(Env& env, const RegistryReader& reg) {
  if (Read(env, "NS", "") == "YES" || !reg) return false;
  const std::string version = reg("SOFTWARE\\Netscape\\Netscape Navigator", "CurrentVersion");
  if (version.empty()) return false;
  const std::string folder =
      reg("SOFTWARE\\Netscape\\Netscape Navigator\\" + version + "\\Main", "Install Directory");
  std::string path = folder.empty() ? "" : EndBackslash(folder) + "Program/Netscape.exe";
  if (!IsFileExist(env, path)) {
    path = reg("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Netscape.exe", "");
    // Not found: looked for again at the next start.
    if (!IsFileExist(env, path)) return false;
  }
  AppendBrowser(env, path, "Netscape " + ShortVersion(version));
  fWriteValue(env, kSecBrowsers, "NS", "YES");
  return true;
}

bool DetectExplorer(Env& env, const RegistryReader& reg) {
  if (Read(env, "IE", "") == "YES" || !reg) return false;
  const std::string version = reg("SOFTWARE\\Microsoft\\Internet Explorer", "Version");
  if (version.empty()) return false;
  const std::string path =
      reg("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\IEXPLORE.EXE", "");
  if (!IsFileExist(env, path)) return false;
  AppendBrowser(env, path, "Internet Explorer " + ShortVersion(version));
  fWriteValue(env, kSecBrowsers, "IE", "YES");
  return true;
}

BrowserSearch BrowserSearch::FromEnvironment() {
  BrowserSearch s;
  if (const char* p = std::getenv("PATH")) s.path = p;
  std::string home;
  if (const char* h = std::getenv("XDG_DATA_HOME"); h && *h)
    home = h;
  else if (const char* u = std::getenv("HOME"); u && *u)
    home = std::string(u) + "/.local/share";
  if (!home.empty()) s.dataDirs.push_back(home);
  std::string dirs = "/usr/local/share:/usr/share";
  if (const char* d = std::getenv("XDG_DATA_DIRS"); d && *d) dirs = d;
  for (const std::string& dir : SplitColons(dirs)) s.dataDirs.push_back(dir);
  return s;
}

std::string DesktopExecProgram(const std::string& text) {
  bool inEntry = false;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(pos, end - pos);
    pos = end + 1;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line[0] == '[') {
      inEntry = line == "[Desktop Entry]";
      continue;
    }
    if (!inEntry || !StartsWith(line, "Exec=")) continue;
    std::string command = Trim(line.substr(5));
    if (command.empty()) return "";
    if (command[0] == '"') {
      size_t close = command.find('"', 1);
      return close == std::string::npos ? command.substr(1) : command.substr(1, close - 1);
    }
    return command.substr(0, command.find(' '));
  }
  return "";
}

int DetectDesktopBrowsers(Env& env, const BrowserSearch& search) {
  int added = 0;
  for (const KnownBrowser& b : KnownBrowsers()) {
    if (Read(env, b.flag, "") == "YES") continue;
    const std::string path = FindKnownBrowser(env, search, b);
    if (path.empty()) continue;
    AppendBrowser(env, path, b.name);
    fWriteValue(env, kSecBrowsers, b.flag, "YES");
    ++added;
  }
  return added;
}

void DetectBrowsers(Env& env, const RegistryReader& reg, const BrowserSearch& search) {
  DetectNetscape(env, reg);
  DetectExplorer(env, reg);
  DetectDesktopBrowsers(env, search);
}

}  // namespace kp
