// The program's contact with everything outside the model: files, the
// per-user settings store, questions and messages to the user, and the
// windows that show the model. Core code reaches the outside only through
// an Env, so tests run headless with scripted answers and injected faults.
#pragma once

#include <string>

#include "core/fs.h"
#include "core/launcher.h"
#include "core/prompter.h"
#include "core/settings_store.h"

namespace kp {

struct Project;

// What the windows do when the model changes under them. Every call has a
// do-nothing default so headless callers need not care.
class ProjectView {
 public:
  virtual ~ProjectView() = default;
  // The applet record was replaced: background, size, picture, repaint.
  virtual void SetMainParams(Project&) {}
  // The button list and the design window were emptied.
  virtual void ClearButtons() {}
  // Button i exists now: create its surface and list row.
  virtual void LoadButton(Project&, int /*i*/) {}
  virtual void SelectButton(Project&, int /*i*/) {}
  virtual void SetTitles(const std::string& /*main*/, const std::string& /*design*/) {}
  virtual void HideHTMLWindow() {}
  // The recent-file list in the settings changed.
  virtual void RecentChanged() {}
};

struct Env {
  FileSystem& fs;
  SettingsStore& store;
  Prompter& prompter;
  ProjectView& view;
  // The program folder (Kestrel.ini, Samples/, Projects/, AppletTemp/ ...),
  // without a trailing separator.
  std::string programFolder;
  // Starts outside programs (browsers, the sound converter, the desktop's
  // opener); nullptr where nothing may be started.
  Launcher* launcher = nullptr;
  // Where the program writes when the program folder is installed for all
  // users or not the user's to write (core/folders.h); empty: the program
  // folder takes the writes.
  std::string userFolder{};
};

}  // namespace kp
