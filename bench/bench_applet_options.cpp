// Repainting the design window after an applet option changes: the
// background (colour, fade, tiled picture) and the applet border, then every
// transparent button, among 1001 buttons of which every fourth is
// transparent. Goal: under 100 ms a change.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <filesystem>

#include "bench/fixture.h"
#include "bench/gui_main.h"
#include "properties/applet_options.h"
#include "render/scene.h"
#include "render/text.h"

namespace kp::bench {
namespace {

std::string Folder() {
  auto dir = std::filesystem::temp_directory_path() / "kp_bench_applet_options";
  std::filesystem::create_directories(dir);
  QImage pic(64, 64, QImage::Format_RGB32);
  for (int y = 0; y < 64; ++y)
    for (int x = 0; x < 64; ++x) pic.setPixelColor(x, y, QColor(x * 4, y * 4, 128));
  pic.save(QString::fromStdString((dir / "bg.jpg").string()), "JPEG");
  return dir.string();
}

Project OptionsProject() {
  const std::string dir = Folder();
  Project p = FullProject(kMaxButtons, dir);
  p.AppletWidth = 800;
  p.AppletHeight = 600;
  p.BackImg = dir + "/bg.jpg";
  p.BackImgStyle = 3;
  p.iFadeStyle = 3;
  p.iABorderStyle = 1;
  p.iABorderWidth = 6;
  for (int i = 1; i <= p.ButtonCount; i += 4)
    for (int s = 1; s <= 3; ++s) p.button(i).noBackGround[s] = true;
  return p;
}

struct Design {
  explicit Design(Project& project) : p(project), scene(project, e.prompter, measure) {
    scene.SetDesignSize(p.AppletWidth, p.AppletHeight);
    scene.RepaintAll();
  }
  Project& p;
  BenchEnv e;
  QtTextMeasure measure;
  Scene scene;
};

// What every applet option window does after its edit.
void Repaint(Scene& scene) {
  scene.Refresh();
  benchmark::ClobberMemory();
}

// btnChangeColors of the fade dialog.
void BM_FadeSwap1001(benchmark::State& state) {
  Project p = OptionsProject();
  Design d(p);
  for (auto _ : state) {
    SwapAppletColours(p);
    Repaint(d.scene);
  }
}
BENCHMARK(BM_FadeSwap1001)->Unit(benchmark::kMillisecond);

// A border style chosen in the border dialog with the full repaint on.
void BM_BorderStyle1001(benchmark::State& state) {
  Project p = OptionsProject();
  Design d(p);
  for (auto _ : state) {
    p.iABorderStyle = static_cast<i16>(p.iABorderStyle % 4 + 1);
    Repaint(d.scene);
  }
}
BENCHMARK(BM_BorderStyle1001)->Unit(benchmark::kMillisecond);

// The offset dialog's Apply on a tiled picture.
void BM_BgOffset1001(benchmark::State& state) {
  Project p = OptionsProject();
  Design d(p);
  for (auto _ : state) {
    p.iBgOffsetX = static_cast<i16>((p.iBgOffsetX + 7) % 64);
    Repaint(d.scene);
  }
}
BENCHMARK(BM_BgOffset1001)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

int main(int argc, char** argv) { return kp::bench::RunWithFonts(argc, argv); }
