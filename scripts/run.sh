#!/usr/bin/env bash
# Set-up, build, and start the program. Arguments go to the program.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
# Quiet when the build goes well; its whole output when it does not.
if ! log=$(scripts/build.sh 2>&1); then
    printf '%s\n' "$log" >&2
    exit 1
fi
exec build/default/src/app/dq480 "$@"
