// Loading and saving a project of the largest size the program allows.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "bench/fixture.h"
#include "project/project_file.h"

namespace kp::bench {
namespace {

std::string Folder() {
  auto dir = std::filesystem::temp_directory_path() / "kp_bench_project";
  std::filesystem::create_directories(dir);
  for (const char* f : {"pic1.gif", "pic2.gif", "pic3.gif", "over.au"})
    std::ofstream(dir / f) << "x";
  return dir.string();
}

void BM_SaveProject1001(benchmark::State& state) {
  BenchEnv e;
  std::string dir = Folder();
  Project p = FullProject(kMaxButtons, dir);
  for (auto _ : state) benchmark::DoNotOptimize(SaveProject(p, e.env, dir + "/b.kpn", true, false));
}
BENCHMARK(BM_SaveProject1001)->Unit(benchmark::kMillisecond);

void BM_LoadProject1001(benchmark::State& state) {
  BenchEnv e;
  std::string dir = Folder();
  Project p = FullProject(kMaxButtons, dir);
  SaveProject(p, e.env, dir + "/b.kpn", true, false);
  for (auto _ : state) {
    Project q;
    benchmark::DoNotOptimize(LoadProject2(q, e.env, dir + "/b.kpn"));
  }
}
BENCHMARK(BM_LoadProject1001)->Unit(benchmark::kMillisecond);

void BM_LoadAndSaveProject1001(benchmark::State& state) {
  BenchEnv e;
  std::string dir = Folder();
  Project p = FullProject(kMaxButtons, dir);
  SaveProject(p, e.env, dir + "/b.kpn", true, false);
  for (auto _ : state) {
    Project q;
    LoadProject2(q, e.env, dir + "/b.kpn");
    benchmark::DoNotOptimize(SaveProject(q, e.env, dir + "/c.kpn", true, false));
  }
}
BENCHMARK(BM_LoadAndSaveProject1001)->Unit(benchmark::kMillisecond);

// The text alone, without the disk.
void BM_ProjectFileText1001(benchmark::State& state) {
  Project p = FullProject(kMaxButtons);
  for (auto _ : state) benchmark::DoNotOptimize(ProjectFileText(p, false));
}
BENCHMARK(BM_ProjectFileText1001)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

BENCHMARK_MAIN();
