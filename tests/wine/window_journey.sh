#!/usr/bin/env bash
# The real dq480.exe under Wine on a private X display, driven by keys as an operator does: File >
# New, two sentences in the sentence table, program 1 with two steps, File > Save as through the
# Windows file dialog, the project closed and opened again, and File > Card write onto drive D:,
# a card reader holding a FAT16 card: an image mounted through fusefat, with a loop device of the
# same image as the drive's device, so Wine reports "FAT", its label and its size as Windows does.
# The card is then read with mtools: DQ480.CSV byte for byte as the Linux dq480-cli converts the
# saved project, the sentences as they were, and the test tone the program made through its
# plugin. Screenshots of each step stay in the artifacts folder when a step fails.
#   window_journey.sh DQ480_EXE LINUX_CLI ARTIFACTS
# With DQ480_EXE a folder unpacked from the portable zip, the program runs on nothing else: a
# prefix of its own and no DLL folders; its dq480-cli.exe must convert the project as Linux does.
set -euo pipefail

exe=$1 cli=$2 artifacts=$3
here=$(cd "$(dirname "$0")" && pwd)
skip() {
    echo "skipped: $*"
    exit 77
}
for tool in Xvfb xdotool import sox fusefat fusermount losetup mkfs.fat fsck.fat mdir mcopy; do
    command -v "$tool" >/dev/null || skip "$tool is missing"
done
[[ $(id -u) == 0 && -e /dev/fuse ]] || skip "the card image needs root and /dev/fuse"
[[ -x $cli ]] || skip "no Linux dq480-cli at $cli"

