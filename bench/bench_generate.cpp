// Generating the HTML block of a project of the largest size the program
// allows. Goal: well under 10 ms for 1001 buttons.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "bench/fixture.h"
#include "generate/html_generator.h"

namespace kp::bench {
namespace {

std::string Folder() {
  auto dir = std::filesystem::temp_directory_path() / "kp_bench_generate";
  std::filesystem::create_directories(dir);
  for (const char* f : {"pic1.gif", "pic2.gif", "pic3.gif", "over.au"})
    std::ofstream(dir / f) << "x";
  return dir.string();
}

// Every button shares the three pictures, as a real project mostly does.
void BM_MakeHTML1001(benchmark::State& state) {
  BenchEnv e;
  Project p = FullProject(kMaxButtons, Folder());
  GeneratorState st;
  st.bUseJSCaller = NeedsJSCaller(p);
  CodeBox box;
  for (auto _ : state) {
    MakeHTML(p, e.env, st, box);
    benchmark::DoNotOptimize(box.text.data());
  }
  state.counters["bytes"] = static_cast<double>(box.text.size());
}
BENCHMARK(BM_MakeHTML1001)->Unit(benchmark::kMillisecond);

// Each button names its own pictures, none of which exists: every path is a
// separate question to the file system.
void BM_MakeHTML1001DistinctPictures(benchmark::State& state) {
  BenchEnv e;
  std::string dir = Folder();
  Project p = FullProject(kMaxButtons, dir);
  for (int i = 1; i <= p.ButtonCount; ++i)
    for (int s = 1; s <= 3; ++s)
      p.button(i).Image[s] = dir + "/b" + std::to_string(i) + "_" + std::to_string(s) + ".gif";
  GeneratorState st;
  CodeBox box;
  for (auto _ : state) {
    MakeHTML(p, e.env, st, box);
    benchmark::DoNotOptimize(box.text.data());
  }
}
BENCHMARK(BM_MakeHTML1001DistinctPictures)->Unit(benchmark::kMillisecond);

// The HTML window's activation as the user meets it: flag, then generation.
void BM_HTMLWindowActivate1001(benchmark::State& state) {
  BenchEnv e;
  Project p = FullProject(kMaxButtons, Folder());
  GeneratorState st;
  CodeBox box;
  for (auto _ : state) {
    MarkHTMLStale(st);
    HTMLWindowActivate(p, e.env, st, box);
    benchmark::DoNotOptimize(box.text.data());
  }
}
BENCHMARK(BM_HTMLWindowActivate1001)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

BENCHMARK_MAIN();
