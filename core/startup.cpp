#include "core/startup.h"

#include <set>

#include "core/conv.h"
#include "core/folders.h"
#include "core/fs.h"
#include "core/messages.h"
#include "core/settings.h"

namespace kp {

bool VersionSelfTest(std::string_view version) {
  const std::string header = "KestrelPane Project " + std::string(version);
  return header.find("KestrelPane Project 2.0") != std::string::npos;
}

bool IsResetSwitch(std::string_view commandLine) { return commandLine == kResetSwitch; }

std::string CommandLineName(std::string_view commandLine) {
  size_t b = commandLine.find_first_not_of(' ');
  if (b == std::string_view::npos) return "";
  size_t e = commandLine.find_last_not_of(' ');
  std::string_view name = commandLine.substr(b, e - b + 1);
  if (name.front() == '"') name = name.size() >= 2 ? name.substr(1, name.size() - 2) : "";
  return std::string(name);
}

std::string FindProjectFile(Env& env, const std::string& name) {
  if (!name.empty() && name.front() == '/' && env.fs.FileExists(name)) return name;
  // The user's own folder first: that is where the designer saves and where
  // the samples are copied to be saved again.
  if (!env.userFolder.empty()) {
    const std::string inUserFolder = env.userFolder + "/" + name;
    if (env.fs.FileExists(inUserFolder)) return inUserFolder;
  }
  const std::string inProgramFolder = env.programFolder + "/" + name;
  return env.fs.FileExists(inProgramFolder) ? inProgramFolder : "";
}

std::string LongPathName(const std::string& path) { return path; }

std::string NotFoundText(const std::string& commandLine) {
  return SharedText("sCommandFileNotFound", {commandLine});
}

SessionVars& Session() {
  static SessionVars vars;
  return vars;
}

SessionVars& InitSessionVars(Project& p, Env& env) {
  SessionVars& s = Session();
  p.sProjectName = "MyProject";
  s.bSaveBackup = TextToBool(GetParam(env, "bSaveBackup"));
  s.bShowGrid = TextToBool(GetParam(env, "bShowGrid"));
  s.bAlignXY = TextToBool(GetParam(env, "bAlignXY"));
  s.bAlignWH = TextToBool(GetParam(env, "bAlignWH"));
  s.bShowGridAsDots = TextToBool(GetParam(env, "bShowGridAsDots"));
  s.iGridX = MakeCInt(GetParam(env, "iGridX"), 10);
  s.iGridY = MakeCInt(GetParam(env, "iGridY"), 10);
  s.lGridColor = MakeCLng(GetParam(env, "lGridColor"), RGB(128, 128, 128));
  s.bAddJAR = TextToBool(GetParam(env, "bAddJAR"));
  p.bReady = true;
  p.bProjectSaved = true;
  (void)RemoveLeftovers(env);
  return s;
}

int RemoveLeftovers(Env& env) {
  const std::string write = EndBackslash(WriteFolder(env));
  std::set<std::string> folders = {write + "AppletTemp", write + "Projects", write + "Export"};
  for (const RecentEntry& e : GetRecent(env)) {
    const std::string folder = GetFolder(e.path);
    if (!folder.empty()) folders.insert(folder);
  }
  // Pages are replaced, and projects exported, in folders of the user's
  // choosing: a run killed there left its half-written backups and copies.
  for (const char* key : {"sLastReplacedFolder", "sExportFolder", "sProjectsPath"}) {
    const std::string folder = GetParam(env, key);
    if (!folder.empty()) folders.insert(folder);
  }
  int removed = 0;
  for (const std::string& folder : folders) removed += RemoveStaleTemps(folder);
  return removed;
}

void mInitilize() {
  Lang().TitleText = std::string("Kestrel Pane") + " " + sPRJ_FILE_VERSION;
  ResetSharedMessages();
}

}  // namespace kp
