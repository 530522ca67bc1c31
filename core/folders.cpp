#include "core/folders.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

// Set by the build from the install layout; a build without it still finds
// the usual one.
#ifndef KP_INSTALLED_DATA
#define KP_INSTALLED_DATA "../share/kestrelpane"
#endif

namespace kp {

namespace {

std::string Absolute(const std::string& folder) {
  std::error_code ec;
  auto p = std::filesystem::absolute(folder, ec);
  std::string s = ec ? folder : p.lexically_normal().string();
  while (s.size() > 1 && s.back() == '/') s.pop_back();
  return s;
}

std::string Env_(const char* name) {
  const char* v = std::getenv(name);
  return v ? v : "";
}

std::string UserFolderOf(const FolderInputs& in) {
  // A relative XDG_DATA_HOME counts as unset, as desktop programs treat it.
  std::string base = !in.dataHome.empty() && in.dataHome.front() == '/'
                         ? in.dataHome
                         : in.userHome + "/.local/share";
  return Absolute(base + "/" + kUserFolderName);
}

}  // namespace

std::string WriteFolder(const Env& env) {
  return env.userFolder.empty() ? env.programFolder : env.userFolder;
}

std::string ProgramFile(const Env& env, const std::string& name) {
  if (!env.userFolder.empty()) {
    const std::string own = env.userFolder + "/" + name;
    if (env.fs.FileExists(own)) return own;
  }
  return env.programFolder + "/" + name;
}

Folders ResolveFolders(const FolderInputs& in) {
  Folders f;
  const std::string exeDir =
      in.exePath.empty() ? Absolute(".")
                         : Absolute(std::filesystem::path(in.exePath).parent_path().string());
  const std::string installedDir =
      in.installedRelative.empty() ? "" : Absolute(exeDir + "/" + in.installedRelative);
  if (!in.homeOption.empty()) {
    f.programFolder = Absolute(in.homeOption);
  } else if (!in.homeEnv.empty()) {
    f.programFolder = Absolute(in.homeEnv);
  } else if (in.fileExists(exeDir + "/Kestrel.ini")) {
    f.programFolder = exeDir;
  } else if (!installedDir.empty() && in.fileExists(installedDir + "/Kestrel.ini")) {
    f.programFolder = installedDir;
  } else {
    f.programFolder = exeDir;
  }
  // Named by --home too, the installed folder stays read-only: a package's
  // files are the package manager's, even for root.
  f.installed = !installedDir.empty() && f.programFolder == installedDir &&
                f.programFolder != exeDir;
  if (f.installed || !in.writable(f.programFolder)) f.userFolder = UserFolderOf(in);
  return f;
}

Folders ResolveFolders(const std::string& homeOption) {
  FolderInputs in;
  in.homeOption = homeOption;
  in.homeEnv = Env_("KESTRELPANE_HOME");
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (!ec) in.exePath = exe.string();
  in.dataHome = Env_("XDG_DATA_HOME");
  in.userHome = Env_("HOME");
  in.installedRelative = KP_INSTALLED_DATA;
  in.writable = [](const std::string& dir) { return access(dir.c_str(), W_OK) == 0; };
  in.fileExists = [](const std::string& path) {
    std::error_code e;
    return std::filesystem::is_regular_file(path, e);
  };
  return ResolveFolders(in);
}

void PrepareUserFolder(Env& env) {
  if (env.userFolder.empty()) return;
  const std::string projects = env.userFolder + "/Projects";
  if (env.fs.DirExists(projects)) return;
  // Each level on its own: the user's data home may not exist yet either.
  std::string path;
  for (const auto& part : std::filesystem::path(projects)) {
    if (part == "/") {
      path = "";
      continue;
    }
    path += "/" + part.string();
    if (!env.fs.DirExists(path)) env.fs.MakeDir(path);
  }
  const std::string samples = env.programFolder + "/Projects";
  for (const std::string& name : env.fs.ListFiles(samples))
    env.fs.CopyFile(samples + "/" + name, projects + "/" + name);
}

}  // namespace kp
