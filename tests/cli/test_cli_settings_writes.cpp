// A run of the command line program is one operation: whatever it changes
// in the settings is written once, as it ends.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/cli_prompter.h"
#include "cli/commands.h"
#include "core/settings.h"
#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

// Counts the changes asked of the store, besides the writes it makes.
class CountingStore : public MemorySettings {
 public:
  int changes = 0;
  std::string Set(const std::string& s, const std::string& k, const std::string& v) override {
    ++changes;
    return MemorySettings::Set(s, k, v);
  }
  std::string SetMany(const std::string& s,
                      const std::vector<std::pair<std::string, std::string>>& v) override {
    ++changes;
    return MemorySettings::SetMany(s, v);
  }
};

struct CliRunCounted {
  CountingStore store;
  int code = 0;
  std::string err;
  void operator()(TestEnv& t, const std::string& command, const std::vector<std::string>& args) {
    std::ostringstream out, e;
    CliPrompter prompter(e);
    Env env{t.fs, store, prompter, t.view, t.home.path()};
    const auto cwd = std::filesystem::current_path();
    code = cli::Run(env, prompter, command, args, out, e);
    std::filesystem::current_path(cwd);
    err = e.str();
  }
};

TEST(CliSettingsWrites, ABuildWritesTheSettingsOnce) {
  TestEnv t;
  TempDir src, out;
  CopyDemoProject(src);
  CliRunCounted run;
  run(t, "build", {src.file("Demo.kpn"), out.file("index.html")});
  ASSERT_EQ(run.code, 0) << run.err;
  // Several keys changed (the notices' marks, folders, the recent list)...
  EXPECT_GE(run.store.changes, 2);
  // ...and went out in one write.
  EXPECT_EQ(run.store.Writes(), 1);
}

TEST(CliSettingsWrites, AResaveWritesTheSettingsOnce) {
  TestEnv t;
  CopyDemoProject(t.home);
  CliRunCounted run;
  run(t, "resave", {t.home.file("Demo.kpn"), t.home.file("Out.kpn")});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_GE(run.store.changes, 1);
  EXPECT_EQ(run.store.Writes(), 1);
  EXPECT_EQ(run.store.Get(kSecRecent, "File1"), std::optional<std::string>(t.home.file("Out.kpn")));
}

TEST(CliSettingsWrites, AnInfoRunsStartUpChangesAreOneWrite) {
  TestEnv t;
  CopyDemoProject(t.home);
  CliRunCounted run;
  run(t, "info", {t.home.file("Demo.kpn")});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_GE(run.store.changes, 2);
  EXPECT_EQ(run.store.Writes(), 1);
}

TEST(CliSettingsWrites, AUsageErrorWritesNothing) {
  TestEnv t;
  CliRunCounted run;
  run(t, "info", {});
  EXPECT_EQ(run.code, cli::kUsage);
  EXPECT_EQ(run.store.Writes(), 0);
}

}  // namespace
}  // namespace kp::test
