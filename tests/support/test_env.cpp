#include "tests/support/test_env.h"

#include <atomic>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace kp::test {

Answer ScriptedPrompter::MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                                Icon) {
  shown.push_back({"msgbox", title, text, buttons});
  if (!answers.empty()) {
    Answer a = answers.front();
    answers.pop_front();
    return a;
  }
  return (buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel) ? Answer::Yes : Answer::OK;
}

bool ScriptedPrompter::Notice(const std::string& title, const std::string& text,
                              const std::string&, bool checked) {
  shown.push_back({"notice", title, text, Buttons::OK});
  if (!noticeAnswers.empty()) {
    bool a = noticeAnswers.front();
    noticeAnswers.pop_front();
    return a;
  }
  return checked;
}

void ScriptedPrompter::ProgressShow(const std::string& text) {
  progressVisible = true;
  progress.push_back(text);
}

void ScriptedPrompter::ProgressSet(const std::string& text, int percent) {
  progress.push_back(text);
  percents.push_back(percent);
}

std::string ScriptedPrompter::SaveFileDialog(const FileDialog& d) {
  fileDialogs.push_back(d);
  if (saveAnswers.empty()) return "";
  std::string a = saveAnswers.front();
  saveAnswers.pop_front();
  return a;
}

std::string ScriptedPrompter::OpenFileDialog(const FileDialog& d) {
  fileDialogs.push_back(d);
  if (openAnswers.empty()) return "";
  std::string a = openAnswers.front();
  openAnswers.pop_front();
  return a;
}

DialogResult ScriptedPrompter::ShowDialog(const Dialog& d) {
  shown.push_back({"dialog", d.caption, d.text, Buttons::OK});
  dialogs.push_back(d);
  bool checked = d.checked;
  while (!dialogAnswers.empty()) {
    DialogAnswer a = dialogAnswers.front();
    dialogAnswers.pop_front();
    if (a.checked) checked = *a.checked;
    if (a.button < 0 || static_cast<size_t>(a.button) >= d.buttons.size()) continue;
    const DialogButton& b = d.buttons[static_cast<size_t>(a.button)];
    if (b.action) {
      b.action();
      continue;
    }
    return {a.button, checked};
  }
  for (size_t i = 0; i < d.buttons.size(); ++i)
    if (!d.buttons[i].action) return {static_cast<int>(i), checked};
  return {0, checked};
}

bool ScriptedPrompter::ShowCheckList(CheckList& list) {
  checkLists.push_back(list);
  if (checkListAnswers.empty()) return false;
  CheckListAnswer a = checkListAnswers.front();
  checkListAnswers.pop_front();
  if (a.ticks) list.ticked = *a.ticks;
  return a.action;
}

int ScriptedPrompter::CountMsg() const {
  int n = 0;
  for (auto& s : shown) n += s.kind == "msgbox";
  return n;
}

IoStatus FaultFs::ReadFile(const std::string& path, std::string& out) {
  reads.push_back(path);
  if (failRead.count(path)) return IoStatus::Fail("Permission denied", true);
  return DiskFileSystem::ReadFile(path, out);
}

PathInfo FaultFs::Inspect(const std::string& path) {
  if (auto it = fakeInfo.find(path); it != fakeInfo.end()) return it->second;
  return DiskFileSystem::Inspect(path);
}

IoStatus FaultFs::WriteFileAtomic(const std::string& path, std::string_view data) {
  ++writes;
  if (failWrite.count(path)) return IoStatus::Fail("Permission denied", true);
  return DiskFileSystem::WriteFileAtomic(path, data);
}

IoStatus FaultFs::BeforeStep(DiskStep step, const std::string& path) {
  static const char* const kNames[] = {"create", "write", "flush", "rename"};
  stepLog.push_back(std::string(kNames[static_cast<int>(step)]) + " " + path);
  if (steps++ == failAt) return IoStatus::Fail("No space left on device");
  return {};
}

IoStatus FaultFs::CopyFile(const std::string& from, const std::string& to) {
  if (failCopy.count(from) || failCopy.count(to)) return IoStatus::Fail("Permission denied", true);
  return DiskFileSystem::CopyFile(from, to);
}

TempDir::TempDir() {
  static std::atomic<int> counter{0};
  auto base = std::filesystem::temp_directory_path() /
              ("kp_test_" + std::to_string(::getpid()) + "_" + std::to_string(counter++));
  std::filesystem::remove_all(base);
  std::filesystem::create_directories(base);
  path_ = base.string();
  std::error_code ec;
  home_ = std::filesystem::current_path(ec).string();
}

TempDir::~TempDir() {
  std::error_code ec;
  // Code under test may have changed into this folder (as the program does
  // before a build); leave it before it goes, or later tests lose their
  // working folder.
  auto cwd = std::filesystem::current_path(ec).string();
  if (!ec && cwd.compare(0, path_.size(), path_) == 0) std::filesystem::current_path(home_, ec);
  std::filesystem::remove_all(path_, ec);
}

void TempDir::write(const std::string& name, const std::string& bytes) const {
  WriteBytes(file(name), bytes);
}

std::string TempDir::read(const std::string& name) const { return ReadBytes(file(name)); }

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << bytes;
}

std::string SourcePath(const std::string& rel) { return std::string(KP_SOURCE_DIR) + "/" + rel; }

}  // namespace kp::test

namespace kp {
void PrintTo(const tButton& b, std::ostream* os) {
  std::string line;
  *os << "[" << b.sBName << " type " << b.iBtnType << " x " << b.x << " y " << b.y << "] ";
  for (int s = 1; s <= 3; ++s) *os << "img" << s << "=" << b.Image[s] << " snd" << s << "=" << b.Snd[s] << " ";
}
}  // namespace kp
