// Starting outside programs: the desktop's own opener for a file or a
// folder, a named program (a browser, the sound converter). The program
// never waits for what it starts and does not track it afterwards.
#pragma once

#include <string>
#include <vector>

#include "core/fs.h"

namespace kp {

class Launcher {
 public:
  virtual ~Launcher() = default;
  // Opens a file with the program the desktop associates with it (the
  // shell verb "open").
  virtual IoStatus Open(const std::string& path) = 0;
  // Shows a folder in the file manager (the shell verb "explore").
  virtual IoStatus Explore(const std::string& folder) = 0;
  // Starts `program` with `args`, in `workDir` when it is not "". Detached:
  // the process is left to run on its own and the call returns once it has
  // started; otherwise the call waits and fails on a non-zero exit. A
  // program that cannot be started fails with the system's text.
  virtual IoStatus Run(const std::string& program, const std::vector<std::string>& args,
                       bool detached, const std::string& workDir = "") = 0;
  // Starts `program` and waits for it, as Run does; what it wrote to its
  // error output comes back in `errors`, the tool's own word on a failure.
  virtual IoStatus RunForErrors(const std::string& program, const std::vector<std::string>& args,
                                std::string& errors) {
    errors.clear();
    return Run(program, args, false);
  }
};

// fork and exec. Open and Explore go through xdg-open, detached, so that a
// desktop without a running file manager cannot block the caller.
class PosixLauncher : public Launcher {
 public:
  IoStatus Open(const std::string& path) override;
  IoStatus Explore(const std::string& folder) override;
  IoStatus Run(const std::string& program, const std::vector<std::string>& args, bool detached,
               const std::string& workDir = "") override;
  IoStatus RunForErrors(const std::string& program, const std::vector<std::string>& args,
                        std::string& errors) override;

  // The opener; a test or a packager may point it elsewhere.
  std::string opener = "xdg-open";
};

}  // namespace kp
