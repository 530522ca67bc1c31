#!/usr/bin/env bash
# Builds the fuzzers with clang and runs each for SECONDS (default 120)
# under ASan and UBSan, starting from the seed corpus in fuzz/corpus.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-120}
CC=clang-14 CXX=clang++-14 cmake -S . -B build-fuzz -G Ninja -DKP_FUZZ=ON -DKP_WITH_QT=OFF \
  -DKP_TESTS=OFF -DKP_BENCH=OFF >/dev/null
cmake --build build-fuzz
for name in project record actions replace settings; do
  mkdir -p "build-fuzz/corpus/$name"
  echo "== fuzz_$name for ${seconds}s"
  build-fuzz/bin/fuzz_$name -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="build-fuzz/crash-$name-" "build-fuzz/corpus/$name" "fuzz/corpus/$name" 2>&1 |
    grep -E 'stat::number_of_executed_units|stat::peak_rss_mb|ERROR|SUMMARY|Done'
done
