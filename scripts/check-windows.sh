#!/usr/bin/env bash
# Without the Windows toolchain (scripts/build-windows.sh) the Win32 side cannot be built, but its
# Qt-free files must still compile for Windows: MinGW checks them.
set -euo pipefail
cd "$(dirname "$0")/.."
for file in src/platform/win/WinDrives.cpp src/platform/win/WinMediaTypes.cpp src/platform/win/WinFormat.cpp; do
    x86_64-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror -Isrc -fsyntax-only "$file"
done
echo "Windows code compiles with MinGW"
