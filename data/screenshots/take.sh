#!/usr/bin/env bash
# Takes the screenshots named in the AppStream description from the real program on a private X
# display: ./take.sh PATH/TO/dq480 (needs xvfb, xdotool and imagemagick). Commit the PNGs it writes.
set -euo pipefail
app=$(realpath "$1")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
mkdir "$work/projects"
example="$work/projects/station.stf"
cp "$here/../../tests/data/example-two-sentences.stf" "$example"
trap 'kill "$app_pid" "$xvfb_pid" 2>/dev/null || true; rm -rf "$work"' EXIT

exec 3<> "$work/display"
Xvfb -displayfd 3 -screen 0 860x620x24 -nolisten tcp &
xvfb_pid=$!
for _ in $(seq 50); do [[ -s "$work/display" ]] && break; sleep 0.1; done
export DISPLAY=":$(head -1 "$work/display")"
mkdir -m 700 "$work/run"
DQ480_HOME="$work/home" XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=xcb "$app" "$example" &
app_pid=$!

window=""
for _ in $(seq 100); do
    window=$(xdotool search --onlyvisible --name "DQ-480 Setting Software" 2>/dev/null | head -1) && [[ -n $window ]] && break
    sleep 0.1
done
xdotool windowmove "$window" 0 0 windowsize "$window" 860 620
sleep 1
import -window root "$work/shot.png"
convert "$work/shot.png" -strip -colors 128 "$here/card-edit.png"
# The first program, through the card edit window's "Open" button.
xdotool mousemove --window "$window" 260 183 click 1
sleep 1.5
import -window root "$work/shot.png"
convert "$work/shot.png" -strip -colors 128 "$here/program.png"
