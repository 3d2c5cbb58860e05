#!/usr/bin/env bash
# Set-up, build, and run every test: the fuzzer build (clang, libFuzzer) replaying its seed corpus,
# then the unit and window tests through ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh

[[ -f build/fuzz/build.ninja ]] || cmake --preset fuzz >/dev/null
cmake --build --preset fuzz >/dev/null
echo "Replaying the fuzz corpus through the setting-file reader"
build/fuzz/fuzz/fuzz_setting_reader -runs=0 fuzz/corpus 2>&1 | tail -n 1
scripts/check-windows.sh

ctest --preset default -j2
