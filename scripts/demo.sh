#!/usr/bin/env bash
# Builds the demo application and shows it: in a window when there is a display, otherwise
# rendered off screen to demo.png in the repository root. Arguments go to the demo, so
# `bash scripts/demo.sh ~/src` shows a directory tree instead of the built-in org chart.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target vktl_demo -j"$jobs"
demo=build/examples/demo/vktl_demo

if [ -n "${DISPLAY:-}" ]; then
  exec "$demo" "$@"
fi

"$demo" --screenshot "$PWD/demo.png" "$@"
cat <<INFO
demo: there is no display, so the window was rendered off screen to
        $PWD/demo.png
      To use the window, run with a display (a desktop session, or ssh -X):
        bash scripts/demo.sh [directory]
      or inside a virtual X server:
        xvfb-run -a $demo [directory]
INFO
