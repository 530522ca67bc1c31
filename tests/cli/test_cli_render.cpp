// `render`: the design window's picture of a project, written as PNG by the
// built program, which must make a QGuiApplication of its own for fonts.
#include <gtest/gtest.h>

#include <QImage>

#include "tests/cli/cli_fixture.h"

namespace kp::test {
namespace {

QImage Load(const std::string& path) { return QImage(QString::fromStdString(path)); }

bool SamePixels(const QImage& a, const QImage& b) {
  if (a.size() != b.size() || a.isNull()) return false;
  const QImage x = a.convertToFormat(QImage::Format_RGB32);
  const QImage y = b.convertToFormat(QImage::Format_RGB32);
  for (int r = 0; r < x.height(); ++r)
    for (int c = 0; c < x.width(); ++c)
      if ((x.pixel(c, r) & 0xFFFFFF) != (y.pixel(c, r) & 0xFFFFFF)) return false;
  return true;
}

TEST(CliRender, EachStateGivesItsGoldenPicture) {
  TempDir dir;
  CopyDemoProject(dir);
  for (const char* state : {"UP", "OVER", "DOWN"}) {
    std::string lower = state;
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const std::string out = dir.file(lower + ".png");
    CliRun r = RunBinary("--settings " + dir.file("s.ini") + " render " + dir.file("Demo.kpn") +
                         " " + out + " --state " + state);
    ASSERT_EQ(r.code, 0) << r.err;
    const QImage picture = Load(out);
    EXPECT_EQ(picture.width(), 460);
    EXPECT_EQ(picture.height(), 200);
    EXPECT_TRUE(SamePixels(picture, Load(SourcePath("tests/render/golden/demo_" + lower + ".png"))))
        << state;
  }
}

TEST(CliRender, WithoutAStateTheUpStateIsDrawn) {
  TempDir dir;
  CopyDemoProject(dir);
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " render " + dir.file("Demo.kpn") +
                       " " + dir.file("a.png"));
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_TRUE(SamePixels(Load(dir.file("a.png")),
                         Load(SourcePath("tests/render/golden/demo_up.png"))));
}

TEST(CliRender, GridFlagDrawsTheGridOfTheSettings) {
  TempDir dir;
  CopyDemoProject(dir);
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " render " + dir.file("Demo.kpn") +
                       " " + dir.file("g.png") + " --grid");
  ASSERT_EQ(r.code, 0) << r.err;
  const QImage grid = Load(dir.file("g.png"));
  const QImage plain = Load(SourcePath("tests/render/golden/demo_up.png"));
  // Between the rows of buttons, on the line y = 70.
  EXPECT_EQ(grid.pixel(20, 70) & 0xFFFFFF, 0x808080u);
  EXPECT_NE(plain.pixel(20, 70) & 0xFFFFFF, 0x808080u);
  EXPECT_EQ(grid.pixel(23, 67), plain.pixel(23, 67));
}

TEST(CliRender, BadOptionsAreUsageErrors) {
  TestEnv t;
  EXPECT_EQ(RunCommand(t, "render", {"a.kpn"}).code, 2);
  EXPECT_EQ(RunCommand(t, "render", {"a.kpn", "b.png", "--state", "LEFT"}).code, 2);
  EXPECT_EQ(RunCommand(t, "render", {"a.kpn", "b.png", "--state"}).code, 2);
  EXPECT_EQ(RunCommand(t, "render", {"a.kpn", "b.png", "--colour"}).code, 2);
}

TEST(CliRender, AProjectThatCannotBeLoadedWritesNothing) {
  TempDir dir;
  CliRun r = RunBinary("--settings " + dir.file("s.ini") + " render " + dir.file("none.kpn") +
                       " " + dir.file("x.png"));
  EXPECT_EQ(r.code, 1);
  EXPECT_FALSE(std::filesystem::exists(dir.file("x.png")));
}

}  // namespace
}  // namespace kp::test
