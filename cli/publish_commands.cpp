#include "cli/publish_commands.h"

#include <filesystem>
#include <map>
#include <ostream>
#include <set>

#include "cli/commands.h"
#include "generate/html_generator.h"
#include "generate/js_caller.h"
#include "project/project_file.h"
#include "publish/browser_test.h"
#include "publish/browsers.h"
#include "publish/build.h"
#include "publish/export.h"
#include "publish/replace.h"

namespace kp::cli {
namespace {

std::string LongPath(const std::string& path) {
  std::error_code ec;
  auto abs = std::filesystem::absolute(path, ec);
  return ec ? path : abs.lexically_normal().string();
}

// A command line split into positional arguments and flags; a flag named
// in `valued` takes the next argument as its value.
struct Parsed {
  std::vector<std::string> positional;
  std::map<std::string, std::string> flags;
  std::string error;
};

Parsed Parse(const std::vector<std::string>& args, const std::set<std::string>& plain,
             const std::set<std::string>& valued) {
  Parsed r;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a.size() > 2 && a.compare(0, 2, "--") == 0) {
      if (plain.count(a)) {
        r.flags[a] = "";
      } else if (valued.count(a)) {
        if (i + 1 >= args.size()) {
          r.error = a + " needs a value";
          return r;
        }
        r.flags[a] = args[++i];
      } else {
        r.error = "unknown option " + a;
        return r;
      }
    } else {
      r.positional.push_back(a);
    }
  }
  return r;
}

// A comma-separated list of row numbers from 1.
bool ParseRows(const std::string& text, std::vector<int>& rows) {
  rows.clear();
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(',', start);
    if (end == std::string::npos) end = text.size();
    std::string item = text.substr(start, end - start);
    if (item.empty() || item.find_first_not_of("0123456789") != std::string::npos ||
        item.size() > 6)
      return false;
    int row = std::stoi(item);
    if (row < 1) return false;
    rows.push_back(row);
    start = end + 1;
  }
  return !rows.empty();
}

// The project loaded, and the HTML window's code box as its activation
// leaves it.
struct Session {
  Project p;
  GeneratorState st;
  CodeBox txtHTML;
  HtmlWindowState win;
  PublishState state;
};

int LoadSession(Env& env, Session& s, const std::string& path, const Parsed& a) {
  switch (LoadProject2(s.p, env, LongPath(path))) {
    case LoadResult::Loaded:
      break;
    case LoadResult::ProcessEnds:
      return kProcessEnds;
    default:
      return kFailure;
  }
  s.st.bAddJAR = ReadAddJAR(env);
  HTMLWindowActivate(s.p, env, s.st, s.txtHTML);
  s.win.txtAutoReplaceHTML_FileName = s.p.sOutputHTML;
  s.state.bWithoutPlayer = a.flags.count("--no-player") > 0;
  return kOk;
}

// Copies that failed without a message box of their own (the copy loop
// keeps some silent) are told here, so that no failure passes unsaid.
bool TellCopyFailures(std::ostream& err, const std::string& command, const CopyReport& r) {
  if (r.failed == 0) return false;
  if (r.failed > r.reported)
    for (const std::string& f : r.failures)
      err << "kestrelpane-cli: " << command << ": not copied: " << f << "\n";
  err << "kestrelpane-cli: " << command << ": " << r.failed
      << (r.failed == 1 ? " file" : " files") << " could not be copied\n";
  return true;
}

int Usage(std::ostream& err, const std::string& command, const std::string& text) {
  err << "kestrelpane-cli: " << command << ": " << text << "\n";
  return kUsage;
}

int Page(Env& env, CliPrompter&, const Parsed& a, std::ostream& out, std::ostream&) {
  Session s;
  if (int rc = LoadSession(env, s, a.positional[0], a)) return rc;
  FixBodyTag(s.p, s.st.bUseJSCaller);
  PublishContext c{s.p, env, s.st, s.txtHTML, s.win, s.state};
  const std::string page = BuildPageText(c);
  out.write(page.data(), static_cast<std::streamsize>(page.size()));
  out.flush();
  return out ? kOk : kFailure;
}

int Build(Env& env, CliPrompter& prompter, const Parsed& a, std::ostream& out, std::ostream& err) {
  Session s;
  if (int rc = LoadSession(env, s, a.positional[0], a)) return rc;
  prompter.fileAnswers = {LongPath(a.positional[1])};
  if (a.flags.count("--yes")) prompter.dialogChoice["frmSomeFilesWarning"] = 0;
  PublishContext c{s.p, env, s.st, s.txtHTML, s.win, s.state};
  BuildReport r = BuildApplet(c, !a.flags.count("--html-only"));
  if (r.result == BuildResult::Cancelled) {
    err << "kestrelpane-cli: build: not built (use --yes to build into a folder that holds "
           "files)\n";
    return kFailure;
  }
  if (r.result == BuildResult::WriteFailed) return kFailure;
  out << r.page << "\n";
  return TellCopyFailures(err, "build", r.media) ? kFailure : kOk;
}

