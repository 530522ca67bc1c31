// Message tables: texts by name, arguments put in where the text says,
// and the shared messages back to English in place.
#include <gtest/gtest.h>

#include "core/messages.h"
#include "core/text_table.h"

namespace kp {
namespace {

TEST(TextTable, ArgumentsGoWhereTheTextPutsThem) {
  const TextTable t = {{"sCopy", "Button # %1 of %2"}, {"sTurned", "%2 before %1"}};
  EXPECT_EQ(TextWith(t, "sCopy", {"3", "9"}), "Button # 3 of 9");
  EXPECT_EQ(TextWith(t, "sTurned", {"a", "b"}), "b before a");
}

TEST(TextTable, AMarkerWithoutItsArgumentAndALonePercentStayAsTyped) {
  const TextTable t = {{"s", "100% of %1 and %3"}};
  EXPECT_EQ(TextWith(t, "s", {"x"}), "100% of x and %3");
}

TEST(TextTable, AnArgumentIsNotReadForMarkersAgain) {
  const TextTable t = {{"s", "[%1] [%2]"}};
  EXPECT_EQ(TextWith(t, "s", {"%2", "b"}), "[%2] [b]");
}

TEST(TextTable, AMissingNameComesBackAsItself) {
  const TextTable t = {{"sOne", "One"}};
  EXPECT_EQ(TextIn(t, "sOne"), "One");
  EXPECT_EQ(TextIn(t, "sNoSuchText"), "sNoSuchText");
}

TEST(SharedMessages, ResetPutsTheEnglishBackWithoutMovingTheTexts) {
  TextTable& t = SharedMessages();
  ASSERT_FALSE(t.empty());
  const std::string* first = &t.front().text;
  const std::string english = t.front().text;
  t.front().text = "translated";
  EXPECT_EQ(SharedText(t.front().control), "translated");
  ResetSharedMessages();
  EXPECT_EQ(&t.front().text, first);
  EXPECT_EQ(t.front().text, english);
}

TEST(SharedMessages, TheSaveQuestionNamesTheProject) {
  EXPECT_EQ(SharedText("sAskSave", {"/p/My.kpn"}),
            "The Project /p/My.kpn has changed.\r\n\r\nDo you want to Save the changes?");
}

}  // namespace
}  // namespace kp
