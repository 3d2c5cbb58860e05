#!/usr/bin/env bash
# Runs a cross-built Windows program under Wine, in a private prefix that is created once and kept
# ("--qtest PROGRAM ARGS" for a Qt Test suite):
#   DQ480_WINE_PREFIX       the prefix (made on first use)
#   DQ480_WINE_DLL_FOLDERS  Linux folders holding the DLLs the program needs, ":"-separated
# Drive letters stand for card slots: R: a removable drive and S: a fixed drive, each mapped to a
# folder (S: carries the volume label DQCARD).
set -euo pipefail

export WINEPREFIX=${DQ480_WINE_PREFIX:?the Wine prefix is not named}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml=" # no Mono or Gecko installer prompts
drives=$WINEPREFIX/../drives

prepare_prefix() {
    [[ -e $WINEPREFIX/.dq480-ready-3 ]] && return
    mkdir -p "$WINEPREFIX" "$drives/removable" "$drives/fixed"
    wineboot --init >/dev/null 2>&1
    wineserver --wait
    echo DQCARD >"$drives/fixed/.windows-label"
    ln -sfn "$drives/removable" "$WINEPREFIX/dosdevices/r:"
    ln -sfn "$drives/fixed" "$WINEPREFIX/dosdevices/s:"
    wine reg add 'HKLM\Software\Wine\Drives' /v r: /d floppy /f >/dev/null 2>&1
    wine reg add 'HKLM\Software\Wine\Drives' /v s: /d hd /f >/dev/null 2>&1
    # Wine hides the Linux side's QT_ variables from Windows programs: the suites' offscreen
    # platform is the prefix's own setting.
    wine reg add 'HKCU\Environment' /v QT_QPA_PLATFORM /d offscreen /f >/dev/null 2>&1
    wine reg add 'HKCU\Environment' /v QT_QPA_FONTDIR /d 'C:\windows\Fonts' /f >/dev/null 2>&1
    # Wine brings no Japanese font: IPAGothic shows the Japanese windows. DejaVu Sans is the
    # offscreen platform's Latin font, as on the Linux side.
    for font in /usr/share/fonts/opentype/ipafont-gothic/ipag.ttf /usr/share/fonts/truetype/fonts-japanese-gothic.ttf; do
        [[ -e $font ]] && cp -L "$font" "$WINEPREFIX/drive_c/windows/Fonts/" && break
    done
    cp -L /usr/share/fonts/truetype/dejavu/DejaVuSans*.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
    wineserver --wait
    touch "$WINEPREFIX/.dq480-ready-3"
}

mkdir -p "$(dirname "$WINEPREFIX")"
# Tests run side by side: only the first one creates the prefix.
exec 9>"$WINEPREFIX.lock"
flock 9
prepare_prefix
flock -u 9

winepath=
IFS=: read -ra folders <<<"${DQ480_WINE_DLL_FOLDERS:-}"
for folder in "${folders[@]}"; do
    winepath+="Z:${folder//\//\\};"
done
export WINEPATH=$winepath
# DQ480_WINE_LOCALE (ja_JP.UTF-8) runs the program as on a Japanese PC: Wine takes its code page
# from LC_ALL, whether or not the Linux side has that locale.
locale=()
[[ -n ${DQ480_WINE_LOCALE:-} ]] && locale=(env LC_ALL="$DQ480_WINE_LOCALE" LANG="$DQ480_WINE_LOCALE")
# Wine's own complaint that "/" has no volume label is no test's business.
quiet() { grep -v 'FS volume label and serial are not available' >&2 || true; }
if [[ ${1:-} == --qtest ]]; then
    # Under Wine a Qt Test writes its log to a console only: to a file, then shown here.
    shift
    log=$(mktemp)
    status=0
    "${locale[@]}" wine "$@" -o "$log,txt" 2> >(quiet) || status=$?
    cat "$log"
    rm -f "$log"
    exit $status
fi
exec "${locale[@]}" wine "$@" 2> >(quiet)
