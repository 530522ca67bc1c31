// The HTML window's tests: a program started on a copy of the demo, with
// a prompter that also scripts the publishing dialogs and a launcher that
// only records what it was asked to start.
#pragma once

#include <QApplication>
#include <algorithm>
#include <QElapsedTimer>
#include <QTest>
#include <QWidget>
#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/frm_applet_paths.h"
#include "app/frm_html.h"
#include "app/frm_sur_html.h"
#include "app/html_windows.h"
#include "app/program.h"
#include "core/launcher.h"
#include "core/settings.h"
#include "design/frm_design.h"
#include "properties/frm_main.h"
#include "tests/app/app_fixture.h"

namespace kp::apptest {

// The program's prompter with the publishing dialogs scripted too: a
// Dialog is answered with the next index of `dialogAnswers` (none: its
// first closing button), a check list with the next tick pattern of
// `checkListAnswers` (none, or nullopt: Cancel).
class PublishPrompter : public TestPrompter {
 public:
  DialogResult ShowDialog(const Dialog& d) override {
    dialogs.push_back(d);
    if (realDialogs) return QtPrompter::ShowDialog(d);
    int button = -1;
    if (!dialogAnswers.empty()) {
      button = dialogAnswers.front();
      dialogAnswers.pop_front();
    } else {
      for (size_t i = 0; i < d.buttons.size() && button < 0; ++i)
        if (!d.buttons[i].action) button = static_cast<int>(i);
    }
    return {button < 0 ? 0 : button, d.checked};
  }
  bool ShowCheckList(CheckList& list) override {
    checkLists.push_back(list);
    if (realDialogs) return QtPrompter::ShowCheckList(list);
    if (checkListAnswers.empty()) return false;
    std::optional<std::vector<bool>> a = checkListAnswers.front();
    checkListAnswers.pop_front();
    if (!a) return false;
    list.ticked = *a;
    return true;
  }

  bool Notice(const std::string& title, const std::string& text, const std::string& checkCaption,
              bool checked) override {
    notices.push_back(title + ": " + text);
    if (realDialogs) return QtPrompter::Notice(title, text, checkCaption, checked);
    return checked;
  }

  bool realDialogs = false;
  std::vector<std::string> notices;
  std::vector<Dialog> dialogs;
  std::deque<int> dialogAnswers;
  std::vector<CheckList> checkLists;
  std::deque<std::optional<std::vector<bool>>> checkListAnswers;

  bool ShownDialog(const std::string& name) const {
    for (const Dialog& d : dialogs)
      if (d.name == name) return true;
    return false;
  }
};

// Records what would have been started.
class RecordingLauncher : public Launcher {
 public:
  struct Start {
    std::string what;  // "open", "explore" or the program
    std::vector<std::string> args;
    std::string workDir;
  };
  IoStatus Open(const std::string& path) override {
    starts.push_back({"open", {path}, ""});
    return {};
  }
  IoStatus Explore(const std::string& folder) override {
    starts.push_back({"explore", {folder}, ""});
    return {};
  }
  IoStatus Run(const std::string& program, const std::vector<std::string>& args, bool,
               const std::string& workDir) override {
    starts.push_back({program, args, workDir});
    return {};
  }
  std::vector<Start> starts;
};

inline std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << bytes;
}

inline bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The files of a folder, by name.
inline std::vector<std::string> FilesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (const auto& e : std::filesystem::directory_iterator(folder, ec))
    if (e.is_regular_file()) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// Lets the window system deliver what is pending.
inline void Settle() {
  for (int i = 0; i < 5; ++i) {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}

// Waits until `w` is the application's active window. (A window's platform
// side counts as active while a transient child of it is, so that is not
// asked.)
inline bool WaitActive(QWidget* w, int ms = 3000) {
  QElapsedTimer clock;
  clock.start();
  while (QApplication::activeWindow() != w->window()) {
    if (clock.elapsed() > ms) return false;
    QTest::qWait(10);
  }
  Settle();
  return true;
}

// Makes a window the active one and waits until it is.
inline bool Activate(QWidget* w) {
  w->show();
  w->raise();
  w->activateWindow();
  return WaitActive(w);
}

// A program on a copy of the demo project, its HTML window not yet shown.
struct HtmlApp {
  HtmlApp() {
    CopySampleProjects(home.path() + "/Projects");
    store.Set(kSecParams, "DontShow_frm_Create_Recent", "1");
    store.Set(kSecParams, "DontAskToAssociate", "1");
    program = std::make_unique<Program>(fs, store, prompter, association, home.path(), &launcher);
    program->endProcess = [this](int code) { ended.push_back(code); };
  }
  ~HtmlApp() { program.reset(); }

  // Main with the demo named on the command line.
  bool StartOnDemo() { return program->Main(demo()) == -1 && p().bReady; }

  Project& p() { return program->project(); }
  Env& env() { return program->env(); }
  frmMain* main() { return program->MainWindow(); }
  frmDesign* design() { return main()->Design(); }
  HtmlWindows& html() { return *program->Html(); }
  std::string demo() const { return home.path() + "/Projects/Demo.kpn"; }
  std::string code() { return html().HTML()->Code().text; }

  // The main window's Build button, as the user presses it.
  frmHTML* OpenHTML() {
    QTest::mouseClick(main()->btnBuild, Qt::LeftButton);
    frmHTML* w = html().ExistingHTML();
    if (w) (void)WaitActive(w);
    Settle();
    return w;
  }

  test::TempDir home;
  test::FaultFs fs;
  MemorySettings store;
  PublishPrompter prompter;
  FakeAssociation association;
  RecordingLauncher launcher;
  std::unique_ptr<Program> program;
  std::vector<int> ended;
};

}  // namespace kp::apptest
