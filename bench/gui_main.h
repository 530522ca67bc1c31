// The main of a benchmark whose text needs the GUI library's fonts: a
// QGuiApplication on the offscreen platform unless another is asked for.
#pragma once

#include <QGuiApplication>
#include <benchmark/benchmark.h>

namespace kp::bench {

inline int RunWithFonts(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  int qtArgc = 1;
  QGuiApplication app(qtArgc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace kp::bench
