// Opening a project in the real main window (offscreen): projects of 100,
// 500 and 1001 buttons, whose times should grow in step with the count
// (goal: 1001 buttons under 300 ms), and the sample project Demo.kpn
// (goal: under 30 ms). An iteration ends when the events the load left
// behind (list layout, paints) have run too.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <filesystem>
#include <fstream>

#include "app/program.h"
#include "bench/fixture.h"
#include "core/association.h"
#include "core/fs.h"
#include "core/settings.h"
#include "core/settings_store.h"
#include "project/project_file.h"
#include "properties/frm_main.h"
#include "properties/qt_prompter.h"

namespace kp::bench {
namespace {

namespace fs = std::filesystem;

class NoAssociation : public FileAssociation {
 public:
  bool AssociationMissing(Env&) override { return false; }
  bool RegisterAssociation(Env&) override { return true; }
};

// The real progress window, but a message box would wait for a person.
class BenchPrompter : public QtPrompter {
 public:
  Answer MsgBox(const std::string&, Buttons, const std::string&, Icon) override {
    ++boxes;
    return Answer::OK;
  }
  int boxes = 0;
};

void WriteText(const fs::path& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
}

// A program folder with the sample projects, the media the generated
// projects name, and one project a button count.
const fs::path& Home() {
  static const fs::path home = [] {
    fs::path dir = fs::temp_directory_path() / "kp_bench_open";
    fs::remove_all(dir);
    fs::create_directories(dir / "media");
    fs::copy(KP_SOURCE_DIR "/data/Projects", dir / "Projects", fs::copy_options::recursive);
    for (int s = 1; s <= 3; ++s)
      fs::copy_file(KP_SOURCE_DIR "/data/Samples/sample_ball.gif",
                    dir / "media" / ("pic" + std::to_string(s) + ".gif"));
    fs::copy_file(KP_SOURCE_DIR "/data/Sounds/beep.au", dir / "media" / "over.au");
    for (int n : {100, 500, 1001}) {
      Project p = FullProject(n, (dir / "media").string());
      WriteText(dir / ("big" + std::to_string(n) + ".kpn"), ProjectFileText(p, false));
    }
    return dir;
  }();
  return home;
}

struct Designer {
  Designer() : program(disk, store, prompter, association, Home().string()) {
    store.Set(kSecParams, "DontShow_frm_Create_Recent", "1");
    store.Set(kSecParams, "DontAskToAssociate", "1");
    program.endProcess = [](int) {};
    program.Main("");
  }
  DiskFileSystem disk;
  MemorySettings store;
  BenchPrompter prompter;
  NoAssociation association;
  Program program;
};

Designer& TheDesigner() {
  static Designer d;
  return d;
}

void Open(benchmark::State& state, const std::string& path, int expectButtons) {
  Designer& d = TheDesigner();
  for (auto _ : state) {
    d.program.MainWindow()->OpenProjectFile(path);
    QCoreApplication::processEvents();
  }
  if (d.program.project().ButtonCount != expectButtons) state.SkipWithError("buttons not loaded");
  if (d.prompter.boxes != 0) state.SkipWithError("a message box was shown");
  state.counters["buttons"] = expectButtons;
}

void BM_OpenButtons(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  Open(state, (Home() / ("big" + std::to_string(n) + ".kpn")).string(), n);
  state.SetComplexityN(n);
}
BENCHMARK(BM_OpenButtons)
    ->Arg(100)
    ->Arg(500)
    ->Arg(1001)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

void BM_OpenDemo(benchmark::State& state) {
  Open(state, (Home() / "Projects" / "Demo.kpn").string(), 12);
}
BENCHMARK(BM_OpenDemo)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kp::bench

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  int qtArgc = 1;
  QApplication app(qtArgc, argv);
  QApplication::setApplicationName("KestrelPane");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
