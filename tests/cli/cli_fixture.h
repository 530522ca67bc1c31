// Running the CLI's commands in-process, and the real binary for what only
// a process shows (exit codes, the settings file, stdout bytes).
#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/cli_prompter.h"
#include "cli/commands.h"
#include "tests/support/test_env.h"

namespace kp::test {

struct CliRun {
  int code = 0;
  std::string out, err;
};

inline CliRun RunCommand(TestEnv& t, const std::string& command,
                         const std::vector<std::string>& args) {
  std::ostringstream out, err;
  CliPrompter prompter(err);
  Env env{t.fs, t.store, prompter, t.view, t.home.path()};
  CliRun r;
  // Some commands change into the folder they work in (as the program
  // does); the test's own folder must survive the temp folder's removal.
  const auto cwd = std::filesystem::current_path();
  r.code = cli::Run(env, prompter, command, args, out, err);
  std::filesystem::current_path(cwd);
  r.out = out.str();
  r.err = err.str();
  return r;
}

// The built program, run with a shell command line; stdout and stderr are
// captured to files.
CliRun RunBinary(const std::string& argsLine);

// Copies data/Projects into a fresh folder and returns the folder.
void CopyDemoProject(const TempDir& dir);

}  // namespace kp::test
