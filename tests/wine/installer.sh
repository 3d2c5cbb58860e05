#!/usr/bin/env bash
# The installer as an operator runs it, silently (/S), in a Wine prefix with nothing else in it:
# the installed folder holds what the portable zip holds (but the portable marker) and the
# uninstaller, its dq480-cli.exe runs, .stf files open in dq480.exe, the Start menu has its entry,
# the format's answer file is in place; then the silent uninstall takes all of it away again, with
# the format's answers and their folder, and nothing else.
#   installer.sh SETUP_EXE BUILT_PROGRAM UNPACKED_ZIP_FOLDER
set -euo pipefail

setup=$1 built=$2 unpacked=$3
here=$(cd "$(dirname "$0")" && pwd)
[[ -e $setup ]] || { echo "skipped: no $setup (scripts/build-windows.sh makes it)"; exit 77; }
[[ $setup -nt $built ]] || {
    echo "FAILED: $setup is older than $built (scripts/build-windows.sh --test makes both)"
    exit 1
}
work=$(mktemp -d)
export DQ480_WINE_PREFIX=$work/prefix
unset DQ480_WINE_DLL_FOLDERS
trap 'WINEPREFIX=$DQ480_WINE_PREFIX wineserver -w 2>/dev/null || true; rm -rf "$work"' EXIT
fail() {
    echo "FAILED: $*"
    exit 1
}
wine_run() { bash "$here/run-in-wine.sh" "$@"; }

wine_run "$setup" /S >/dev/null 2>&1 || fail "the installer ended with an error"
WINEPREFIX=$DQ480_WINE_PREFIX wineserver -w
installed="$DQ480_WINE_PREFIX/drive_c/Program Files/DQ-480 Setting Software"
[[ -d $installed ]] || fail "nothing was installed in Program Files"

expected=$(cd "$unpacked" && find . -type f ! -name PORTABLE.txt | sort; echo ./uninstall.exe)
got=$(cd "$installed" && find . -type f | sort)
[[ $(sort <<<"$expected") == "$got" ]] || fail "the installed files differ from the zip's: $(diff <(sort <<<"$expected") <(echo "$got") | grep '^[<>]' | head -5 | xargs)"
while IFS= read -r file; do
    [[ $file == ./uninstall.exe ]] || cmp -s "$unpacked/$file" "$installed/$file" || fail "$file differs from the zip's"
done <<<"$expected"

wine_run "C:\\Program Files\\DQ-480 Setting Software\\dq480-cli.exe" --version >/dev/null ||
    fail "the installed dq480-cli.exe does not start"
wine_run reg query 'HKLM\Software\Classes\.stf' /ve 2>/dev/null | grep -q DQ480.SettingFile ||
    fail ".stf is not registered"
wine_run reg query 'HKLM\Software\Classes\DQ480.SettingFile\shell\open\command' /ve 2>/dev/null |
    grep -qF '\DQ-480 Setting Software\dq480.exe" "%1"' || fail ".stf does not open in the installed dq480.exe"
[[ -e "$DQ480_WINE_PREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/DQ-480 Setting Software.lnk" ]] ||
    fail "the Start menu has no entry"
cmp -s <(printf '\r\n\r\nN\r\n') "$DQ480_WINE_PREFIX/drive_c/windows/system32/DQ480tmp/FMT.tmp" ||
    fail "the format's answer file is not in the system folder's DQ480tmp"

# An operator's own files in the program's folder are theirs: the uninstaller takes only its own,
# and the format's answers, the fixed drive's too that the program wrote at a format.
mkdir -p "$installed/Projects"
echo "station" >"$installed/Projects/HARBOUR.stf"
answers="$DQ480_WINE_PREFIX/drive_c/windows/system32/DQ480tmp"
printf 'DQCARD\r\nY\r\n' >"$answers/FMT_HDD.tmp"
wine_run "C:\\Program Files\\DQ-480 Setting Software\\uninstall.exe" /S >/dev/null 2>&1 ||
    fail "the uninstaller ended with an error"
WINEPREFIX=$DQ480_WINE_PREFIX wineserver -w
[[ $(cd "$installed" && find . | sort | xargs) == ". ./Projects ./Projects/HARBOUR.stf" ]] ||
    fail "the uninstaller did not take exactly its own files: $(cd "$installed" && find . | head -5 | xargs)"
! wine_run reg query 'HKLM\Software\Classes\.stf' /ve >/dev/null 2>&1 || fail "the uninstaller left .stf registered"
[[ ! -e $answers ]] || fail "the uninstaller left the format's answers: $(cd "$answers" && find . | xargs)"
echo "passed: installed silently with the zip's files, .stf registered, Start menu entry, uninstalled with the format's answers"
