// The project reader on arbitrary bytes: it must end in one of its own
// outcomes, never crash, hang or read out of bounds, and what it loads must
// save and load again to the same text.
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/env.h"
#include "project/project_file.h"

namespace {

// Files live in memory: the project under its name, nothing else exists.
class MemFs : public kp::DiskFileSystem {
 public:
  std::string name, bytes, saved;
  kp::IoStatus ReadFile(const std::string& path, std::string& out) override {
    if (path == name) out = bytes;
    else if (path == "/mem/again.kpn") out = saved;
    else return kp::IoStatus::Fail("No such file or directory");
    return {};
  }
  kp::IoStatus WriteFileAtomic(const std::string&, std::string_view data) override {
    saved.assign(data);
    return {};
  }
  bool FileExists(const std::string&) override { return false; }
};

class Silent : public kp::Prompter {
 public:
  int answer = 0;
  kp::Answer MsgBox(const std::string&, kp::Buttons b, const std::string&, kp::Icon) override {
    // Alternate answers so both branches of every question are taken.
    ++answer;
    if (b == kp::Buttons::OKCancel) return answer % 2 ? kp::Answer::OK : kp::Answer::Cancel;
    return kp::Answer::OK;
  }
  bool Notice(const std::string&, const std::string&, const std::string&, bool c) override {
    return c;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  MemFs fs;
  kp::MemorySettings store;
  Silent prompter;
  kp::ProjectView view;
  kp::Env env{fs, store, prompter, view, "/mem"};
  std::string input(reinterpret_cast<const char*>(data), size);
  // The first byte picks the dispatch: a project file or an .lpm file.
  fs.name = (size > 0 && data[0] % 2) ? "/mem/p.lpm" : "/mem/p.kpn";
  fs.bytes = input;

  kp::Project p;
  kp::LoadResult r = kp::LoadProject2(p, env, fs.name);
  if (!p.bReady && r != kp::LoadResult::ProcessEnds) __builtin_trap();
  if (p.ButtonCount > kp::kBtnUpperBound) __builtin_trap();
  if (r != kp::LoadResult::Loaded || fs.name.back() == 'm') return 0;

  // A loaded project saves, and its applet and button lines read back to
  // the same lines. The page blocks need not: a block whose end marker is
  // missing runs to the end of the file, which the next save moves.
  if (!kp::SaveProject(p, env, "/mem/again.kpn", true, false)) __builtin_trap();
  std::string first = fs.saved;
  kp::Project q;
  if (kp::LoadProject2(q, env, "/mem/again.kpn") != kp::LoadResult::Loaded) __builtin_trap();
  std::string second = kp::ProjectFileText(q, false);
  std::string lines = first.substr(0, first.find("\r\n\r\n"));
  if (second.compare(0, lines.size() + 4, lines + "\r\n\r\n") != 0) __builtin_trap();
  return 0;
}
