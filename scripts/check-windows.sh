#!/usr/bin/env bash
# The Win32 side of the program cannot be built here, but its Qt-free files must compile for
# Windows: MinGW checks them. (WinDriveSource.cpp adapts them to Qt and is built on Windows only.)
set -euo pipefail
cd "$(dirname "$0")/.."
for file in src/platform/win/WinDrives.cpp src/platform/win/WinMediaTypes.cpp src/platform/win/WinFormat.cpp; do
    x86_64-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror -fsyntax-only "$file"
done
echo "Windows code compiles with MinGW"
