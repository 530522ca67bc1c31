// A settings store that could not be read, values held for the run when a
// write fails, and what the user is told about either.
#include <gtest/gtest.h>

#include "core/settings.h"
#include "tests/support/test_env.h"

namespace kp::test {
namespace {

TEST(SettingsFaults, AnUnreadableStoreIsReportedOnceWithItsReason) {
  TestEnv t;
  t.store.readProblem = "The settings file /conf/k.ini is not a settings file: garbage.";
  EXPECT_TRUE(ReportSettingsProblem(t.env));
  ASSERT_EQ(t.prompter.CountMsg(), 1);
  const std::string& text = t.prompter.shown[0].text;
  EXPECT_EQ(text.rfind(t.store.readProblem, 0), 0u) << text;
  EXPECT_NE(text.find("built-in settings"), std::string::npos) << text;
  EXPECT_EQ(text.find("Unable to write"), std::string::npos) << text;
}

TEST(SettingsFaults, AReadableStoreShowsNothing) {
  TestEnv t;
  EXPECT_FALSE(ReportSettingsProblem(t.env));
  EXPECT_EQ(t.prompter.CountMsg(), 0);
}

TEST(SettingsFaults, AStoreThatStartedEmptyTakesWritesWithoutABox) {
  TestEnv t;
  t.store.readProblem = "The settings file /conf/k.ini cannot be read: it is a folder.";
  EXPECT_TRUE(SetParam(t.env, "iGridX", "12"));
  EXPECT_EQ(GetParam(t.env, "iGridX"), "12");
  EXPECT_EQ(t.prompter.CountMsg(), 0);
}

TEST(SettingsFaults, AHeldValueIsReadFirstUntilAWriteSucceeds) {
  TestEnv t;
  t.store.Set(kSecParams, "iGridX", "5");
  t.store.Hold(kSecParams, "iGridX", "9");
  EXPECT_EQ(fReadValue(t.env, kSecParams, "iGridX", "0"), "9");
  EXPECT_EQ(fReadValue(t.env, kSecParams, "iGridY", "0"), "0");
  t.store.failWrites = true;
  EXPECT_FALSE(fWriteValue(t.env, kSecParams, "iGridX", "7"));
  EXPECT_EQ(fReadValue(t.env, kSecParams, "iGridX", "0"), "9");
  t.store.failWrites = false;
  EXPECT_TRUE(fWriteValue(t.env, kSecParams, "iGridX", "7"));
  EXPECT_EQ(fReadValue(t.env, kSecParams, "iGridX", "0"), "7");
  EXPECT_FALSE(t.store.Held(kSecParams, "iGridX"));
}

}  // namespace
}  // namespace kp::test
