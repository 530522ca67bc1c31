// `html` prints the code box exactly as the HTML window holds it.
#include <gtest/gtest.h>

#include "project/project_file.h"
#include "tests/cli/cli_fixture.h"
#include "tests/generate/generate_fixture.h"

namespace kp::test {
namespace {

TEST(CliHtml, WorkedTwoButtonExampleComesOutByteForByteThroughAProjectFile) {
  TestEnv t;
  Project p = TwoButtonExample(t);
  ASSERT_TRUE(SaveProject(p, t.env, t.home.file("Example.kpn"), true, false));
  CliRun r = RunCommand(t, "html", {t.home.file("Example.kpn")});
  ASSERT_EQ(r.code, 0) << r.err;
  const std::string expected = TwoButtonExampleBlock();
  EXPECT_EQ(r.out, expected);
}

TEST(CliHtml, BinaryPrintsTheSameBytesOnStdout) {
  TestEnv t;
  Project p = TwoButtonExample(t);
  ASSERT_TRUE(SaveProject(p, t.env, t.home.file("Example.kpn"), true, false));
  CliRun inProcess = RunCommand(t, "html", {t.home.file("Example.kpn")});
  CliRun binary = RunBinary("--settings " + t.home.file("s.ini") + " html " +
                            t.home.file("Example.kpn"));
  ASSERT_EQ(binary.code, 0) << binary.err;
  EXPECT_EQ(binary.out, inProcess.out);
}

}  // namespace
}  // namespace kp::test
