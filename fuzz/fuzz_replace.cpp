// Replacing applets in a page on arbitrary bytes, through the whole
// replace (detect, replace into the temp file, backup, page) on files kept
// in memory: every applet is found, the page comes out as the plain
// one-string replacement makes it (so nothing outside the replaced applets
// moves), the backup is the page as it was, and no temp file is left.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/settings.h"
#include "publish/replace.h"

namespace {

class MemFs : public kp::DiskFileSystem {
 public:
  std::map<std::string, std::string> files;
  std::map<std::string, bool> dirs;
  kp::IoStatus ReadFile(const std::string& path, std::string& out) override {
    auto it = files.find(path);
    if (it == files.end()) return kp::IoStatus::Fail("No such file or directory");
    out = it->second;
    return {};
  }
  kp::PathInfo Inspect(const std::string& path) override {
    kp::PathInfo info;
    if (auto it = files.find(path); it != files.end()) {
      info.kind = kp::PathKind::File;
      info.size = static_cast<long long>(it->second.size());
    } else if (dirs.count(path)) {
      info.kind = kp::PathKind::Folder;
    }
    return info;
  }
  kp::IoStatus WriteFileAtomic(const std::string& path, std::string_view data) override {
    files[path].assign(data);
    return {};
  }
  kp::IoStatus CopyFile(const std::string& from, const std::string& to) override {
    auto it = files.find(from);
    if (it == files.end()) return kp::IoStatus::Fail("No such file or directory");
    files[to] = it->second;
    return {};
  }
  kp::IoStatus RemoveFile(const std::string& path) override {
    if (!files.erase(path)) return kp::IoStatus::Fail("No such file or directory");
    return {};
  }
  kp::IoStatus MakeDir(const std::string& path) override {
    dirs[path] = true;
    return {};
  }
  bool FileExists(const std::string& path) override { return files.count(path) > 0; }
  bool DirExists(const std::string& path) override { return dirs.count(path) > 0; }
  kp::IoStatus ChangeDir(const std::string&) override { return {}; }
};

class Silent : public kp::Prompter {
 public:
  kp::Answer MsgBox(const std::string&, kp::Buttons, const std::string&, kp::Icon) override {
    return kp::Answer::OK;
  }
  bool Notice(const std::string&, const std::string&, const std::string&, bool c) override {
    return c;
  }
};

const std::string kOpen = "<applet", kClose = "</applet>";

// Every "<applet" the scan can reach, with its row text: the next one
// after the previous row's ">", as long as a ">" follows.
std::vector<std::string> ExpectedRows(const std::string& page) {
  std::vector<std::string> rows;
  size_t from = 0;
  for (size_t a = page.find(kOpen); a != std::string::npos; a = page.find(kOpen, a + 1)) {
    if (a < from) continue;
    size_t g = page.find('>', a);
    if (g == std::string::npos) break;
    rows.push_back(page.substr(a, g - a + 1) + "...");
    from = g;
  }
  return rows;
}

// The replacement on one plain string, as the steps read: each search on
// the text as it stands, restarting at the old end position.
std::string PlainReplace(std::string text, const std::vector<bool>& ticked,
                         const std::string& code, size_t* firstStart, size_t* lastEndInPage,
                         long* shift, bool* overlapped) {
  size_t start = 0, index = 0, insertedEnd = 0;
  *firstStart = std::string::npos;
  *shift = 0;
  *overlapped = false;
  for (;;) {
    size_t a = text.find(kOpen, start);
    if (a == std::string::npos) break;
    size_t e = text.find(kClose, a);
    ++index;
    if (e == std::string::npos) break;
    start = e;
    if (index > ticked.size() || !ticked[index - 1] || code.empty()) continue;
    const size_t end = e + kClose.size();
    // A search that restarted inside the code just put in finds the new
    // code's own tags: positions no longer map onto the page.
    if (a < insertedEnd) *overlapped = true;
    insertedEnd = a + code.size();
    if (*firstStart == std::string::npos) *firstStart = a;
    *lastEndInPage = static_cast<size_t>(static_cast<long>(end) - *shift);
    *shift += static_cast<long>(code.size()) - static_cast<long>(end - a);
    text.replace(a, end - a, code);
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  // Byte 0: the ticked rows; byte 1: which new code; the rest is the page.
  std::vector<bool> ticked;
  for (int k = 0; k < 8; ++k) ticked.push_back((data[0] >> k) & 1);
  static const std::string kCodes[] = {
      "<APPLET code=\"KestrelPane.class\" width=1 height=1>\r\n</APPLET>",
      "<applet code=\"KestrelPane.class\">\r\n<param name=\"x\" value=\"<applet>\">\r\n"
      "Java is disabled in your Browser!\r\n</applet>",
      "<APPLET a>\r\n</APPLET>",
  };
  const std::string code = kCodes[data[1] % 3];
  const std::string page(reinterpret_cast<const char*>(data + 2), size - 2);

  MemFs fs;
  kp::MemorySettings store;
  Silent prompter;
  kp::ProjectView view;
  kp::Env env{fs, store, prompter, view, "/mem"};
  store.Set(kp::kSecParams, "DontShowAutoRepConfirm", "1");
  const std::string path = "/mem/site/page.html";
  fs.dirs["/mem"] = fs.dirs["/mem/site"] = true;
  fs.files[path] = page;
  fs.files["/mem/site/page_backup.html"] = "an older backup";

  // The replace reads nothing of the project; one kept for all runs spares
  // the allocation of its button array on every input.
  static kp::Project p;
  kp::GeneratorState st;
  kp::CodeBox box;
  box.text = "<!-- before -->\r\n" + code + "\r\n<!-- after -->\r\n";
  kp::HtmlWindowState win;
  kp::PublishState state;
  state.bWithoutPlayer = true;
  kp::PublishContext c{p, env, st, box, win, state};

  kp::AutoReplacePage rep;
  rep.sourcePath = path;
  if (!kp::DoDetect(c, rep, path)) __builtin_trap();
  if (rep.rows != ExpectedRows(page)) __builtin_trap();
  if (rep.rows != kp::FindApplets(page)) __builtin_trap();
  rep.ticked = ticked;
  rep.ticked.resize(rep.rows.size(), false);
  const bool anyTicked = std::find(rep.ticked.begin(), rep.ticked.end(), true) != rep.ticked.end();

  const bool ran = kp::btnReplace_Click(c, rep);
  if (ran != anyTicked) __builtin_trap();
  if (!ran) {
    if (fs.files[path] != page) __builtin_trap();
    return 0;
  }
  size_t first = 0, lastEnd = 0;
  long shift = 0;
  bool overlapped = false;
  const std::string expected =
      PlainReplace(page, rep.ticked, code, &first, &lastEnd, &shift, &overlapped);
  const std::string& now = fs.files[path];
  if (now != expected) __builtin_trap();
  if (rep.outcome.replaced == 0 && now != page) __builtin_trap();
  if (rep.outcome.replaced > 0 && !overlapped) {
    // The bytes before the first replaced applet and after the last one.
    if (now.compare(0, first, page, 0, first) != 0) __builtin_trap();
    if (now.size() - (page.size() - lastEnd) != static_cast<size_t>(lastEnd + shift))
      __builtin_trap();
    if (now.compare(lastEnd + shift, std::string::npos, page, lastEnd) != 0) __builtin_trap();
  }
  // The backup is the page as it was, under the first free name; the older
  // backup is kept, the temp file is gone.
  if (rep.backupPath != "/mem/site/page_backup1.html") __builtin_trap();
  if (fs.files[rep.backupPath] != page) __builtin_trap();
  if (fs.files["/mem/site/page_backup.html"] != "an older backup") __builtin_trap();
  if (fs.files.count(rep.tempPath)) __builtin_trap();
  return 0;
}
