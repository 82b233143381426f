#!/usr/bin/env bash
# Runs a command as assistive technology sees applications: under X (this script runs under
# xvfb-run and dbus-run-session), with the accessibility bus up and Qt's bridge to it switched on.
#
#   with_atspi.sh COMMAND [ARGUMENTS...]
set -euo pipefail
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 NO_AT_BRIDGE=0
launcher=/usr/libexec/at-spi-bus-launcher
[ -x "$launcher" ] || { echo "with_atspi: $launcher missing: run scripts/setup.sh" >&2; exit 1; }
"$launcher" --launch-immediately &
bus=$!
trap 'kill "$bus" 2>/dev/null || true' EXIT
sleep 1
"$@"
