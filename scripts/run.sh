#!/usr/bin/env bash
# Set-up, build, and start the program. Arguments go to the program.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh >/dev/null
exec build/default/src/app/dq480 "$@"
