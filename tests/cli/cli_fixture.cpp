#include "tests/cli/cli_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace kp::test {

CliRun RunBinary(const std::string& argsLine) {
  TempDir io;
  std::string cmd = std::string(KP_BINARY_DIR) + "/bin/kestrelpane-cli " + argsLine + " >" +
                    io.file("out") + " 2>" + io.file("err");
  int status = std::system(cmd.c_str());
  CliRun r;
  r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  r.out = io.read("out");
  r.err = io.read("err");
  return r;
}

void CopyDemoProject(const TempDir& dir) {
  namespace fs = std::filesystem;
  for (auto& e : fs::directory_iterator(SourcePath("data/Projects")))
    fs::copy_file(e.path(), fs::path(dir.path()) / e.path().filename());
}

}  // namespace kp::test
