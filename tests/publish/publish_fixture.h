// A headless HTML window for the publishing tests: scripted answers, a
// clock that advances without sleeping, a launcher that records what it
// would start, and a file system that records every copy.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/launcher.h"
#include "core/model.h"
#include "generate/html_generator.h"
#include "publish/context.h"
#include "tests/support/test_env.h"

namespace kp::test {

class FakeClock : public Clock {
 public:
  std::chrono::milliseconds Now() override { return now; }
  void Sleep(std::chrono::milliseconds ms) override {
    sleeps.push_back(ms);
    now += ms;
    if (onSleep) onSleep(now);
  }
  std::chrono::milliseconds Slept() const;

  std::chrono::milliseconds now{0};
  std::vector<std::chrono::milliseconds> sleeps;
  std::function<void(std::chrono::milliseconds)> onSleep;
};

class FakeLauncher : public Launcher {
 public:
  struct Call {
    std::string verb;  // "open", "explore", "run"
    std::string program;
    std::vector<std::string> args;
    bool detached = false;
    std::string workDir;
  };
  IoStatus Open(const std::string& path) override;
  IoStatus Explore(const std::string& folder) override;
  IoStatus Run(const std::string& program, const std::vector<std::string>& args, bool detached,
               const std::string& workDir) override;

  std::vector<Call> calls;
  bool fail = false;
};

class RecordingFs : public FaultFs {
 public:
  IoStatus CopyFile(const std::string& from, const std::string& to) override {
    copies.emplace_back(from, to);
    return FaultFs::CopyFile(from, to);
  }
  std::vector<std::pair<std::string, std::string>> copies;
};

class RecordingPublishView : public PublishView {
 public:
  void ShowOverlay(const std::string& text) override {
    overlay.push_back(text);
    overlayVisible = true;
  }
  void HideOverlay() override { overlayVisible = false; }
  void SetFileMenuEnabled(bool enabled) override { fileMenu.push_back(enabled); }

  std::vector<std::string> overlay;
  bool overlayVisible = false;
  std::vector<bool> fileMenu;
};

struct Pub {
  TestEnv t;
  RecordingFs fs;
  FakeLauncher launcher;
  Env env{fs, t.store, t.prompter, t.view, t.home.path(), &launcher};
  Project p;
  GeneratorState st;
  CodeBox txtHTML;
  HtmlWindowState win;
  PublishState state;
  RecordingPublishView view;
  FakeClock clock;
  PublishContext c{p, env, st, txtHTML, win, state, &view, &clock};

  Pub();
  ScriptedPrompter& prompter() { return t.prompter; }
  // The HTML window's activation: flag and code box.
  void Generate();
  // A button named `name` at the end of the list; returns its number.
  int AddButton(const std::string& name);
  // The dialogs of one window name shown so far.
  std::vector<Dialog> DialogsNamed(const std::string& name) const;
  // The message boxes shown so far.
  std::vector<Shown> Messages() const;
};

// A fresh folder with the named files (content: the name).
void MakeFiles(const std::string& folder, const std::vector<std::string>& names);
bool Exists(const std::string& path);
// The names of the regular files in a folder, sorted.
std::vector<std::string> FilesIn(const std::string& folder);
// Every path below a folder, files and folders, relative and sorted.
std::vector<std::string> TreeOf(const std::string& folder);

}  // namespace kp::test
