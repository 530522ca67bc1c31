// Building the applet folder of a project of the largest size the program
// allows: the page alone ("Save HTML Only"), and the page with every
// picture and sound copied.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "bench/fixture.h"
#include "generate/html_generator.h"
#include "publish/build.h"

namespace kp::bench {
namespace {

std::string Folder(const char* name) {
  auto dir = std::filesystem::temp_directory_path() / name;
  std::filesystem::create_directories(dir);
  return dir.string();
}

std::string MediaFolder() {
  std::string dir = Folder("kp_bench_publish_media");
  for (const char* f : {"pic1.gif", "pic2.gif", "pic3.gif", "over.au"})
    std::ofstream(dir + "/" + f) << std::string(2048, 'x');
  return dir;
}

// Answers the save dialog with one page and leaves every window as shown.
class BuildPrompter : public QuietPrompter {
 public:
  std::string page;
  std::string SaveFileDialog(const FileDialog&) override { return page; }
};

struct BuildBench {
  BuildPrompter prompter;
  DiskFileSystem fs;
  MemorySettings store;
  ProjectView view;
  Env env{fs, store, prompter, view, Folder("kp_bench_publish_home")};
  Project p = FullProject(kMaxButtons, MediaFolder());
  GeneratorState st;
  CodeBox txtHTML;
  HtmlWindowState win;
  PublishState state;
  PublishContext c{p, env, st, txtHTML, win, state};

  BuildBench() {
    prompter.page = Folder("kp_bench_publish_out") + "/index.html";
    p.sOutputFolder = Folder("kp_bench_publish_out") + "/";
    // No closing dialog and no folder warning: the timing is the build.
    store.Set("2.02/Params", "DontShowReadyForUpload", "1");
    store.Set("2.02/Params", "DontShowSomeFilesWarning", "1");
    HTMLWindowActivate(p, env, st, txtHTML);
  }
};

void BM_BuildAppletHtmlOnly1001(benchmark::State& state) {
  BuildBench b;
  for (auto _ : state) {
    BuildReport r = BuildApplet(b.c, false);
    benchmark::DoNotOptimize(r.result);
  }
  state.counters["page_bytes"] = static_cast<double>(PageText(b.p, b.txtHTML).size());
}
BENCHMARK(BM_BuildAppletHtmlOnly1001)->Unit(benchmark::kMillisecond);

// The HTML window as the user meets it before a build: generation, then
// the page.
void BM_GenerateAndBuildHtmlOnly1001(benchmark::State& state) {
  BuildBench b;
  for (auto _ : state) {
    MarkHTMLStale(b.st);
    HTMLWindowActivate(b.p, b.env, b.st, b.txtHTML);
    BuildReport r = BuildApplet(b.c, false);
    benchmark::DoNotOptimize(r.result);
  }
}
BENCHMARK(BM_GenerateAndBuildHtmlOnly1001)->Unit(benchmark::kMillisecond);

// With the files: 3003 picture copies and 1001 sound copies, all of the
// same four files, the last of each name winning.
void BM_BuildAppletWithFiles1001(benchmark::State& state) {
  BuildBench b;
  for (auto _ : state) {
    BuildReport r = BuildApplet(b.c, true);
    benchmark::DoNotOptimize(r.media.copied);
  }
}
BENCHMARK(BM_BuildAppletWithFiles1001)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

BENCHMARK_MAIN();
