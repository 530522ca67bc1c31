// A damaged button record in a settings store that cannot be written: the
// restore fails, the user is told where and why, and the run goes on with
// the built-in record held in memory instead of ending at every start.
#include <gtest/gtest.h>

#include "core/conv.h"
#include "core/settings.h"
#include "project/button_record.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

std::string Damaged() { return ReplaceAll(kBuiltInDefaultButton, "0|0|100|", "0|0|abc|"); }

// The store holds the damaged record and refuses every write from now on.
void LockedWithDamage(TestEnv& t, const std::string& key) {
  t.store.data[kSecParams][key] = Damaged();
  t.store.failWrites = true;
  t.store.where = "the settings file /conf/k.ini";
}

TEST(RecordStoreFaults, UnwritableRestoreSaysWhereAndWhyAndGoesOn) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.button(1).BackColor[1] = 5;
  p.button(1).Width = 7;
  LockedWithDamage(t, "sDefaultBtn");
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, ""), RecordResult::Applied);
  ASSERT_EQ(t.prompter.CountMsg(), 2);
  EXPECT_EQ(t.prompter.shown[0].text,
            "Registry settings are currupted. Program will try to restore previous settings.");
  const std::string& why = t.prompter.shown[1].text;
  EXPECT_NE(why.find("the settings file /conf/k.ini"), std::string::npos) << why;
  EXPECT_NE(why.find("Access is denied."), std::string::npos) << why;
  EXPECT_EQ(why.find("Please restart"), std::string::npos) << why;
  // The built-in record applied, labels with the free name as in a fresh
  // installation; the stored text is untouched.
  EXPECT_EQ(p.button(1).Width, 100);
  EXPECT_EQ(p.button(1).BackColor[1], 8388608);
  EXPECT_EQ(p.button(1).Label[1], "Button 1");
  EXPECT_EQ(t.store.data[kSecParams]["sDefaultBtn"], Damaged());
}

TEST(RecordStoreFaults, TheDamageIsReportedOnceARun) {
  TestEnv t;
  Project p = MakeProject(t, 3);
  LockedWithDamage(t, "sDefaultBtn");
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, ""), RecordResult::Applied);
  const int boxes = t.prompter.CountMsg();
  EXPECT_EQ(AddNewButton(p, t.env), 4);
  EXPECT_EQ(MakeDefaultButton(p, t.env, 2, true, ""), RecordResult::Applied);
  EXPECT_EQ(t.prompter.CountMsg(), boxes);
  EXPECT_EQ(p.button(4).Height, 40);
  EXPECT_EQ(p.button(2).sBName, "2");
}

TEST(RecordStoreFaults, ADamagedClipboardPastesTheDefaultOnceThenNothing) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  p.button(2).x = 33;
  p.button(2).Width = 9;
  LockedWithDamage(t, "_buffer");
  EXPECT_EQ(MakeDefaultButton(p, t.env, 2, false, "_buffer"), RecordResult::Applied);
  EXPECT_EQ(t.prompter.CountMsg(), 2);
  EXPECT_EQ(p.button(2).Width, 100);
  EXPECT_EQ(p.button(2).x, 33);
  EXPECT_EQ(MakeDefaultButton(p, t.env, 2, false, "_buffer"), RecordResult::NothingStored);
  EXPECT_EQ(t.prompter.CountMsg(), 2);
}

TEST(RecordStoreFaults, AWritableStoreStillRestoresAndEndsTheProcess) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  t.store.data[kSecParams]["sDefaultBtn"] = Damaged();
  EXPECT_EQ(MakeDefaultButton(p, t.env, 1, false, ""), RecordResult::ProcessEnds);
  EXPECT_EQ(t.prompter.Last().text, "Settings restored. Please restart the program.");
  EXPECT_FALSE(t.store.Held(kSecParams, "sDefaultBtn"));
}

TEST(RecordStoreFaults, ACopyThatCannotBeStoredStillPastesInThisRun) {
  TestEnv t;
  Project p = MakeProject(t, 2);
  t.store.failWrites = true;
  p.button(1).Label[1] = "Copied";
  EXPECT_FALSE(WriteToREgistry(p, t.env, 1, "_buffer"));
  EXPECT_NE(t.prompter.Last().text.find("Error on WriteToREgistry(1)"), std::string::npos);
  EXPECT_EQ(MakeDefaultButton(p, t.env, 2, false, "_buffer"), RecordResult::Applied);
  EXPECT_EQ(p.button(2).Label[1], "Copied");
  // Once the store takes writes again, the stored copy is the one read.
  t.store.failWrites = false;
  p.button(1).Label[1] = "Later";
  EXPECT_TRUE(WriteToREgistry(p, t.env, 1, "_buffer"));
  EXPECT_EQ(MakeDefaultButton(p, t.env, 2, false, "_buffer"), RecordResult::Applied);
  EXPECT_EQ(p.button(2).Label[1], "Later");
}

}  // namespace
}  // namespace kp::test
