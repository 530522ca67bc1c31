// The settings file as the program finds it on disk, through the real
// binary: a damaged button record in a file that cannot be written no
// longer locks the program out, and a file that holds no settings is named
// as such.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/conv.h"
#include "project/button_record.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

namespace fs = std::filesystem;

std::string DamagedIni() {
  return "[2.02]\nParams\\sDefaultBtn=\"" +
         ReplaceAll(kBuiltInDefaultButton, "0|0|100|", "0|0|abc|") + "\"\n";
}

TEST(CliSettingsFaults, ADamagedRecordInAReadOnlyFileNoLongerLocksTheProgramOut) {
  TempDir dir;
  CopyDemoProject(dir);
  dir.write("s.ini", DamagedIni());
  fs::permissions(dir.file("s.ini"), fs::perms::owner_read);
  const std::string args = "--settings " + dir.file("s.ini") + " --home " + dir.path() +
                           " info " + dir.file("Demo.kpn");
  for (int run = 1; run <= 2; ++run) {
    CliRun r = RunBinary(args);
    EXPECT_EQ(r.code, 0) << "run " << run << "\n" << r.err;
    EXPECT_NE(r.out.find("buttons 12"), std::string::npos) << r.out;
    EXPECT_NE(r.err.find("Registry settings are currupted"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("could not be written to the settings file " + dir.file("s.ini")),
              std::string::npos)
        << r.err;
    EXPECT_NE(r.err.find("write-protected"), std::string::npos) << r.err;
    EXPECT_EQ(r.err.find("Please restart"), std::string::npos) << r.err;
    EXPECT_EQ(dir.read("s.ini"), DamagedIni());
  }
}

TEST(CliSettingsFaults, ADamagedRecordInAWritableFileIsRestoredAndEndsWithThree) {
  TempDir dir;
  CopyDemoProject(dir);
  dir.write("s.ini", DamagedIni());
  const std::string args = "--settings " + dir.file("s.ini") + " --home " + dir.path() +
                           " info " + dir.file("Demo.kpn");
  CliRun first = RunBinary(args);
  EXPECT_EQ(first.code, 3) << first.err;
  EXPECT_NE(first.err.find("Settings restored. Please restart the program."), std::string::npos);
  CliRun second = RunBinary(args);
  EXPECT_EQ(second.code, 0) << second.err;
  EXPECT_EQ(second.err.find("currupted"), std::string::npos) << second.err;
}

TEST(CliSettingsFaults, AFileOfGarbageIsNamedNotReportedAsUnwritable) {
  TempDir dir;
  CopyDemoProject(dir);
  std::string garbage = "\x89PNG\r\n\x1a\n[[[ not ] settings\n\x01\x02=\xff\n[";
  for (int i = 0; i < 200; ++i) garbage.push_back(static_cast<char>((i * 37) & 0xFF));
  dir.write("s.ini", garbage);
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " --home " + dir.path() + " resave " +
                       dir.file("Demo.kpn") + " " + dir.file("Out.kpn"));
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.err.find("The settings file " + dir.file("s.ini") + " is not a settings file"),
            std::string::npos)
      << r.err;
  EXPECT_EQ(r.err.find("Unable to write"), std::string::npos) << r.err;
  EXPECT_EQ(dir.read("s.ini"), garbage);
  EXPECT_TRUE(fs::exists(dir.file("Out.kpn")));
}

TEST(CliSettingsFaults, AFolderInPlaceOfTheFileIsNamedAsUnreadable) {
  TempDir dir;
  CopyDemoProject(dir);
  fs::create_directories(dir.file("s.ini"));
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " --home " + dir.path() + " info " +
                       dir.file("Demo.kpn"));
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.err.find("The settings file " + dir.file("s.ini") + " cannot be read"),
            std::string::npos)
      << r.err;
  EXPECT_EQ(r.err.find("Unable to write"), std::string::npos) << r.err;
}

}  // namespace
}  // namespace kp::test
