// The commands of kestrelpane-cli, separate from argument parsing so that
// each is a function of an Env and its arguments.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/cli_prompter.h"
#include "core/env.h"

namespace kp::cli {

enum Exit { kOk = 0, kFailure = 1, kUsage = 2, kProcessEnds = 3 };

int Run(Env& env, CliPrompter& prompter, const std::string& command,
        const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace kp::cli
