// Replacing applets in a large hand-made page: 1,000 applets spread through
// 20 MB of text, every one ticked. The work must grow with the page, not
// with the page times the applets.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "publish/replace.h"

namespace kp::bench {
namespace {

std::string HostilePage(int applets, size_t bytes) {
  const std::string filler(bytes / static_cast<size_t>(applets), 'x');
  std::string page;
  page.reserve(bytes + static_cast<size_t>(applets) * 80);
  for (int i = 0; i < applets; ++i) {
    page += filler;
    page += "<applet code=\"Old" + std::to_string(i) + ".class\">\n</applet>\n";
  }
  return page;
}

const std::string kNewCode =
    "<APPLET name=\"Bar\" code=\"KestrelPane.class\" width=200 height=40>\r\n"
    "<param name=\"b1\" value=\"x\">\r\n</APPLET>";

void BM_ReplaceThousandAppletsInTwentyMegabytes(benchmark::State& state) {
  const int applets = static_cast<int>(state.range(0));
  const std::string page = HostilePage(applets, 20u * 1024 * 1024);
  const std::vector<bool> ticked(static_cast<size_t>(applets), true);
  ReplaceOutcome outcome;
  for (auto _ : state) {
    std::string text = ReplaceTickedApplets(page, ticked, kNewCode, &outcome);
    benchmark::DoNotOptimize(text.data());
  }
  if (outcome.replaced != applets) state.SkipWithError("not every applet was replaced");
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(page.size()));
}
BENCHMARK(BM_ReplaceThousandAppletsInTwentyMegabytes)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench
BENCHMARK_MAIN();
