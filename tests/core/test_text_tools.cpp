#include <gtest/gtest.h>

#include "core/text_tools.h"

namespace kp {
namespace {

TEST(MultiLine, LabelWithTwoBreaksShowsAnEmptySecondLine) {
  EXPECT_EQ(DecodeMultiLine("a\\n\\nb"), "a\n\nb");
}

TEST(MultiLine, EmptyLineTypedInTheEditorComesBackWithABlank) {
  EXPECT_EQ(EncodeMultiLine("a\n\nb"), "a\\n \\nb");
  EXPECT_EQ(EncodeMultiLine("a\r\n\r\nb"), "a\\n \\nb");
}

TEST(MultiLine, SingleBreakBecomesTheTwoCharacters) {
  EXPECT_EQ(EncodeMultiLine("one\ntwo"), "one\\ntwo");
  EXPECT_EQ(EncodeMultiLine("plain"), "plain");
}

TEST(MultiLine, TextEndingInABreakGetsOneBlank) {
  EXPECT_EQ(EncodeMultiLine("a\n"), "a\\n ");
  EXPECT_EQ(EncodeMultiLine("a\n\n"), "a\\n \\n ");
}

TEST(MultiLine, DoubleBreakReplacementIsOneLeftToRightPass) {
  // Three breaks: the first pair is split, the third break is left as it is.
  EXPECT_EQ(EncodeMultiLine("a\n\n\nb"), "a\\n \\n\\nb");
}

TEST(Hex2Color, SixDigitsAreRedGreenBlue) {
  EXPECT_EQ(HexTextToParts("FF0000"), (RgbParts{255, 0, 0}));
  EXPECT_EQ(HexTextToParts("00ff80"), (RgbParts{0, 255, 128}));
  EXPECT_EQ(HexTextToParts("0A0B0Cjunk"), (RgbParts{10, 11, 12}));
}

TEST(Hex2Color, TwoDigitsGiveRedAndZeroForTheOthers) {
  EXPECT_EQ(HexTextToParts("FF"), (RgbParts{255, 0, 0}));
  EXPECT_EQ(HexTextToParts("F"), (RgbParts{15, 0, 0}));
  EXPECT_EQ(HexTextToParts(""), (RgbParts{0, 0, 0}));
}

TEST(Hex2Color, NonHexadecimalPairIsAFailure) {
  EXPECT_FALSE(HexTextToParts("GG0000"));
  EXPECT_FALSE(HexTextToParts("00 000"));
  EXPECT_FALSE(HexTextToParts("-1"));
}

TEST(Hex2Color, ColourToHexIsTwoUpperCaseDigitsEachInRedGreenBlueOrder) {
  EXPECT_EQ(ColourToHexText(RGB(255, 0, 0)), "FF0000");
  EXPECT_EQ(ColourToHexText(RGB(1, 171, 12)), "01AB0C");
  EXPECT_EQ(ColourToHexText(0), "000000");
}

TEST(Hex2Color, DecimalFieldsAreWholeNumbers) {
  EXPECT_EQ(DecimalFieldsToParts("255", "0", "0"), (RgbParts{255, 0, 0}));
  EXPECT_EQ(DecimalFieldsToParts(" 12 ", "+3", "0"), (RgbParts{12, 3, 0}));
  EXPECT_EQ(DecimalFieldsToParts("2.5", "3.5", "1.2"), (RgbParts{2, 4, 1}));
  EXPECT_EQ(DecimalFieldsToParts("300", "0", "0"), (RgbParts{255, 0, 0}));
}

TEST(Hex2Color, EmptyOrNegativeOrWordFieldIsAFailure) {
  EXPECT_FALSE(DecimalFieldsToParts("", "0", "0"));
  EXPECT_FALSE(DecimalFieldsToParts("1", "-4", "0"));
  EXPECT_FALSE(DecimalFieldsToParts("1", "2", "abc"));
  EXPECT_FALSE(DecimalFieldsToParts("1", "2", "99999"));
}

}  // namespace
}  // namespace kp
