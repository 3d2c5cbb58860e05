#!/usr/bin/env bash
# Builds the Windows programs and their packages on Debian 12.
#
#   scripts/build-windows.sh              toolchain (once), then the programs, the tests and the packages
#   scripts/build-windows.sh --toolchain  only the toolchain: Qt and the audio libraries for MinGW
#   scripts/build-windows.sh --test       the programs, their packages and the test suites under Wine;
#                                         needs the toolchain
#   scripts/build-windows.sh --has-toolchain   succeeds when the toolchain is built
#
# Debian has MinGW-w64 but no Qt for it, so the first run builds qtbase and the audio libraries
# from Debian's own source packages (the same versions as the host's) into a cache outside the
# tree. That takes about 40 CPU-minutes; later runs find each part's stamp and skip it.
# The host's Qt tools (moc, rcc, uic, lrelease) serve the cross build.
set -euo pipefail
shopt -s inherit_errexit

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
triple=x86_64-w64-mingw32
qt_version=6.4.2
gcc_major=$("$triple-g++-posix" -dumpversion | cut -d. -f1 | cut -d- -f1)
# Bump the recipe number whenever a recipe below changes what lands in the prefix.
recipe=1
cache=${XDG_CACHE_HOME:-$HOME/.cache}/dq480-windows/qt$qt_version-gcc$gcc_major-r$recipe
prefix=$cache/prefix
jobs=${DQ480_JOBS:-$(nproc)}

log() { printf '[%s] %s\n' "$(date +%H:%M:%S)" "$*"; }
done_already() { [[ -e $cache/stamps/$1 ]]; }
mark_done() { mkdir -p "$cache/stamps" && date >"$cache/stamps/$1"; }

# Debian's source packages, fetched with the project's own deb-src list and apt state kept in the
# cache: the system's package lists and caches stay untouched.
apt_own=(-o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$root/scripts/windows/apt"
    -o "Dir::State::Lists=$cache/apt/lists" -o "Dir::Cache=$cache/apt/cache" -o APT::Sandbox::User=root)
