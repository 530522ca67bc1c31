// A big load lets events run often enough to keep its progress live, but
// not after every button.
#include <gtest/gtest.h>

#include <chrono>

#include "project/project_file.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

TEST(LoadPacing, EventsRunAtTheFirstButtonAndThenAtMostEvery30ms) {
  TestEnv t;
  Project p = MakeProject(t, 1001);
  ASSERT_TRUE(SaveProject(p, t.env, t.home.file("big.kpn"), true, false));
  t.prompter.progress.clear();
  t.prompter.eventRuns = 0;
  Project q;
  const auto start = std::chrono::steady_clock::now();
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("big.kpn")), LoadResult::Loaded);
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::steady_clock::now() - start)
                      .count();
  EXPECT_EQ(q.ButtonCount, 1001);
  EXPECT_GE(t.prompter.eventRuns, 1);
  EXPECT_LE(t.prompter.eventRuns, ms / 30 + 1);
  EXPECT_LT(t.prompter.eventRuns, 1001);
}

TEST(LoadPacing, EveryButtonStillHasItsProgressText) {
  TestEnv t;
  Project p = MakeProject(t, 150);
  ASSERT_TRUE(SaveProject(p, t.env, t.home.file("p.kpn"), true, false));
  t.prompter.progress.clear();
  t.prompter.percents.clear();
  Project q;
  LoadProject2(q, t.env, t.home.file("p.kpn"));
  ASSERT_EQ(t.prompter.progress.size(), 151u);
  EXPECT_EQ(t.prompter.progress[0], "Loading Project...");
  EXPECT_EQ(t.prompter.progress[75], "Loading Button # 75 of 150");
  EXPECT_EQ(t.prompter.progress[150], "Loading Button # 150 of 150");
  ASSERT_FALSE(t.prompter.percents.empty());
  EXPECT_EQ(t.prompter.percents.back(), 100);
}

}  // namespace
}  // namespace kp::test