int Replace(Env& env, CliPrompter& prompter, const Parsed& a, std::ostream& out,
            std::ostream& err) {
  std::vector<int> rows;
  if (auto it = a.flags.find("--select"); it != a.flags.end()) {
    if (!ParseRows(it->second, rows))
      return Usage(err, "replace", "--select takes row numbers from 1, such as 1,3");
    prompter.checkListRows = rows;
  }
  Session s;
  if (int rc = LoadSession(env, s, a.positional[0], a)) return rc;
  s.win.txtAutoReplaceHTML_FileName = LongPath(a.positional[1]);
  s.win.chkUpdateRequired = a.flags.count("--update-files") > 0;
  PublishContext c{s.p, env, s.st, s.txtHTML, s.win, s.state};
  if (!btnAutoReplaceHTML_Click(c)) return kFailure;
  if (s.state.bReplaceFailed) return kFailure;
  out << s.win.txtAutoReplaceHTML_FileName << "\n";
  return s.state.bReplaceIncomplete ? kFailure : kOk;
}

int Export(Env& env, CliPrompter& prompter, const Parsed& a, std::ostream& out, std::ostream& err) {
  Session s;
  if (int rc = LoadSession(env, s, a.positional[0], a)) return rc;
  prompter.fileAnswers = {LongPath(a.positional[1])};
  if (a.flags.count("--yes")) prompter.dialogChoice["frmSomeFilesWarning"] = 0;
  PublishContext c{s.p, env, s.st, s.txtHTML, s.win, s.state};
  ExportReport r = mnuExport_Click(c);
  if (r.path.empty()) {
    err << "kestrelpane-cli: export: not exported (use --yes to export into a folder that holds "
           "files)\n";
    return kFailure;
  }
  out << r.path << "\n";
  const bool copyFailed = TellCopyFailures(err, "export", r.media);
  return r.saved && !copyFailed ? kOk : kFailure;
}

int Browsers(Env& env, CliPrompter&, const Parsed&, std::ostream& out, std::ostream&) {
  DetectBrowsers(env, nullptr, BrowserSearch::FromEnvironment());
  BrowserList list;
  GetBrowsers(env, list);
  for (size_t i = 0; i < list.cmbBrowser.size(); ++i) {
    out << i << "\t" << list.cmbBrowser[i];
    if (i > 0) out << "\t" << list.List1[i - 1];
    out << "\n";
  }
  return kOk;
}

int Test(Env& env, CliPrompter&, const Parsed& a, std::ostream& out, std::ostream& err) {
  Session s;
  if (int rc = LoadSession(env, s, a.positional[0], a)) return rc;
  GetBrowsers(env, s.win.browsers);
  if (auto it = a.flags.find("--browser"); it != a.flags.end()) {
    const std::string& n = it->second;
    if (n.empty() || n.size() > 6 || n.find_first_not_of("0123456789") != std::string::npos ||
        static_cast<size_t>(std::stoi(n)) >= s.win.browsers.cmbBrowser.size())
      return Usage(err, "test", "--browser takes a row of the 'browsers' list");
    s.win.browsers.listIndex = std::stoi(n);
  }
  PublishContext c{s.p, env, s.st, s.txtHTML, s.win, s.state};
  const std::string page = TestInBrowser(c);
  if (page.empty()) return kFailure;
  out << page << "\n";
  return kOk;
}

struct PublishCommand {
  size_t positional;
  std::set<std::string> plain;
  std::set<std::string> valued;
  int (*fn)(Env&, CliPrompter&, const Parsed&, std::ostream&, std::ostream&);
};

}  // namespace

int RunPublish(Env& env, CliPrompter& prompter, const std::string& command,
               const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  static const std::map<std::string, PublishCommand> kCommands = {
      {"page", {1, {"--no-player"}, {}, Page}},
      {"build", {2, {"--html-only", "--yes", "--no-player"}, {}, Build}},
      {"replace", {2, {"--update-files", "--no-player"}, {"--select"}, Replace}},
      {"export", {2, {"--yes"}, {}, Export}},
      {"browsers", {0, {}, {}, Browsers}},
      {"test", {1, {"--no-player"}, {"--browser"}, Test}},
  };
  auto it = kCommands.find(command);
  if (it == kCommands.end()) return kNotPublishCommand;
  Parsed parsed = Parse(args, it->second.plain, it->second.valued);
  if (!parsed.error.empty()) return Usage(err, command, parsed.error);
  if (parsed.positional.size() != it->second.positional) {
    err << "kestrelpane-cli: " << command << " takes " << it->second.positional << " argument(s)\n";
    return kUsage;
  }
  return it->second.fn(env, prompter, parsed, out, err);
}

}  // namespace kp::cli
