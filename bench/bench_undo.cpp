// Undo and redo on a 1001-button project with 200 steps behind it: the
// history's memory (goal: under 50 MB) and one undo or redo with the
// windows redrawn (goal: under 50 ms).
#include <benchmark/benchmark.h>

#include <QApplication>

#include "bench/fixture.h"
#include "design/frm_design.h"
#include "properties/frm_main.h"

namespace kp::bench {
namespace {

constexpr int kSteps = 200;

// The main window over a full project, with 200 steps of the usual kinds:
// single moves, label edits and a group of ten moved together.
struct Session {
  Session() : p(FullProject(kMaxButtons)), main(p, e.env) {
    p.AppletWidth = 800;
    p.AppletHeight = 600;
    p.bReady = true;
    for (int i = 1; i <= p.ButtonCount; ++i) main.View().LoadButton(p, i);
    main.View().SetMainParams(p);
    p.iCurBtn = 1;
    main.ResetHistory();
    for (int k = 0; k < kSteps; ++k) {
      const int i = 1 + (k * 37) % p.ButtonCount;
      if (k % 10 == 0) {
        for (int j = i; j < i + 10 && j <= p.ButtonCount; ++j) p.button(j).x += 3;
      } else if (k % 3 == 1) {
        p.button(i).Label[1] += " x";
      } else {
        p.button(i).y += 2;
      }
      main.Design()->RedrawButton(i, false, false, false, true);
      main.RecordStep();
    }
  }
  BenchEnv e;
  Project p;
  frmMain main;
};

void BM_UndoOneStepWithRedraw(benchmark::State& state) {
  Session s;
  const auto steps = static_cast<double>(s.main.History().StepCount());
  bool back = true;
  for (auto _ : state) {
    if (back && !s.main.History().CanUndo()) back = false;
    if (!back && !s.main.History().CanRedo()) back = true;
    if (back) s.main.mnuUndo_Click();
    else s.main.mnuRedo_Click();
    benchmark::DoNotOptimize(s.main.Design()->Composed().constBits());
  }
  state.counters["steps"] = steps;
  state.counters["steps_after"] = static_cast<double>(s.main.History().StepCount());
  state.counters["history_MB"] = static_cast<double>(s.main.History().MemoryBytes()) / 1048576.0;
  state.counters["steps_KB"] = static_cast<double>(s.main.History().StepBytes()) / 1024.0;
}
BENCHMARK(BM_UndoOneStepWithRedraw)->Unit(benchmark::kMillisecond)->Iterations(400);

// Recording one step on the same project: the comparison with the copy.
void BM_RecordOneStep(benchmark::State& state) {
  Session s;
  int k = 0;
  for (auto _ : state) {
    s.p.button(1 + (k++ % s.p.ButtonCount)).x += 1;
    s.main.RecordStep();
  }
}
BENCHMARK(BM_RecordOneStep)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  int qtArgc = 1;
  QApplication app(qtArgc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
