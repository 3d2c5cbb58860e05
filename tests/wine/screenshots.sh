#!/usr/bin/env bash
# Screenshots of the real dq480.exe under Wine, for a person to look at: the main window, the card
# edit window, the program window, the step input window and a message box, in English and in
# Japanese (as on a Japanese PC: its code page and Wine's own texts in Japanese). The program runs
# on Wine's own desktop, which draws the window frames as Windows does.
#   screenshots.sh DQ480_EXE OUT_FOLDER
# Needs the environment run-in-wine.sh needs (DQ480_WINE_PREFIX, DQ480_WINE_DLL_FOLDERS).
set -euo pipefail

exe=$1 out=$2
here=$(cd "$(dirname "$0")" && pwd)
for tool in Xvfb xdotool import; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is missing"; exit 77; }
done
mkdir -p "$out"
work=$(mktemp -d)
cleanup() {
    bash "$here/run-in-wine.sh" taskkill /f /im dq480.exe >/dev/null 2>&1 || true
    [[ -z ${xserver:-} ]] || kill "$xserver" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

exec 8<> <(:)
Xvfb -displayfd 8 -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
xserver=$!
read -r -t 20 display <&8
export DISPLAY=:$display

# Nothing here can see inside Wine's desktop, so each key waits for the window it opens.
keys() {
    local key
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.6
    done
}
shot() { sleep 1.5; import -window root "$out/$1.png"; }

for language in en ja; do
    export DQ480_HOME="Z:${work//\//\\}\\$language"
    mkdir -p "$work/$language"
    export DQ480_WINE_LOCALE=
    [[ $language == ja ]] && DQ480_WINE_LOCALE=ja_JP.UTF-8
    bash "$here/run-in-wine.sh" explorer /desktop=dq480,1280x900 "$exe" -platform windows --language "$language" \
        >"$work/$language.log" 2>&1 &
    sleep 15 # the splash window closes
    desktop=$(xdotool search --name "dq480" | head -1)
    xdotool windowfocus --sync "$desktop" 2>/dev/null || true
    shot "$language-1-main"
    keys ctrl+n
    shot "$language-2-card-edit"
    keys ctrl+Page_Down
    shot "$language-3-card-edit-card-page"
    keys ctrl+Page_Down
    shot "$language-4-card-edit-data-page"
    keys ctrl+Page_Down Tab Return
    shot "$language-5-program"
    keys Tab Tab Tab space
    shot "$language-6-steps"
    xdotool key ctrl+a type --delay 50 A999
    keys Return
    shot "$language-7-message-box"
    keys Return
    bash "$here/run-in-wine.sh" taskkill /f /im dq480.exe >/dev/null 2>&1 || true
    sleep 3
done
ls "$out"
