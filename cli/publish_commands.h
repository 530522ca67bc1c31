// The publishing commands of kestrelpane-cli: page, build, replace, export,
// browsers and test. Each runs the designer's own operation, with the
// command's arguments as the answers to its dialogs.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/cli_prompter.h"
#include "core/env.h"

namespace kp::cli {

// The exit code of the command, or kNotPublishCommand when `command` is not
// one of these.
inline constexpr int kNotPublishCommand = -1;
int RunPublish(Env& env, CliPrompter& prompter, const std::string& command,
               const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace kp::cli
