#!/usr/bin/env bash
# Set-up, build, and run every test: the fuzzer builds (clang, libFuzzer) replaying their corpora,
# the Windows suites under Wine (when the Windows toolchain is built), the unit and window tests
# through ctest, then the same tests once more built with the address and undefined-behaviour
# sanitizers, where any report fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh

[[ -f build/fuzz/build.ninja ]] || cmake --preset fuzz >/dev/null
cmake --build --preset fuzz >/dev/null
echo "Replaying the fuzz corpus through the setting-file reader"
# The hostile files the open tests meet are part of its corpus, read where they lie.
build/fuzz/fuzz/fuzz_setting_reader -runs=0 fuzz/corpus tests/data/hostile 2>&1 | tail -n 1
echo "Replaying the fuzz corpus through the mount table, boot sector and MP2 header readers"
build/fuzz/fuzz/fuzz_drive_data -runs=0 fuzz/corpus-drive-data 2>&1 | tail -n 1
# The Windows programs' suites under Wine need the Windows toolchain, whose first build takes about
# 40 CPU-minutes: they run when it is there and are skipped otherwise, never building it here.
if scripts/build-windows.sh --has-toolchain; then
    scripts/build-windows.sh --test
else
    echo "Skipping the Windows tests under Wine: the Windows toolchain is not built (scripts/build-windows.sh builds it)."
    scripts/check-windows.sh
fi

ctest --preset default -j2

# The sanitizer build has no benchmarks; Qt's own leaks are suppressed in tests/lsan.supp.
[[ -f build/asan/build.ninja ]] || cmake --preset asan >/dev/null
cmake --build --preset asan
ctest --preset asan -j2