missing_downloads() { # download-folder -> the files its .dsc lists that did not arrive
    local dsc file
    dsc=$(compgen -G "$1/*.dsc") || { echo "$(basename "$1").dsc"; return; }
    for file in $(awk '/^Files:/ { files = 1; next } /^[^ ]/ { files = 0 } files { print $3 }' "$dsc"); do
        [[ -s $1/$file ]] || echo "$file"
    done
}
fetch_source() { # package -> prints the unpacked source folder
    local package=$1 dir=$cache/src/$1 downloads=$cache/downloads/$1 file missing patched=yes
    if [[ ! -e $dir/.unpacked ]]; then
        mkdir -p "$cache/apt/lists/partial" "$cache/apt/cache/archives/partial" "$downloads"
        if [[ ! -e $cache/apt/lists/.updated ]]; then
            apt-get -qq "${apt_own[@]}" update >&2
            touch "$cache/apt/lists/.updated"
        fi
        # What arrived decides, not apt's status: a mirror may lack a file the .dsc lists.
        (cd "$downloads" && apt-get -qq "${apt_own[@]}" source --download-only "$package" >&2) || true
        missing=$(missing_downloads "$downloads")
        for file in $missing; do
            case $file in
            # The upstream signature: every file apt did fetch was checked against the signed index.
            *.asc) ;;
            # Debian's packaging alone: the upstream source builds without it, but without Debian's
            # patches, which is said.
            *.debian.tar.*)
                patched=no
                log "$package: the mirror lacks $file; building the upstream source without Debian's patches" >&2
                ;;
            *)
                echo "Failed: the source package $package could not be fetched ($file is missing)" >&2
                return 1
                ;;
            esac
        done
        rm -rf "$dir"
        mkdir -p "$cache/src"
        if [[ $patched == yes ]]; then
            dpkg-source --no-check -x "$downloads"/*.dsc "$dir" >&2
        else
            mkdir -p "$dir"
            tar -xf "$(compgen -G "$downloads/*.orig.tar.*" | grep -v '\.asc$' | head -n 1)" --strip-components=1 -C "$dir"
        fi
        rm -f "$cache/src"/*.tar.*
        touch "$dir/.unpacked"
    fi
    echo "$dir"
}

host_env() { # the environment every cross build runs in
    export PKG_CONFIG_LIBDIR=$prefix/lib/pkgconfig PKG_CONFIG_PATH=
    export DQ480_WINDOWS_PREFIX=$prefix
}

logged() { # log-name command... : the output goes to a log, whose end is shown when the step fails
    local logfile=$cache/logs/$1.log
    shift
    mkdir -p "$cache/logs"
    if ! "$@" >>"$logfile" 2>&1; then
        tail -n 30 "$logfile" >&2
        echo "Failed: $* (whole log: $logfile)" >&2
        return 1
    fi
}

cmake_cross() { # name source-dir cmake-options...
    local name=$1 src=$2
    shift 2
    # The source comes from a command substitution, whose failure does not stop the script.
    [[ -n $src && -d $src ]] || { echo "Failed: no source for $name" >&2; return 1; }
    rm -rf "$cache/build/$name"
    logged "$name" cmake -G Ninja -S "$src" -B "$cache/build/$name" -Wno-dev \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_PREFIX_PATH="$prefix" -DBUILD_SHARED_LIBS=ON "$@"
    logged "$name" cmake --build "$cache/build/$name" -j"$jobs"
    logged "$name" cmake --install "$cache/build/$name"
    rm -rf "$cache/build/$name"
}

autotools_cross() { # name source-dir configure-options...
    local name=$1 src=$2
    shift 2
    [[ -n $src && -d $src ]] || { echo "Failed: no source for $name" >&2; return 1; }
    rm -rf "$cache/build/$name"
    mkdir -p "$cache/build/$name"
    (
        cd "$cache/build/$name"
        logged "$name" "$src/configure" --host=$triple --prefix="$prefix" --enable-shared --disable-static \
            CC=$triple-gcc-posix CXX=$triple-g++-posix CPPFLAGS="-I$prefix/include" LDFLAGS="-L$prefix/lib" "$@"
        logged "$name" make -j"$jobs"
        logged "$name" make install
    )
    rm -rf "$cache/build/$name"
}

build_qtbase() {
    done_already qtbase && return
    local src
    src=$(fetch_source qt6-base)
    log "qtbase $qt_version: configuring (the build takes about 40 CPU-minutes)"
    rm -rf "$cache/build/qtbase"
    mkdir -p "$cache/build"
    # Debian's source leaves out the wintab headers, so tablet events stay off; OpenGL stays on
    # because the windows platform plugin of this version does not compile without it.
    logged qtbase cmake -G Ninja -S "$src" -B "$cache/build/qtbase" -Wno-dev \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF \
        -DINPUT_openssl=no -DFEATURE_system_zlib=OFF -DFEATURE_tabletevent=OFF
    log "qtbase: building"
    logged qtbase cmake --build "$cache/build/qtbase" -j"$jobs"
    logged qtbase cmake --install "$cache/build/qtbase"
    rm -rf "$cache/build/qtbase"
    mark_done qtbase
    log "qtbase: installed"
}

# The libraries the program links, as DLLs (most are LGPL, so an operator may replace them).
# Stack protection stays off where a library offers it: MinGW would need libssp beside it.
build_library() { # name recipe-function
    done_already "$1" && return
    log "$1: building"
    "$2"
    mark_done "$1"
}
# libogg's CMake build names its DLL libogg.dll but its import library ogg.dll; configure agrees.
recipe_ogg() { autotools_cross ogg "$(fetch_source libogg)"; }
# libvorbis' CMake build hands MinGW's linker a .def file it cannot read; its configure works.
recipe_vorbis() {
    autotools_cross vorbis "$(fetch_source libvorbis)" --with-ogg="$prefix" --disable-oggtest --disable-docs --disable-examples
}
# Opus' CMake build wants a Git checkout to learn its version; its configure does not. It adds
# fortified memcpy, which needs libssp under MinGW, unless the macro is already defined.
recipe_opus() {
    autotools_cross opus "$(fetch_source opus)" --disable-stack-protector --disable-doc --disable-extra-programs \
        CFLAGS="-O2 -D_FORTIFY_SOURCE=0"
}
recipe_flac() {
    cmake_cross flac "$(fetch_source flac)" -DBUILD_CXXLIBS=OFF -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF \
        -DBUILD_TESTING=OFF -DBUILD_DOCS=OFF -DINSTALL_MANPAGES=OFF -DWITH_FORTIFY_SOURCE=OFF -DWITH_STACK_PROTECTOR=OFF
}
recipe_sndfile() {
    # MPEG stays off: the program decodes MP2/MP3 with mpg123 itself.
    cmake_cross sndfile "$(fetch_source libsndfile)" -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_TESTING=OFF \
        -DENABLE_MPEG=OFF -DENABLE_EXTERNAL_LIBS=ON -DINSTALL_PKGCONFIG_MODULE=ON -DINSTALL_MANPAGES=OFF
}
recipe_mpg123() { autotools_cross mpg123 "$(fetch_source mpg123)" --with-cpu=x86-64 --disable-components --enable-libmpg123; }
recipe_twolame() { autotools_cross twolame "$(fetch_source twolame)" --disable-sndfile; }
recipe_samplerate() {
    cmake_cross samplerate "$(fetch_source libsamplerate)" -DLIBSAMPLERATE_EXAMPLES=OFF -DBUILD_TESTING=OFF
}
recipe_ebur128() { cmake_cross ebur128 "$(fetch_source libebur128)" -DENABLE_INTERNAL_QUEUE_H=ON; }
recipe_portaudio() {
    # WASAPI and MME cover every Windows PC since Vista; ASIO needs Steinberg's SDK.
    cmake_cross portaudio "$(fetch_source portaudio19)" -DPA_USE_ASIO=OFF -DPA_USE_DS=OFF -DPA_USE_WDMKS=OFF \
        -DPA_USE_WASAPI=ON -DPA_USE_WMME=ON -DPA_DLL_LINK_WITH_STATIC_RUNTIME=OFF -DPA_BUILD_TESTS=OFF
}

build_toolchain() {
    mkdir -p "$cache"
    host_env
    build_qtbase
    local library
    for library in ogg vorbis opus flac sndfile mpg123 twolame samplerate ebur128 portaudio; do
        build_library "$library" "recipe_$library"
    done
    mark_done toolchain
    log "toolchain ready in $cache"
}

# The programs and the Wine test suites, with the project's own CMake (the windows preset).
build_program() {
    log "programs: building into build/windows"
    cd "$root"
    logged program cmake --preset windows
    logged program cmake --build --preset windows -j"$jobs"
}

# The DLLs a program or library loads that the cross build made or MinGW brings; Windows' own are
# left out (they are not in these folders).
dll_folders() {
    echo "$prefix/bin" "$prefix/lib" "$prefix/plugins/platforms" "$prefix/plugins/styles"
    dirname "$("$triple-g++-posix" -print-file-name=libstdc++-6.dll)"
    echo "/usr/$triple/lib"
}
copy_dlls_for() { # stage-folder binary...
    local stage=$1 binary dll folder
    shift
    for binary in "$@"; do
        for dll in $("$triple-objdump" -p "$binary" | awk '/DLL Name:/ {print $3}'); do
            [[ -e $stage/$dll ]] && continue
            for folder in $(dll_folders); do
                if [[ -e $folder/$dll ]]; then
                    cp "$folder/$dll" "$stage/"
                    copy_dlls_for "$stage" "$stage/$dll"
                    break
                fi
            done
        done
    done
}

# What both packages hold: the programs, their DLLs, Qt's plugins and translations, the licences.
make_stage() {
    local stage=$1 source licence
    rm -rf "$stage"
    mkdir -p "$stage/platforms" "$stage/styles" "$stage/translations" "$stage/licences"
    cp "$root/build/windows/src/app/dq480.exe" "$root/build/windows/src/cli/dq480-cli.exe" "$stage/"
    cp "$root/build/windows/src/app"/dq480-*.dll "$stage/" # the plugins, loaded on first use
    cp "$prefix/plugins/platforms/qwindows.dll" "$stage/platforms/"
    cp "$prefix/plugins/styles/qwindowsvistastyle.dll" "$stage/styles/"
    copy_dlls_for "$stage" "$stage"/*.exe "$stage"/dq480-*.dll "$stage/platforms/qwindows.dll" "$stage/styles/qwindowsvistastyle.dll"
    "$triple-strip" --strip-unneeded "$stage"/*.exe "$stage"/*.dll "$stage"/*/*.dll
    # Qt's own dialogs (file dialogs, standard buttons) in Japanese; the program's texts are built in.
    cp /usr/share/qt6/translations/qtbase_ja.qm "$stage/translations/"
    printf '[Paths]\r\nPrefix=.\r\nPlugins=.\r\nTranslations=translations\r\n' >"$stage/qt.conf"
    cp "$root/data/icons/dq480.ico" "$stage/"
    cp "$root/data/copyright" "$stage/licences/dq480.txt"
    for source in qt6-base libogg libvorbis opus flac libsndfile mpg123 twolame libsamplerate libebur128 portaudio19; do
        for licence in debian/copyright COPYING LICENSE LICENSE.txt; do
            [[ -e $cache/src/$source/$licence ]] && break
        done
        cp "$cache/src/$source/$licence" "$stage/licences/$source.txt"
    done
    cp /usr/share/doc/gcc-mingw-w64-base/copyright "$stage/licences/gcc-runtime.txt"
    cp /usr/share/doc/mingw-w64-common/copyright "$stage/licences/mingw-w64-runtime.txt"
}

