#!/usr/bin/env bash
# The real dq480.exe under Wine on a private X display, driven by keys as an operator does: it
# starts as "Arvon DQ-480", File > New opens a new project, File > Save as writes it through the
# Windows file dialog, and the saved file reads back with the Linux dq480-cli. Screenshots of each
# step stay in the artifacts folder when a step fails.
#   window_journey.sh DQ480_EXE LINUX_CLI ARTIFACTS
set -euo pipefail

exe=$1 cli=$2 artifacts=$3
for tool in Xvfb xdotool import; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is missing"; exit 77; }
done
[[ -x $cli ]] || { echo "skipped: no Linux dq480-cli at $cli"; exit 77; }

work=$(mktemp -d)
rm -rf "$artifacts"
mkdir -p "$artifacts"
cleanup() {
    # The Windows process outlives its Linux launcher; only dq480.exe is ended, not the suites.
    bash "$(dirname "$0")/run-in-wine.sh" taskkill /f /im dq480.exe >/dev/null 2>&1 || true
    [[ -z ${program:-} ]] || kill "$program" 2>/dev/null || true
    [[ -z ${xserver:-} ]] || kill "$xserver" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

# A display of its own, whichever number is free.
exec 8<> <(:)
Xvfb -displayfd 8 -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
xserver=$!
read -r -t 20 display <&8
export DISPLAY=:$display

step=0
shot() { step=$((step + 1)); import -window root "$artifacts/$step-$1.png" 2>/dev/null || true; }
fail() {
    shot failed
    echo "FAILED: $* (screenshots in $artifacts)"
    exit 1
}
# Waits for a window of exactly this title; prints its id.
window_titled() { # title [seconds]
    local title=$1 id
    for _ in $(seq 1 $((${2:-30} * 5))); do
        for id in $(xdotool search --name "" 2>/dev/null); do
            [[ $(xdotool getwindowname "$id" 2>/dev/null) == "$title" ]] && { echo "$id"; return 0; }
        done
        sleep 0.2
    done
    return 1
}

# A fresh program folder: the journey starts as a first start does.
export DQ480_HOME="Z:${work//\//\\}\\home"
bash "$(dirname "$0")/run-in-wine.sh" "$exe" -platform windows >"$artifacts/program.log" 2>&1 &
program=$!

main=$(window_titled "Arvon DQ-480") || fail "the main window \"Arvon DQ-480\" did not appear"
shot started
# The first keys can come before the window takes them: File > New is tried until it answers.
for _ in 1 2 3 4 5; do
    xdotool windowfocus --sync "$main" key Escape key alt+f
    sleep 0.5
    xdotool key n
    new=$(window_titled "DQ-480 Setting Software : New File" 10) && break
done
[[ -n ${new:-} ]] || fail "File > New gave no new project"
shot new-project

saved="Z:${work//\//\\}\\JOURNEY.stf"
xdotool windowfocus --sync "$main" key alt+f
sleep 0.5
xdotool key a
sleep 3
shot save-dialog
xdotool type --delay 20 "$saved"
xdotool key Return
window_titled "DQ-480 Setting Software : $saved" >/dev/null || fail "Save as did not name the file in the caption"
shot saved
[[ -s $work/JOURNEY.stf ]] || fail "Save as wrote no file"
"$cli" check "$work/JOURNEY.stf" >"$artifacts/check.txt" || fail "the saved file does not read back on Linux"
rm -f "$artifacts"/*.png
echo "passed: started, File > New, File > Save as $saved, read back"
