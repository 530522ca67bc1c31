// The picture browser on a folder of 1,000 pictures. Goals: the first page
// (four thumbnails drawn) under 200 ms after the folder is chosen, and
// every page turn under 50 ms. Each iteration waits until the page's
// thumbnails have come from the worker threads.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <filesystem>

#include "core/env.h"
#include "core/fs.h"
#include "core/settings_store.h"
#include "properties/frm_pic_browser.h"

namespace kp::bench {
namespace {

constexpr int kFiles = 1000;

class NullView : public ProjectView {};
class NullPrompter : public Prompter {
 public:
  Answer MsgBox(const std::string&, Buttons, const std::string&, Icon) override { return Answer::OK; }
  bool Notice(const std::string&, const std::string&, const std::string&, bool c) override { return c; }
};

// A thousand photographs of 640 by 480, every one a little different.
std::string Folder() {
  static const std::string folder = [] {
    auto dir = std::filesystem::temp_directory_path() / "kp_bench_pic_browser";
    std::filesystem::create_directories(dir);
    for (int i = 0; i < kFiles; ++i) {
      char name[32];
      std::snprintf(name, sizeof name, "photo%04d.jpg", i);
      const auto path = dir / name;
      if (std::filesystem::exists(path)) continue;
      QImage img(640, 480, QImage::Format_RGB32);
      img.fill(QColor::fromHsv(i % 360, 180, 200));
      QPainter paint(&img);
      paint.setBrush(QColor::fromHsv((i * 7) % 360, 255, 255));
      paint.drawEllipse(40 + i % 200, 60, 300, 240);
      paint.end();
      img.save(QString::fromStdString(path.string()), "JPEG", 85);
    }
    return dir.string();
  }();
  return folder;
}

struct Browser {
  Browser() : env{fs, store, prompter, view, "/tmp"}, b(nullptr, env) {}
  void WaitForPage() {
    while (b.PendingOnPage() > 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
  }
  DiskFileSystem fs;
  MemorySettings store;
  NullPrompter prompter;
  NullView view;
  Env env;
  frmPicBrowser b;
};

void BM_FirstPageOf1000Pictures(benchmark::State& state) {
  const std::string folder = Folder();
  Browser br;
  for (auto _ : state) {
    br.b.Dir1_Change(folder);
    br.WaitForPage();
  }
  state.counters["files"] = br.b.File1->count();
}
BENCHMARK(BM_FirstPageOf1000Pictures)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

void BM_PageTurn(benchmark::State& state) {
  const std::string folder = Folder();
  Browser br;
  br.b.Dir1_Change(folder);
  br.WaitForPage();
  int value = 0;
  for (auto _ : state) {
    value += kPicCells;
    if (value > br.b.Scroll->maximum()) value = 0;
    br.b.Scroll->setValue(value);
    br.WaitForPage();
  }
}
BENCHMARK(BM_PageTurn)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(200);

// A turn right after the last one, faster than anyone clicks: the page
// that the browser did not read ahead.
void BM_PageJumpFarAway(benchmark::State& state) {
  const std::string folder = Folder();
  Browser br;
  br.b.Dir1_Change(folder);
  br.WaitForPage();
  int value = 0;
  for (auto _ : state) {
    value = (value + 97 * kPicCells) % (br.b.Scroll->maximum() + 1);
    br.b.Scroll->setValue(value);
    br.WaitForPage();
  }
}
BENCHMARK(BM_PageJumpFarAway)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);

}  // namespace
}  // namespace kp::bench

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
