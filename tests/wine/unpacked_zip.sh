#!/usr/bin/env bash
# Runs a check on the portable zip as an operator gets it: unpacked into a folder of its own.
#   unpacked_zip.sh ZIP BUILT_PROGRAM [--copy FILE]... COMMAND...
# "{}" in COMMAND stands for the unpacked folder; --copy puts FILE in it first (a test that must
# run from where the programs are, with what it needs beyond them). Skips when there is no zip; fails when the zip is older than
# the program built beside it, which would test yesterday's package.
set -euo pipefail

zip=$1 built=$2
shift 2
[[ -e $zip ]] || { echo "skipped: no $zip (scripts/build-windows.sh makes it)"; exit 77; }
[[ $zip -nt $built ]] || {
    echo "FAILED: $zip is older than $built (scripts/build-windows.sh --test makes both)"
    exit 1
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$work" && cmake -E tar xf "$zip")
folder=$(echo "$work"/dq480-*-win64)
[[ -d $folder ]] || { echo "FAILED: $zip holds no dq480-<version>-win64 folder"; exit 1; }
while [[ ${1:-} == --copy ]]; do
    cp "$2" "$folder/"
    shift 2
done
command=()
for arg in "$@"; do
    command+=("${arg//\{\}/$folder}")
done
status=0
"${command[@]}" || status=$?
exit $status
