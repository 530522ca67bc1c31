// The user's list of browsers to test in. The program fills it by itself,
// once per browser, and the user adds, edits and removes entries; the HTML
// window's cmbBrowser shows "Default" and then the list. All keys live in
// the section "2.02/Browsers": Count, B<i>, Name<i>, Selected and one
// "found once" flag per detected browser.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/prompter.h"
#include "publish/context.h"

namespace kp {

// GetBrowsers: "Default" and the names into cmbBrowser, the paths into
// List1, the row from Selected (-1 and anything out of range: "Default").
void GetBrowsers(Env& env, BrowserList& list);
// cmbBrowser_Click: the chosen row is stored in Selected.
void cmbBrowser_Click(Env& env, BrowserList& list, int index);

// frmBrowserSetup: two parallel lists, edited in memory; only Ok stores.
struct BrowserSetup {
  std::vector<std::string> ListNames;
  std::vector<std::string> ListPaths;
  int selected = -1;  // the selected row of both lists
};
BrowserSetup BrowserSetup_Load(Env& env);
// btnOK_Click: the rows become the list; Selected becomes "-1", so the HTML
// window goes back to "Default".
void BrowserSetup_OK(Env& env, const BrowserSetup& setup);
void BrowserSetup_Remove(BrowserSetup& setup);

// frmAddEditBrowser.
struct AddEditBrowser {
  std::string txtPath;
  std::string txtName;
};
// btnBrowse: a file dialog for the program; the chosen path fills txtPath,
// and an empty txtName is filled from the file's name.
void AddEditBrowser_Browse(Env& env, AddEditBrowser& box);
// The shown name of a program path: the file name without extension, first
// letter in capitals.
std::string BrowserNameFromPath(const std::string& path);
// btnOK: Add appends to both lists, Edit changes the selected row. An
// empty name becomes "Unnamed".
void AddEditBrowser_OKAdd(BrowserSetup& setup, const AddEditBrowser& box);
void AddEditBrowser_OKEdit(BrowserSetup& setup, const AddEditBrowser& box);

// --- Detection ---------------------------------------------------------------

// Reads a value of the machine's registry ("" on any failure). A platform
// without one has none: the two registry detections then find nothing.
using RegistryReader = std::function<std::string(const std::string& key, const std::string& value)>;

// The Netscape Navigator and Internet Explorer entries, each found once.
bool DetectNetscape(Env& env, const RegistryReader& reg);
bool DetectExplorer(Env& env, const RegistryReader& reg);
// A version text is kept to its first four characters, trimmed.
std::string ShortVersion(const std::string& version);

// Where this platform's browsers are looked for: the program search path
// and the XDG data folders (each with an "applications" folder of .desktop
// files), the user's own first.
struct BrowserSearch {
  std::string path;                   // as $PATH
  std::vector<std::string> dataDirs;  // as $XDG_DATA_HOME, then $XDG_DATA_DIRS
  static BrowserSearch FromEnvironment();
};

// Firefox, Chromium, Google Chrome and Epiphany, in that order, each
// appended once (flag keys "Firefox", "Chromium", "GoogleChrome",
// "Epiphany"): found on the search path, else through its .desktop file.
// Returns the number of entries added.
int DetectDesktopBrowsers(Env& env, const BrowserSearch& search);

// What the start-up runs last: the registry detections, then this
// platform's.
void DetectBrowsers(Env& env, const RegistryReader& reg, const BrowserSearch& search);

// The program's path named by a .desktop file's Exec line ("" when none).
std::string DesktopExecProgram(const std::string& desktopFileText);

}  // namespace kp
