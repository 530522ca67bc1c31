// The demo project as the design window shows it, in each state, against
// pictures made by `kestrelpane-cli render` and checked by eye.
#include <gtest/gtest.h>

#include <QImage>
#include <filesystem>

#include "project/project_file.h"
#include "tests/render/render_fixture.h"

namespace kp {
namespace {

namespace fs = std::filesystem;

class Golden : public ::testing::TestWithParam<const char*> {};

TEST_P(Golden, DemoProjectMatchesItsPictureExactly) {
  const std::string state = GetParam();
  test::TestEnv t;
  // A copy, so that nothing the program writes touches the source tree.
  for (const auto& entry : fs::directory_iterator(test::SourcePath("data/Projects")))
    if (entry.is_regular_file())
      fs::copy_file(entry.path(), t.home.file(entry.path().filename().string()));
  Project p;
  ASSERT_EQ(LoadProject2(p, t.env, t.home.file("Demo.kpn")), LoadResult::Loaded);
  ASSERT_EQ(p.ButtonCount, 12);
  p.sState = state;
  QtTextMeasure measure;
  Scene scene(p, t.prompter, measure);
  scene.SizeDesignToApplet();
  scene.RepaintAll();
  const QImage actual = scene.ComposeApplet();
  for (const test::Shown& m : t.prompter.shown) ADD_FAILURE() << m.kind << ": " << m.text;

  std::string lower = state;
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const std::string golden = test::SourcePath("tests/render/golden/demo_" + lower + ".png");
  const QImage expected(QString::fromStdString(golden));
  ASSERT_FALSE(expected.isNull()) << golden;
  const auto same = test::SamePixels(actual, expected);
  if (!same) {
    // Left beside the build for a look at what changed.
    const std::string out = std::string(KP_BINARY_DIR) + "/render_actual_demo_" + lower + ".png";
    actual.save(QString::fromStdString(out), "PNG");
    ADD_FAILURE() << same.message() << "\n  actual picture: " << out;
  }
}

INSTANTIATE_TEST_SUITE_P(States, Golden, ::testing::Values("UP", "OVER", "DOWN"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace kp
