#include "cli/commands.h"

#include <filesystem>
#include <map>
#include <ostream>

#include "actions/program.h"
#include "generate/html_generator.h"
#include "project/project_file.h"

namespace kp::cli {
namespace {

// The long, absolute form of a path, as the designer opens files.
std::string LongPath(const std::string& path) {
  std::error_code ec;
  auto abs = std::filesystem::absolute(path, ec);
  return ec ? path : abs.lexically_normal().string();
}

int Load(Project& p, Env& env, const std::string& path) {
  switch (LoadProject2(p, env, LongPath(path))) {
    case LoadResult::Loaded: return kOk;
    case LoadResult::ProcessEnds: return kProcessEnds;
    default: return kFailure;
  }
}

int Resave(Env& env, const std::vector<std::string>& a, std::ostream&) {
  Project p;
  if (int rc = Load(p, env, a[0])) return rc;
  return SaveProject(p, env, LongPath(a[1]), false, false) ? kOk : kFailure;
}

void PrintProgram(std::ostream& out, const std::string& owner, const char* key,
                  const std::string& program) {
  if (program.empty()) return;
  out << owner << " " << key << ":\n";
  for (const std::string& line : DisplayLines(program)) out << line << "\n";
}

int Actions(Env& env, const std::vector<std::string>& a, std::ostream& out) {
  Project p;
  if (int rc = Load(p, env, a[0])) return rc;
  // Applet first (Start, OVER, DOWN, OUT), then each button's six events.
  static const char* kAppletOrder[] = {"AppletProgramStart", "AppletProgramOVER",
                                       "AppletProgramDOWN", "AppletProgramOUT"};
  static const char* kButtonOrder[] = {"ProgramUP",   "ProgramOVER",  "ProgramLEAVE",
                                       "ProgramDOWN", "ProgramCHECK", "ProgramUNCHECK"};
  tButton none;
  for (const char* key : kAppletOrder) PrintProgram(out, "Applet", key, *ProgramField(key, p, none));
  for (int i = 1; i <= p.ButtonCount; ++i)
    for (const char* key : kButtonOrder)
      PrintProgram(out, p.button(i).sBName, key, *ProgramField(key, p, p.button(i)));
  return kOk;
}

int Info(Env& env, const std::vector<std::string>& a, std::ostream& out) {
  Project p;
  if (int rc = Load(p, env, a[0])) return rc;
  out << "applet " << p.AppletWidth << "x" << p.AppletHeight << "\n";
  out << "buttons " << p.ButtonCount << "\n";
  for (int i = 1; i <= p.ButtonCount; ++i) {
    const tButton& b = p.button(i);
    out << i << " " << b.sBName << " " << b.x << "," << b.y << " " << b.Width << "x" << b.Height
        << "\n";
  }
  return kOk;
}

// The code box as the HTML window shows it after its activation: CR LF
// line ends, written byte for byte.
int Html(Env& env, const std::vector<std::string>& a, std::ostream& out) {
  Project p;
  if (int rc = Load(p, env, a[0])) return rc;
  GeneratorState st;
  st.bAddJAR = ReadAddJAR(env);
  CodeBox txtHTML;
  HTMLWindowActivate(p, env, st, txtHTML);
  out.write(txtHTML.text.data(), static_cast<std::streamsize>(txtHTML.text.size()));
  out.flush();
  return out ? kOk : kFailure;
}

struct Command {
  size_t args;
  int (*fn)(Env&, const std::vector<std::string>&, std::ostream&);
};

}  // namespace

int Run(Env& env, CliPrompter&, const std::string& command, const std::vector<std::string>& args,
        std::ostream& out, std::ostream& err) {
  static const std::map<std::string, Command> kCommands = {
      {"resave", {2, Resave}}, {"actions", {1, Actions}}, {"info", {1, Info}},
      {"html", {1, Html}}};
  auto it = kCommands.find(command);
  if (it == kCommands.end()) {
    err << "kestrelpane-cli: unknown command '" << command << "'\n";
    return kUsage;
  }
  if (args.size() != it->second.args) {
    err << "kestrelpane-cli: " << command << " takes " << it->second.args << " argument(s)\n";
    return kUsage;
  }
  return it->second.fn(env, args, out);
}

}  // namespace kp::cli
