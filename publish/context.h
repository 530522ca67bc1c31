// What the publishing commands work on: the project, the outside world, the
// generator's flags and code box, and the parts of the HTML window that
// publishing reads and writes (auto-replace box, browser list). The windows
// own these; the commands only borrow them for one call.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/model.h"
#include "generate/html_generator.h"

namespace kp {

// The clock of the short waits. The program's only waits poll the clock and
// let window events run between short sleeps; tests put a clock here that
// advances without sleeping.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual std::chrono::milliseconds Now() = 0;
  virtual void Sleep(std::chrono::milliseconds ms) = 0;
};

class SteadyClock : public Clock {
 public:
  std::chrono::milliseconds Now() override;
  void Sleep(std::chrono::milliseconds ms) override;
};

// The windows as publishing sees them. Every call has a do-nothing default.
class PublishView {
 public:
  virtual ~PublishView() = default;
  // The HTML window's overlay (picUpLabel) with a text, and hiding it.
  virtual void ShowOverlay(const std::string& /*text*/) {}
  virtual void HideOverlay() {}
  // The main window's file menu, disabled while an export runs.
  virtual void SetFileMenuEnabled(bool /*enabled*/) {}
};

// cmbBrowser and the hidden path list List1 of the HTML window. List1 runs
// parallel to cmbBrowser without its first row ("Default").
struct BrowserList {
  std::vector<std::string> cmbBrowser;
  std::vector<std::string> List1;
  int listIndex = 0;
};

// The HTML window's controls that publishing reads.
struct HtmlWindowState {
  std::string txtAutoReplaceHTML_FileName;
  bool chkUpdateRequired = false;  // "update image, sound, .cab, .jar, and .class files"
  BrowserList browsers;
};

// Program-wide state of the publishing commands.
struct PublishState {
  // The last answer of the occupied-folder warning.
  bool bSomeFilesProceed = false;
  // Cancel in a copy error box silences every later copy error message
  // until the program ends.
  bool bStopCopyMessages = false;
  // Pages stay bare (no player element, no player file) whatever the
  // setting says; the command line's --no-player.
  bool bWithoutPlayer = false;
  // The last replacement in a page: a step failed (its message was shown),
  // or not every ticked applet was replaced. The command line's exit code.
  bool bReplaceFailed = false;
  bool bReplaceIncomplete = false;
};

struct PublishContext {
  Project& p;
  Env& env;
  GeneratorState& st;
  CodeBox& txtHTML;
  HtmlWindowState& win;
  PublishState& state;
  PublishView* view = nullptr;
  Clock* clock = nullptr;  // nullptr: the real clock
};

// Waits `ms` on the context's clock, letting window events run.
void WaitWithEvents(PublishContext& c, std::chrono::milliseconds ms);

// The folder of the browser test, the auto-replace temp file and the
// project backup: the program folder's "AppletTemp".
std::string AppletTempFolder(const Env& env);

}  // namespace kp
