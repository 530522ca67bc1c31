#include "cli/commands.h"

#include <QImage>
#include <QString>
#include <filesystem>
#include <map>
#include <ostream>

#include "actions/program.h"
#include "cli/publish_commands.h"
#include "core/conv.h"
#include "core/settings.h"
#include "generate/html_generator.h"
#include "project/project_file.h"
#include "render/scene.h"
#include "render/text.h"

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

// Bytes the surfaces of a render may take beyond the picture and a fifth
// of it: room for the buttons of any ordinary bar.
constexpr long long kRenderAllowance = 128LL * 1024 * 1024;

// The design window's picture of the applet: background, applet border
// and every button in the chosen state, stacked in button order.
int Render(Env& env, const std::vector<std::string>& a, std::ostream&, std::ostream& err) {
  std::string state = "UP";
  bool showGrid = false;
  for (size_t k = 2; k < a.size(); ++k) {
    if (a[k] == "--grid") {
      showGrid = true;
    } else if (a[k] == "--state" && k + 1 < a.size() && GetStateIndex(a[k + 1]) != 0) {
      state = a[++k];
    } else {
      err << "kestrelpane-cli: render PROJECT OUT.png [--state UP|OVER|DOWN] [--grid]\n";
      return kUsage;
    }
  }
  Project p;
  if (int rc = Load(p, env, a[0])) return rc;
  const std::string out = LongPath(a[1]);
  if (p.AppletWidth <= 0 || p.AppletHeight <= 0) {
    err << "kestrelpane-cli: the applet is " << p.AppletWidth << " x " << p.AppletHeight
        << " pixels: nothing to draw; " << out << " not written\n";
    return kFailure;
  }
  p.sState = state;
  QtTextMeasure measure;
  Scene scene(p, env.prompter, measure);
  // The picture is the design surface itself; the buttons' surfaces, the
  // glyph work and the writing of the file share what is left of a fifth
  // of it plus a fixed allowance.
  const long long design = 4LL * p.AppletWidth * p.AppletHeight;
  scene.surfaceBudget = design + design / 5 + kRenderAllowance;
  scene.grid.bShowGrid = showGrid;
  scene.grid.bShowGridAsDots = TextToBool(GetParam(env, "bShowGridAsDots"));
  scene.grid.iGridX = MakeCInt(GetParam(env, "iGridX"), 10);
  scene.grid.iGridY = MakeCInt(GetParam(env, "iGridY"), 10);
  scene.grid.lGridColor = MakeCLng(GetParam(env, "lGridColor"), 8421504);
  if (scene.SizeDesignToApplet()) scene.RepaintAll();
  if (scene.memoryFailures > 0) {
    err << "kestrelpane-cli: not enough memory to draw the applet; " << out << " not written\n";
    return kFailure;
  }
  const QImage picture = scene.TakeAppletPicture();
  if (picture.isNull()) {
    err << "kestrelpane-cli: not enough memory for the picture; " << out << " not written\n";
    return kFailure;
  }
  if (!picture.save(QString::fromStdString(out), "PNG")) {
    err << "kestrelpane-cli: cannot write " << out << "\n";
    return kFailure;
  }
  return kOk;
}

// A command takes (env, args, out); one that reports more than the
// loader's messages takes err as well.
struct Command {
  size_t minArgs, maxArgs;
  int (*fn)(Env&, const std::vector<std::string>&, std::ostream&);
  int (*fnErr)(Env&, const std::vector<std::string>&, std::ostream&, std::ostream&) = nullptr;
};

int RunOne(Env& env, CliPrompter& prompter, const std::string& command,
           const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  if (int rc = RunPublish(env, prompter, command, args, out, err); rc != kNotPublishCommand)
    return rc;
  static const std::map<std::string, Command> kCommands = {
      {"resave", {2, 2, Resave}},       {"actions", {1, 1, Actions}}, {"info", {1, 1, Info}},
      {"html", {1, 1, Html}},           {"render", {2, 5, nullptr, Render}}};
  auto it = kCommands.find(command);
  if (it == kCommands.end()) {
    err << "kestrelpane-cli: unknown command '" << command << "'\n";
    return kUsage;
  }
  const Command& c = it->second;
  if (args.size() < c.minArgs || args.size() > c.maxArgs) {
    err << "kestrelpane-cli: " << command << " takes " << c.minArgs;
    if (c.maxArgs != c.minArgs) err << " to " << c.maxArgs;
    err << " argument(s)\n";
    return kUsage;
  }
  return c.fnErr ? c.fnErr(env, args, out, err) : c.fn(env, args, out);
}

}  // namespace

int Run(Env& env, CliPrompter& prompter, const std::string& command,
        const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  // A run is one operation: its settings are written once, as it ends.
  SettingsBatch batch(env.store);
  return RunOne(env, prompter, command, args, out, err);
}

}  // namespace kp::cli
