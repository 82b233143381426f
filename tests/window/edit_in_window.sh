#!/usr/bin/env bash
# Edits a name in the demo as a person does, from outside its process: the demo runs in a real X
# window (this script runs under xvfb-run), xdotool clicks the cell twice and types a new name,
# Enter commits it, and a screenshot of the X screen must show the new name.
#
#   edit_in_window.sh DEMO SCREEN_TEXT OUTPUT_DIR
set -euo pipefail
demo=$1
screen_text=$2
out=$3
mkdir -p "$out"
name="Zed Quill"

fail() {
  echo "edit_in_window: $*" >&2
  exit 1
}

# Row 3 is on the first screen with its branch open; column 1 is the name, a text-box edit.
"$demo" --where 3,1 >"$out/where.txt" 2>"$out/demo.log" &
demo_pid=$!
trap 'kill "$demo_pid" 2>/dev/null || true' EXIT
for _ in $(seq 100); do
  [ -s "$out/where.txt" ] && break
  kill -0 "$demo_pid" 2>/dev/null || fail "the demo ended before showing its window"
  sleep 0.1
done
read -r x y w h <"$out/where.txt" || fail "the demo did not say where the cell is"
[ "$w" -gt 0 ] || fail "no such cell"
timeout 20 xdotool search --sync --onlyvisible --pid "$demo_pid" >/dev/null ||
  fail "no window of the demo"
sleep 0.5

"$screen_text" --absent "$name" || fail "the new name is on the screen before the edit"

# Click the name, then click it again once the double-click time is over: the editor opens.
xdotool mousemove $((x + 20)) $((y + h / 2)) click 1
sleep 1
xdotool click 1
sleep 1
xdotool type --delay 40 "$name"
sleep 0.3
xdotool key Return
sleep 0.3
# Move the selection on, so the row is drawn as the others are.
xdotool key Down
sleep 0.5

"$screen_text" --save "$out/after-edit.png" "$name" || fail "the new name is not on the screen"

# The demo quits cleanly from its keyboard shortcut.
xdotool key ctrl+q
for _ in $(seq 100); do
  kill -0 "$demo_pid" 2>/dev/null || break
  sleep 0.1
done
trap - EXIT
wait "$demo_pid" || fail "the demo exited with status $?"
echo "edit_in_window: the name typed into the editor is in the window"
