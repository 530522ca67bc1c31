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
  const std::string expected =
      "<!-- BEGIN GENERATED CODE: Kestrel Pane: https://kestrelpane.example/ -->\r\n"
      "<applet name=\"KestrelPane\" code=\"KestrelPane.class\" codebase=\".\" "
      "archive=\"KestrelPane.jar\" width=420 height=180>\r\n"
      "<Param Name=\"cabbase\" value=\"KestrelPane.cab\">\r\n"
      "<Param Name=\"p\" value=\"FFFFFF|Loading...|FF|FFFFFF|13|1|0|2|0|0|||0|7|0||||0|0|1|1|0|1|"
      "0|0|FFFF00|0|FF|1|300|2500|0|13|0|||0|0|0|0|\">\r\n"
      "<Param Name=\"1\" value=\"10|^|100|30|1|0|FF0000|0|808080|C0C0C0|808080|C0C0C0|808080|"
      "C0C0C0|0|^z^69|^21|^22|^20|^213|^2Home|^2index.htm|Back to the start||^e\">\r\n"
      "<Param Name=\"2\" value=\"120|10|100|30|1|0|FF0000|0|^|C0C0C0|0|C0C0C0|0|C0C0C0|0|^z^62|9|"
      "^|0|^813|^2News|^2news.htm||main|n.gif||^2click.au||^6What's new|Latest&!0news|\">\r\n"
      "<BLINK><b>Java is disabled in your Browser!</b></BLINK>\r\n"
      "</applet>\r\n"
      "<!-- END GENERATED CODE -->\r\n";
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