work=$(mktemp -d)
rm -rf "$artifacts"
mkdir -p "$artifacts"
wine_run() { bash "$here/run-in-wine.sh" "$@"; }
cleanup() {
    # The Windows process outlives its Linux launcher; only dq480.exe is ended, and the prefix's
    # own server is let go before the card goes.
    if [[ -n ${program:-} ]]; then
        wine_run taskkill /f /im dq480.exe >/dev/null 2>&1 || true
        kill "$program" 2>/dev/null || true
    fi
    WINEPREFIX=$DQ480_WINE_PREFIX wineserver -w 2>/dev/null || true
    ! mountpoint -q "$work/card" || fusermount -u "$work/card" || true
    [[ -z ${loop:-} ]] || losetup -d "$loop" 2>/dev/null || true
    [[ -z ${xserver:-} ]] || kill "$xserver" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

windows_path() { local path=${1//\//\\}; echo "Z:$path"; }

# The card and the operator's sentences, made on the Linux side.
home=$work/home
mkdir -p "$home" "$work/card"
for n in 1 2; do
    sox -n -r 32000 -c 1 "$work/tone$n.wav" synth 0.5 sine $((440 * n))
    "$cli" import "$work/tone$n.wav" --to "$home" --loudness off >/dev/null
done
[[ -s $home/TONE1.MP2 && -s $home/TONE2.MP2 ]] || { echo "FAILED: dq480-cli made no sentences"; exit 1; }
mkfs.fat -C -F 16 -n DQ480 "$work/card.img" 65536 >/dev/null
fusefat -o rw+ "$work/card.img" "$work/card" >/dev/null 2>&1 || skip "this machine does not allow FUSE mounts"
loop=$(losetup -f --show "$work/card.img") || skip "no loop device to stand for the card reader"

if [[ -d $exe ]]; then
    # The unpacked zip: a prefix of its own, made for this run, and no DLL from elsewhere.
    export DQ480_WINE_PREFIX=$work/prefix
    unset DQ480_WINE_DLL_FOLDERS
    packaged_cli=$exe/dq480-cli.exe
    exe=$exe/dq480.exe
fi
[[ -e $exe ]] || { echo "FAILED: no program at $exe"; exit 1; }

# Drive D: is the card reader. Wine reads its drive types when its server starts, so the server
# is let go once they are set. The prefix (a new one for the zip) is made first.
wine_run cmd /c exit >/dev/null 2>&1 || true
ln -sfn "$work/card" "$DQ480_WINE_PREFIX/dosdevices/d:"
ln -sfn "$loop" "$DQ480_WINE_PREFIX/dosdevices/d::"
wine_run reg add 'HKLM\Software\Wine\Drives' /v d: /d floppy /f >/dev/null 2>&1
WINEPREFIX=$DQ480_WINE_PREFIX wineserver -w

# A display of its own, whichever number is free.
exec 8<> <(:)
Xvfb -displayfd 8 -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
xserver=$!
read -r -t 20 display <&8
export DISPLAY=:$display

step=0
shot() { step=$((step + 1)); import -window root "$artifacts/$(printf %02d $step)-$1.png" 2>/dev/null || true; }
fail() {
    shot failed
    echo "FAILED: $* (screenshots in $artifacts)"
    exit 1
}
# Waits for a shown window of exactly this title; prints its id. 0 seconds: looks once.
window_titled() { # title [seconds]
    local title=$1 id tries=$((${2:-30} * 5))
    for _ in $(seq 1 $((tries > 0 ? tries : 1))); do
        for id in $(xdotool search --onlyvisible --name "" 2>/dev/null); do
            [[ $(xdotool getwindowname "$id" 2>/dev/null) == "$title" ]] && { echo "$id"; return 0; }
        done
        sleep 0.2
    done
    return 1
}
gone() { # title [seconds]: waits until no window has this title
    for _ in $(seq 1 $((${2:-30} * 5))); do
        window_titled "$1" 0 >/dev/null || return 0
        sleep 0.2
    done
    return 1
}
wait_for() { # what command...: polls the command for up to 30 s
    local what=$1
    shift
    for _ in $(seq 1 150); do
        "$@" && return 0
        sleep 0.2
    done
    fail "$what"
}
# Keys one by one: Wine hands a key to the program before the program has moved the focus that
# the key before it moved, so each waits a moment.
keys() {
    local key
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.3
    done
}
typed() { xdotool key ctrl+a type --delay 30 "$1"; }
# A message box ("DQ-480" is its title) answered with Enter, its default button.
answer_box() { # what
    local box
    box=$(window_titled DQ-480 60) || fail "no message box: $1"
    shot "box-$1"
    xdotool windowfocus --sync "$box" key Return
    gone DQ-480 10 || fail "the message box stayed: $1"
}
no_box() { # where: a message box here means something the operator did went wrong
    ! window_titled DQ-480 1 >/dev/null || fail "an unexpected message box: $1"
}

# A fresh program folder: the journey starts as a first start does.
export DQ480_HOME
DQ480_HOME=$(windows_path "$home")
# Wine answers the media query for a loop device with 2 media types; a card reader answers 11.
export DQ480_WINE_MEDIA_TYPES=D:=11
wine_run "$exe" -platform windows >"$artifacts/program.log" 2>&1 &
program=$!

main=$(window_titled "Arvon DQ-480" 120) || fail "the main window \"Arvon DQ-480\" did not appear"
shot started
new_caption="DQ-480 Setting Software : New File"
# The first keys can come before the window takes them: File > New is tried until it answers.
for _ in 1 2 3 4 5; do
    xdotool windowfocus --sync "$main" key Escape key ctrl+n
    window_titled "$new_caption" 5 >/dev/null && break
done
window_titled "$new_caption" 1 >/dev/null || fail "File > New gave no new project"
shot new-project

# The card edit window opens on its Program page, the focus on the page's tab: program 1 opens
# from its number, then Step input; the steps are typed, Enter moving on, and OK commits them.
keys Tab Return
keys Tab Tab Tab space
typed A001
keys Return
typed A002
keys Return
shot steps
no_box "typing the steps"
keys shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab space
no_box "the steps' OK"
# Program 1 committed: its window closes without a question.
keys ctrl+F4
no_box "closing program 1"
shot program-1

# The Card Edit page: the sentence table, PC -> Card, takes two sentences from the program folder.
keys ctrl+Page_Down Tab Tab space
table="Card creation Sentence data copy PC -> Card : New File"
window_titled "$table" >/dev/null || fail "the sentence table did not open"
typed TONE1.MP2
keys Return
typed TONE2.MP2
keys Return
shot sentence-table
no_box "typing the sentence names"
# Back over the two boxes and the path button to Apply, which stores them in the project folder.
keys shift+Tab shift+Tab shift+Tab shift+Tab space
wait_for "Apply to store the sentences in the project folder" test -s "$home/NewProject/TONE2.MP2"
keys shift+Tab shift+Tab space
gone "$table" || fail "the sentence table's OK did not close it"

saved=$(windows_path "$work/JOURNEY.stf")
xdotool windowfocus --sync "$main" key alt+f
keys a
window_titled "Save as" >/dev/null || fail "File > Save as showed no file dialog"
shot save-dialog
xdotool type --delay 20 "$saved"
keys Return
window_titled "DQ-480 Setting Software : $saved" >/dev/null || fail "Save as did not name the file in the caption"
shot saved
[[ -s $work/JOURNEY.stf ]] || fail "Save as wrote no file"
"$cli" check "$work/JOURNEY.stf" >"$artifacts/check.txt" || fail "the saved file does not read back on Linux"
grep -aq 'PRGDATA,0001,0002,' "$work/JOURNEY.stf" || fail "program 1's steps are not in the saved file"
grep -aq 'FILENAME,TONE2' "$work/JOURNEY.stf" || fail "the sentence table is not in the saved file"

# Closed and opened again: the card is written from what the file holds.
keys ctrl+F4
window_titled "Arvon DQ-480" >/dev/null || fail "closing the saved project asked something or did not close it"
keys ctrl+o
window_titled "Open" >/dev/null || fail "File > Open showed no file dialog"
xdotool type --delay 20 "$saved"
keys Return
window_titled "DQ-480 Setting Software : $saved" >/dev/null || fail "File > Open did not open $saved"
shot opened

# File > Card write (the fifth entry): D: is the card slot the program found by itself.
xdotool windowfocus --sync "$main" key alt+f
keys Down Down Down Down Return
answer_box write-at-drive-d
answer_box card-write-complete
# Any further box is answered too, so that the card below says what went wrong.
extra=0
while window_titled DQ-480 2 >/dev/null; do
    extra=$((extra + 1))
    answer_box "unexpected-$extra"
done
shot card-written

xdotool windowfocus --sync "$main" key alt+f
keys Up Return
for _ in $(seq 1 150); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.2
done
! kill -0 "$program" 2>/dev/null || fail "File > Exit did not end the program"
program=
WINEPREFIX=$DQ480_WINE_PREFIX wineserver -w

# The card as the device meets it.
fusermount -u "$work/card"
losetup -d "$loop" && loop=
fsck.fat -n "$work/card.img" >"$artifacts/fsck.txt" || fail "the card's file system is damaged (fsck.txt)"
# fusefat leaves the FAT's second entry as 0x8000, which mtools would take for damage.
export MTOOLS_SKIP_CHECK=1
on_card=$(mdir -b -i "$work/card.img" ::CONTENTS | xargs -n1 basename | sort | xargs)
[[ $on_card == "DQ480.CSV SIN1KHZ.MP2 TONE1.MP2 TONE2.MP2" ]] || fail "the card holds: $on_card"
mkdir "$work/from-card" "$work/converted"
mcopy -n -i "$work/card.img" ::CONTENTS/DQ480.CSV ::CONTENTS/SIN1KHZ.MP2 ::CONTENTS/TONE1.MP2 \
    ::CONTENTS/TONE2.MP2 "$work/from-card/"
"$cli" convert "$work/JOURNEY.stf" "$work/converted/DQ480.CSV" >/dev/null
cmp "$work/converted/DQ480.CSV" "$work/from-card/DQ480.CSV" || fail "the card's DQ480.CSV is not dq480-cli's conversion"
for name in TONE1.MP2 TONE2.MP2 SIN1KHZ.MP2; do
    cmp "$home/$name" "$work/from-card/$name" || fail "$name on the card is not the program folder's"
done
# The test tone was made by the program's test-tone plugin: an MPEG-1 Layer II frame, mono.
[[ $(head -c 4 "$work/from-card/SIN1KHZ.MP2" | od -An -tx1 | tr -d ' ') == fffd48c4 ]] ||
    fail "the test tone is not the 32 kHz, 64 kbit/s mono MP2 the plugin makes"
if [[ -n ${packaged_cli:-} ]]; then
    mkdir "$work/converted-on-windows"
    wine_run "$packaged_cli" convert "$saved" "$(windows_path "$work/converted-on-windows/DQ480.CSV")" >/dev/null ||
        fail "the zip's dq480-cli.exe did not convert the project"
    cmp "$work/converted/DQ480.CSV" "$work/converted-on-windows/DQ480.CSV" ||
        fail "the zip's dq480-cli.exe converts the project to other bytes than the Linux one"
fi
((extra == 0)) || fail "card write showed $extra more message boxes than its question and its completion"
rm -f "$artifacts"/*.png
echo "passed: File > New, steps, sentences, Save as $saved, Open, Card write onto D:, the card's bytes checked"