make_packages() {
    local version stage zip_root
    version=$(sed -n 's/^project(dq480 VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
    stage=$root/build/windows/stage
    log "packages: dq480-$version-win64.zip and dq480-$version-win64-setup.exe"
    make_stage "$stage"

    zip_root=$root/build/windows/zip/dq480-$version-win64
    rm -rf "$(dirname "$zip_root")"
    mkdir -p "$(dirname "$zip_root")"
    cp -r "$stage" "$zip_root"
    printf '%s\r\n' "This copy of the DQ-480 setting software is portable: it keeps its work folder (SoundTmp)" \
        "and the project folders here, beside dq480.exe. Delete this file to keep them in your own" \
        "data folder (%LOCALAPPDATA%\\dq480) instead." >"$zip_root/PORTABLE.txt"
    rm -f "$root/build/windows/dq480-$version-win64.zip"
    (cd "$(dirname "$zip_root")" && cmake -E tar cf "$root/build/windows/dq480-$version-win64.zip" --format=zip \
        "dq480-$version-win64")

    # The uninstaller removes exactly what was installed, files first, then the folders deepest first.
    local uninstall_list=$root/build/windows/uninstall-files.nsh file
    {
        (cd "$stage" && find . -type f | sort) | while read -r file; do
            file=${file#./}
            printf 'Delete "$INSTDIR\\%s"\n' "${file//\//\\}"
        done
        (cd "$stage" && find . -mindepth 1 -type d | sort -r) | while read -r file; do
            file=${file#./}
            printf 'RMDir "$INSTDIR\\%s"\n' "${file//\//\\}"
        done
    } >"$uninstall_list"
    logged package makensis -V2 -DVERSION="$version" -DSTAGE="$stage" -DUNINSTALL_LIST="$uninstall_list" \
        -DOUTFILE="$root/build/windows/dq480-$version-win64-setup.exe" "$root/scripts/windows/dq480.nsi"
    log "packages: ready in build/windows"
}

# Sourced (by a maintainer trying one recipe), it only defines the functions above.
[[ ${BASH_SOURCE[0]} == "$0" ]] || return 0

mode=all
for arg in "$@"; do
    case $arg in
    --toolchain) mode=toolchain ;;
    --test) mode=test ;;
    --has-toolchain) done_already toolchain; exit ;;
    --print-cache) echo "$cache"; exit 0 ;;
    -h | --help) sed -n '2,12p' "$0"; exit 0 ;;
    *) echo "Unknown option: $arg (see --help)" >&2; exit 2 ;;
    esac
done

if [[ $mode == test ]]; then
    if ! done_already toolchain; then
        echo "The Windows toolchain is not built yet: run scripts/build-windows.sh --toolchain first." >&2
        exit 3
    fi
    host_env
    build_program
    # The package checks run on what an operator gets: the zip and the installer of this build.
    make_packages
    ctest --preset windows -j"$jobs"
    exit
fi
build_toolchain
[[ $mode == toolchain ]] && exit 0
build_program
make_packages
