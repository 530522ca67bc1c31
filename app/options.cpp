#include "app/options.h"

#include <cstdlib>
#include <filesystem>

namespace kp {

StartOptions ParseStartOptions(const std::vector<std::string>& args) {
  StartOptions o;
  size_t i = 0;
  for (; i < args.size(); ++i) {
    if (args[i] == "--home" && i + 1 < args.size()) o.home = args[++i];
    else if (args[i] == "--settings" && i + 1 < args.size()) o.settingsFile = args[++i];
    else break;
  }
  for (size_t k = i; k < args.size(); ++k) {
    if (k > i) o.commandLine += ' ';
    o.commandLine += args[k];
  }
  return o;
}

namespace {

std::string Absolute(const std::string& folder) {
  std::error_code ec;
  auto p = std::filesystem::absolute(folder, ec);
  std::string s = ec ? folder : p.lexically_normal().string();
  while (s.size() > 1 && s.back() == '/') s.pop_back();
  return s;
}

}  // namespace

std::string ExecutablePath() {
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::string() : exe.string();
}

std::string ProgramFolder(const std::string& homeOption) {
  if (!homeOption.empty()) return Absolute(homeOption);
  if (const char* env = std::getenv("KESTRELPANE_HOME"); env && *env) return Absolute(env);
  std::string exe = ExecutablePath();
  return exe.empty() ? Absolute(".") : Absolute(std::filesystem::path(exe).parent_path().string());
}

std::string UserDataHome() {
  if (const char* d = std::getenv("XDG_DATA_HOME"); d && *d == '/') return d;
  const char* home = std::getenv("HOME");
  return std::string(home ? home : "") + "/.local/share";
}

}  // namespace kp
