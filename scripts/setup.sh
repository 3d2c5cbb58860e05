#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need, only those that are
# missing, so a second run costs a moment. Needs root (or sudo) only when something is missing.
set -euo pipefail

packages=(
    cmake ninja-build g++ pkgconf
    qt6-base-dev qt6-base-dev-tools libgl-dev
    qt6-multimedia-dev           # plays a sentence or a program, records a sentence
    pulseaudio pulseaudio-utils  # the tests' own sound server: recording and program playback (pactl, parec)
    clang libclang-rt-14-dev     # the setting-file reader's fuzzer
    libbenchmark-dev             # benchmarks
    libtwolame-dev               # makes the 1 kHz test tone when it is missing; encodes imported sentences
    libsndfile1-dev libmpg123-dev libsamplerate0-dev libebur128-dev  # reads, resamples and measures recordings
    espeak-ng sox                # speech and recordings made in the audio tests
    g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64  # the Windows programs (scripts/build-windows.sh)
    wine wine64                  # runs the Windows programs and their tests
    nsis                         # the Windows installer
    dosfstools fusefat           # card format: mkfs.fat, fsck.fat, and FAT images mounted in tests
    python3                      # the layers test (scripts/check-layers.py)
    python3-fusepy               # a test card that keeps wrong bytes (tests/support/altering_fs.py)
    poppler-utils                # print-outs read back as text in tests
    desktop-file-utils appstream shared-mime-info xdg-utils libglib2.0-bin bash-completion  # installed desktop files checked
    dpkg-dev fakeroot lintian    # the Debian package: cpack -G DEB, its dependencies, its check
    qt6-tools-dev qt6-l10n-tools qt6-translations-l10n  # Japanese interface: lupdate/lrelease, Qt's own texts
    fonts-ipafont-gothic         # Japanese texts in screenshots and window tests
    fonts-dejavu-core            # the Latin font of the window tests under Wine
    xvfb at-spi2-core dbus python3-pyatspi xdotool imagemagick  # real windows under X: the window title and operator journey tests
    mtools                       # the journeys' card images read back without mounting them (mdir, mcopy)
    openbox                      # the window manager of the operator journeys' desktop
)

missing=()
for p in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
    [[ "$status" == "install ok installed" ]] || missing+=("$p")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
[[ $(id -u) -eq 0 ]] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
