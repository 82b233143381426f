#!/usr/bin/env bash
# Starts the demo and reads it with a real assistive-technology client (read_tree.py, pyatspi).
# Runs under with_atspi.sh, which brings up X, the session bus and the accessibility bus.
#
#   read_in_screen_reader.sh DEMO
set -euo pipefail
"$1" >/dev/null 2>&1 &
demo=$!
trap 'kill "$demo" 2>/dev/null || true' EXIT
# The system interpreter: pyatspi is a Debian package.
/usr/bin/python3 "$(dirname "$0")/read_tree.py"
