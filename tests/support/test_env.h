// Headless fixtures: a prompter that records every message and answers
// from a script, a file system that fails on request, a scratch folder.
#pragma once

#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/model.h"
#include <ostream>

namespace kp::test {

struct Shown {
  std::string kind;  // "msgbox", "notice", "progress", "dialog"
  std::string title;
  std::string text;
  Buttons buttons = Buttons::OK;
};

// A scripted press in one of the program's own windows: the button (an
// action button runs its action and the next answer is taken), and the
// check box's state on close (unset: as shown).
struct DialogAnswer {
  int button = 0;
  std::optional<bool> checked;
};

// A scripted answer to a check list: the action button or Cancel, with the
// rows ticked (unset: as shown).
struct CheckListAnswer {
  bool action = true;
  std::optional<std::vector<bool>> ticks;
};

class ScriptedPrompter : public Prompter {
 public:
  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                Icon icon) override;
  bool Notice(const std::string& title, const std::string& text, const std::string& checkCaption,
              bool checked) override;
  void ProgressShow(const std::string& text) override;
  void ProgressSet(const std::string& text, int percent) override;
  void ProgressHide() override { progressVisible = false; }
  std::string SaveFileDialog(const FileDialog& d) override;
  std::string OpenFileDialog(const FileDialog& d) override;
  DialogResult ShowDialog(const Dialog& d) override;
  bool ShowCheckList(CheckList& list) override;
  void Busy(bool on) override { busy = on; }
  void ProcessEvents() override { ++eventRuns; }

  // Answers given to message boxes, in order; when empty the first button
  // (OK or Yes) is the answer.
  std::deque<Answer> answers;
  // Answers given to notices (the check box's state on close); when empty
  // the box is left as shown.
  std::deque<bool> noticeAnswers;
  std::vector<Shown> shown;  // message boxes and notices
  std::vector<std::string> progress;  // every progress text, in order
  std::vector<int> percents;
  bool progressVisible = false;

  // File dialogs: the paths chosen, in order; "" or an empty queue cancels.
  std::deque<std::string> saveAnswers;
  std::deque<std::string> openAnswers;
  std::vector<FileDialog> fileDialogs;  // every file dialog shown
  // The program's own windows: when the queue is empty the first closing
  // button is pressed and the check box is left as shown.
  std::deque<DialogAnswer> dialogAnswers;
  std::vector<Dialog> dialogs;  // every window shown, as shown
  // Check lists: when the queue is empty the list is cancelled.
  std::deque<CheckListAnswer> checkListAnswers;
  std::vector<CheckList> checkLists;
  bool busy = false;
  int eventRuns = 0;

  int CountMsg() const;
  const Shown& Last() const { return shown.back(); }
};

// The disk, with writes, reads or copies made to fail for chosen paths.
class FaultFs : public DiskFileSystem {
 public:
  IoStatus ReadFile(const std::string& path, std::string& out) override;
  IoStatus WriteFileAtomic(const std::string& path, std::string_view data) override;
  IoStatus CopyFile(const std::string& from, const std::string& to) override;
  PathInfo Inspect(const std::string& path) override;

  // Every step of every write and copy on the disk, counted from 0; the
  // one numbered failAt fails as a full disk would, after the steps before
  // it really ran.
  IoStatus BeforeStep(DiskStep step, const std::string& path) override;
  int failAt = -1;
  int steps = 0;
  std::vector<std::string> stepLog;  // "write /path", one a step

  std::set<std::string> failRead, failWrite, failCopy;
  // What Inspect reports for a path instead of the disk's answer: a pipe,
  // a device or a huge file without making one.
  std::map<std::string, PathInfo> fakeInfo;
  int writes = 0;
  std::vector<std::string> reads;  // every path ReadFile was asked for
};

// A fresh folder under the system's temp folder, removed at the end.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::string& path() const { return path_; }
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  void write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;

 private:
  std::string path_;
  std::string home_;  // the working folder when the folder was made
};

// Everything an Env needs, owned together. programFolder is a temp folder.
struct TestEnv {
  FaultFs fs;
  MemorySettings store;
  ScriptedPrompter prompter;
  ProjectView view;
  TempDir home;
  Env env{fs, store, prompter, view, home.path()};
};

std::string ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);
// Path of a file in the source tree, such as "data/Projects/Demo.kpn".
std::string SourcePath(const std::string& rel);

}  // namespace kp::test

namespace kp {
// Readable failure output for whole buttons: the record text shows which
// field differs.
void PrintTo(const tButton& b, std::ostream* os);
}  // namespace kp
