// Repainting on the design window. Every button of the project has a text
// border of thickness 9, a fade, a border and a picture. Goals: a state
// switch of 100 such buttons under 50 ms; one drag step (an opaque button
// moved over a transparent one among 1001) under 2 ms.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <filesystem>

#include "bench/fixture.h"
#include "bench/gui_main.h"
#include "render/scene.h"
#include "render/text.h"

namespace kp::bench {
namespace {

std::string Folder() {
  auto dir = std::filesystem::temp_directory_path() / "kp_bench_render";
  std::filesystem::create_directories(dir);
  QImage pic(24, 24, QImage::Format_RGB32);
  pic.fill(QColor(200, 40, 40));
  pic.save(QString::fromStdString((dir / "pic.jpg").string()), "JPEG");
  return dir.string();
}

Project RenderProject(int count) {
  const std::string dir = Folder();
  Project p = FullProject(count, dir);
  for (int i = 1; i <= p.ButtonCount; ++i)
    for (int s = 1; s <= 3; ++s) p.button(i).Image[s] = dir + "/pic.jpg";
  return p;
}

struct Design {
  explicit Design(Project& project) : p(project), scene(project, e.prompter, measure) {
    scene.SetDesignSize(800, 600);
    scene.RepaintAll();
  }
  Project& p;
  BenchEnv e;
  QtTextMeasure measure;
  Scene scene;
};

// The state buttons of the main window: every button repainted in the new
// state, in button order.
void StateSwitch(benchmark::State& state, int count) {
  Project p = RenderProject(count);
  Design d(p);
  const char* states[] = {"UP", "OVER", "DOWN"};
  int k = 0;
  for (auto _ : state) {
    p.sState = states[++k % 3];
    d.scene.RedrawAllButtons();
    benchmark::ClobberMemory();
  }
  state.counters["buttons"] = count;
}
void BM_StateSwitch100(benchmark::State& state) { StateSwitch(state, 100); }
void BM_StateSwitch1001(benchmark::State& state) { StateSwitch(state, kMaxButtons); }
BENCHMARK(BM_StateSwitch100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StateSwitch1001)->Unit(benchmark::kMillisecond);

// One mouse move of a drag: the opaque button 1 moves a pixel and the
// transparent button on top of everything, which it overlaps, takes a new
// picture of what lies under it.
void BM_DragStep1001(benchmark::State& state) {
  Project p = RenderProject(kMaxButtons);
  tButton& top = p.button(kMaxButtons);
  top.x = 300;
  top.y = 200;
  for (int s = 1; s <= 3; ++s) top.noBackGround[s] = true;
  p.button(1).x = 310;
  p.button(1).y = 210;
  Design d(p);
  int dx = 1;
  for (auto _ : state) {
    Surface& s = d.scene.pButtons(1);
    s.Left += dx;
    p.button(1).x = static_cast<i16>(s.Left);
    dx = -dx;
    d.scene.RedrawTransparentAbove(1);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_DragStep1001)->Unit(benchmark::kMicrosecond);

// The whole design window after loading: background, border and every
// button placed and painted.
void BM_RepaintAll1001(benchmark::State& state) {
  Project p = RenderProject(kMaxButtons);
  Design d(p);
  for (auto _ : state) {
    d.scene.RepaintAll();
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_RepaintAll1001)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

int main(int argc, char** argv) { return kp::bench::RunWithFonts(argc, argv); }
