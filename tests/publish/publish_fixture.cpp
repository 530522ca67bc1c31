#include "tests/publish/publish_fixture.h"

#include <algorithm>
#include <filesystem>

#include "core/conv.h"

namespace kp::test {

std::chrono::milliseconds FakeClock::Slept() const {
  std::chrono::milliseconds total{0};
  for (auto s : sleeps) total += s;
  return total;
}

IoStatus FakeLauncher::Open(const std::string& path) {
  calls.push_back({"open", "", {path}, true, ""});
  return fail ? IoStatus::Fail("No such file or directory") : IoStatus{};
}

IoStatus FakeLauncher::Explore(const std::string& folder) {
  calls.push_back({"explore", "", {folder}, true, ""});
  return fail ? IoStatus::Fail("No such file or directory") : IoStatus{};
}

IoStatus FakeLauncher::Run(const std::string& program, const std::vector<std::string>& args,
                           bool detached, const std::string& workDir) {
  calls.push_back({"run", program, args, detached, workDir});
  return fail ? IoStatus::Fail("No such file or directory") : IoStatus{};
}

Pub::Pub() {
  SetDefaultMainParams(p);
  p.sProjectName = "MyProject";
}

void Pub::Generate() {
  st.bAddJAR = true;
  MarkHTMLStale(st);
  HTMLWindowActivate(p, env, st, txtHTML);
}

int Pub::AddButton(const std::string& name) {
  const int i = ++p.ButtonCount;
  tButton& b = p.button(i);
  b.sBName = name;
  b.x = static_cast<i16>(10 + 110 * (i - 1));
  b.y = 10;
  b.Width = 100;
  b.Height = 30;
  for (int s = 1; s <= 3; ++s) {
    b.Label[s] = name;
    b.Font[s] = "Arial";
    b.FontSize[s] = 10;
  }
  return i;
}

std::vector<Dialog> Pub::DialogsNamed(const std::string& name) const {
  std::vector<Dialog> out;
  for (const Dialog& d : t.prompter.dialogs)
    if (d.name == name) out.push_back(d);
  return out;
}

std::vector<Shown> Pub::Messages() const {
  std::vector<Shown> out;
  for (const Shown& s : t.prompter.shown)
    if (s.kind == "msgbox") out.push_back(s);
  return out;
}

void MakeFiles(const std::string& folder, const std::vector<std::string>& names) {
  std::filesystem::create_directories(folder);
  for (const std::string& n : names) WriteBytes(folder + "/" + n, n);
}

bool Exists(const std::string& path) {
  std::error_code ec;
  return std::filesystem::exists(path, ec);
}

std::vector<std::string> FilesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
    if (it->is_regular_file()) names.push_back(it->path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> TreeOf(const std::string& folder) {
  std::vector<std::string> paths;
  std::error_code ec;
  for (std::filesystem::recursive_directory_iterator it(folder, ec), end; !ec && it != end;
       it.increment(ec))
    paths.push_back(std::filesystem::relative(it->path(), folder).string());
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace kp::test
