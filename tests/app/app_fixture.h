// Window tests: a program with a scratch program folder, an in-memory
// settings store and the real dialogs, which a test answers by finding the
// modal window as it opens.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "core/association.h"
#include "core/settings.h"
#include "properties/qt_prompter.h"
#include "tests/app/window_driver.h"
#include "tests/support/test_env.h"

namespace kp::apptest {

// Runs `act` on the first modal window of type T that opens within `ms`.
// Returns a flag that tells whether it ran.
template <class T>
std::shared_ptr<bool> WhenModal(std::function<void(T*)> act, int ms = 5000) {
  return WhenModalMatches([](QWidget* w) { return dynamic_cast<T*>(w) != nullptr; },
                          [act](QWidget* w) { act(dynamic_cast<T*>(w)); }, ms);
}

// Closes a modal window nobody answers, so that a failing test fails
// instead of hanging, and remembers its title.
class ModalWatchdog {
 public:
  ModalWatchdog();
  ~ModalWatchdog();
  std::vector<QString> unexpected;

 private:
  QTimer timer_;
  QWidget* seen_ = nullptr;
  QElapsedTimer since_;
};

// A window test class: every test function runs with a ModalWatchdog, and
// fails when a window was left waiting for an answer nobody gave.
class WatchedTest : public QObject {
  Q_OBJECT

 private slots:
  void init();
  void cleanup();

 private:
  std::unique_ptr<ModalWatchdog> watchdog_;
};

class FakeAssociation : public FileAssociation {
 public:
  bool AssociationMissing(Env&) override {
    ++checks;
    return missing;
  }
  bool RegisterAssociation(Env&) override {
    ++registered;
    missing = false;
    return true;
  }
  bool missing = false;
  int checks = 0;
  int registered = 0;
};

struct ShownBox {
  std::string title, text;
  Buttons buttons;
};

// The program's Qt prompter, recording every message box and file dialog.
// Message boxes and file dialogs take scripted answers unless the test asks
// for the real windows.
class TestPrompter : public QtPrompter {
 public:
  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                Icon icon) override;
  std::string SaveFileDialog(const FileDialog& d) override;
  std::string OpenFileDialog(const FileDialog& d) override;
  void ProcessEvents() override;

  bool realBoxes = false;
  bool realFileDialogs = false;
  std::deque<Answer> answers;  // empty: the first button
  std::deque<std::string> saveAnswers, openAnswers;  // empty: cancelled
  std::vector<ShownBox> boxes;
  std::vector<FileDialog> saveDialogs, openDialogs;
  std::function<void()> onProcessEvents;
};

// A program ready to start: the program folder holds a copy of the sample
// projects under "Projects"; the start dialog is switched off unless a test
// switches it on.
struct App {
  App();
  ~App();
  test::TempDir home;
  test::FaultFs fs;
  MemorySettings store;
  TestPrompter prompter;
  FakeAssociation association;
  std::unique_ptr<Program> program;
  std::vector<int> ended;  // the codes the process would have ended with

  Project& p() { return program->project(); }
  Env& env() { return program->env(); }
  frmMain* main() { return program->MainWindow(); }
  std::string demo() const { return home.path() + "/Projects/Demo.kpn"; }
};

// Copies the sample projects folder of the source tree to `dest`.
void CopySampleProjects(const std::string& dest);

// The marked text of line k of a language section: "«k:frmMain:12»".
std::string PseudoMark(const std::string& heading, size_t k);

// A language file whose every line of every section is its mark.
std::string PseudoLanguageFile();

// The text tables are program-wide: a test that translates them puts them
// back when this goes.
class TablesSnapshot {
 public:
  TablesSnapshot();
  ~TablesSnapshot();

 private:
  std::vector<std::pair<std::string*, std::string>> saved_;
};

}  // namespace kp::apptest
