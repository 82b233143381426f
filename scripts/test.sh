#!/usr/bin/env bash
# Installs what is missing, builds the project twice (plain, and with AddressSanitizer +
# UndefinedBehaviorSanitizer) and runs every test in both builds, then builds the fuzz targets
# with clang and runs each for a bounded time on its corpus.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc 2>/dev/null || echo 2)
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp:print_suppressions=0

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
(cd build && ctest --output-on-failure -j"$jobs")

cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DVKTL_SANITIZE=ON >/dev/null
cmake --build build-asan -j"$jobs"
(cd build-asan && ctest --output-on-failure -j"$jobs")

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DVKTL_FUZZ=ON -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" -DVKTL_FUZZ_SECONDS="${VKTL_FUZZ_SECONDS:-60}" >/dev/null
cmake --build build-fuzz -j"$jobs"
(cd build-fuzz && ctest --output-on-failure -j"$jobs")
