#!/usr/bin/env bash
# Makes a sample project to try the program with: espeak-ng speaks three announcements, dq480-cli
# imports them as sentences the device plays, and a setting file with two programs plays them.
#   scripts/make-sample.sh [FOLDER]     (default: ./dq480-sample)
# Then: DQ480_HOME=FOLDER/home scripts/run.sh, File Open FOLDER/SAMPLE.stf.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cli=${DQ480_CLI:-$here/build/default/src/cli/dq480-cli}
folder=$(realpath -m "${1:-dq480-sample}")
command -v espeak-ng >/dev/null || { echo "espeak-ng is not installed (scripts/setup.sh installs it)" >&2; exit 2; }
[[ -x $cli ]] || { echo "$cli is missing: build first (scripts/build.sh)" >&2; exit 2; }

home=$folder/home
sentences=$home/SAMPLE            # the project's sentence folder: program folder and project name
recordings=$folder/recordings
mkdir -p "$sentences" "$recordings"

espeak-ng -w "$recordings/welcome.wav" "Good morning, and welcome to the station."
espeak-ng -w "$recordings/platform.wav" "The next train to the airport leaves from platform three."
espeak-ng -w "$recordings/closing.wav" "Please mind the gap between the train and the platform."
"$cli" import "$recordings"/welcome.wav "$recordings"/platform.wav "$recordings"/closing.wav \
    --to "$sentences" --force

# The setting file: three sentences; program 1 plays all three, program 2 the last two.
{
    printf 'PJNAME,SAMPLE,\r\nCREATOR,dq480 sample,\r\nEXPLE,Three announcements in two programs,\r\n'
    printf 'SNTPATH,%s/,\r\nSVFILE,NOMAL,\r\nCARDNAME,SAMPLE,\r\nCARDATB,A6,\r\n' "$sentences"
    printf 'SNTCTTL,SIN1KHZ ,\r\nSNTCTTL,A001    ,\r\nSNTCTTL,A002    ,\r\nSNTCTTL,A003    ,\r\n'
    printf 'FILENAME,SIN1KHZ ,\r\nFILENAME,WELCOME ,\r\nFILENAME,PLATFORM,\r\nFILENAME,CLOSING ,\r\n'
    for _ in 1 2 3 4; do printf 'AUTOLVL,000,\r\n'; done
    printf 'PRGDATA,0001,0002,0003,3000,\r\nPRGDATA,0002,0003,3000,\r\n'
    for p in $(seq 3 64); do printf 'PRGDATA,%04d,3000,\r\n' "$p"; done  # a new project's steps
    for _ in $(seq 64); do printf 'PRGOPT,2D01,\r\n'; done
    for _ in $(seq 64); do printf 'RPTCNT,001,\r\n'; done
    for _ in $(seq 64); do printf 'RPTITV,000,\r\n'; done
    for p in $(seq 64); do printf 'PRGNAME,P%03d,\r\n' "$p"; done
    printf 'PRGSORT,0000,\r\nPRGSORT,0001,\r\nPRGSORT,0002,\r\nPRGSORT,0003,\r\n'
} >"$folder/SAMPLE.stf"

DQ480_HOME=$home "$cli" check "$folder/SAMPLE.stf"
"$cli" info "$sentences"/*.MP2
echo "Sample project: $folder/SAMPLE.stf (program folder $home)"
