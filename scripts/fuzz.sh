#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, AddressSanitizer + UndefinedBehaviorSanitizer) and runs
# each for a while: `bash scripts/fuzz.sh [seconds per target] [target...]` (default 600 s,
# every target). New inputs go to build-fuzz/fuzz/corpus/<target>; a finding is written to
# build-fuzz/fuzz/finding-<target>-* and stops that target with an error.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

seconds=${1:-600}
shift || true
targets=("$@")
[ "${#targets[@]}" -gt 0 ] || targets=(nodes_fuzz properties_fuzz control_fuzz)

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DVKTL_FUZZ=ON -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" -DVKTL_FUZZ_SECONDS="$seconds" >/dev/null
cmake --build build-fuzz -j"$(nproc 2>/dev/null || echo 2)"
regex=$(IFS='|'; echo "${targets[*]}")
(cd build-fuzz && ctest --output-on-failure -R "^($regex)\$")
