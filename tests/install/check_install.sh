#!/usr/bin/env bash
# What "cmake --install" and the Debian package put on an operator's machine, checked in a
# throwaway prefix. Usage: check_install.sh CHECK BUILD_DIR SOURCE_DIR, where CHECK is one of
# prefix, desktop, mime, manpages, completion, package; DQ480_APP and DQ480_CLI name the built
# programs. Exit 77 = skipped (a tool is missing).
set -euo pipefail

check=$1
build=$(realpath "$2")
source=$(realpath "$3")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

app_id=com.arvon.dq480
# Every file an installation holds, below its prefix.
installed=(
    bin/dq480 bin/dq480-cli share/man/man1/dq480.1.gz share/man/man1/dq480-cli.1.gz
    share/applications/$app_id.desktop share/metainfo/$app_id.metainfo.xml share/mime/packages/$app_id.xml
    share/bash-completion/completions/dq480-cli share/doc/dq480/copyright share/doc/dq480/changelog.gz
    share/icons/hicolor/scalable/apps/dq480.svg
    lib/dq480/dq480-playback.so lib/dq480/dq480-codecs.so lib/dq480/dq480-testtone.so lib/dq480/dq480-print.so
)
for size in 16 22 24 32 48 64 128 256; do installed+=("share/icons/hicolor/${size}x${size}/apps/dq480.png"); done

fail() { echo "FAIL: $*" >&2; exit 1; }
skip() { echo "SKIP: $*"; exit 77; }
needs() { for tool in "$@"; do command -v "$tool" >/dev/null || skip "needs $tool (see scripts/setup.sh)"; done; }
install_prefix() { cmake --install "$build" --prefix "$work/prefix" >/dev/null; }

case $check in
prefix)
    install_prefix
    for file in "${installed[@]}"; do
        [[ -f "$work/prefix/$file" ]] || fail "cmake --install left out $file"
    done
    [[ -x "$work/prefix/bin/dq480" ]] || fail "dq480 not executable"
    "$work/prefix/bin/dq480-cli" --version | grep -q '^dq480' || fail "installed dq480-cli does not run"
    ;;

desktop)
    needs desktop-file-validate appstreamcli
    install_prefix
    desktop=$work/prefix/share/applications/$app_id.desktop
    desktop-file-validate "$desktop" || fail "desktop-file-validate"
    appstreamcli validate --no-net "$work/prefix/share/metainfo/$app_id.metainfo.xml" || fail "appstreamcli validate"
    # A file manager runs the program with the double-clicked file for this type.
    grep -qx 'Exec=dq480 %f' "$desktop" || fail "Exec line of $desktop"
    grep -qx 'MimeType=application/x-dq480-setting;' "$desktop" || fail "MimeType line of $desktop"
    icon=$(sed -n 's/^Icon=//p' "$desktop")
    [[ -f "$work/prefix/share/icons/hicolor/scalable/apps/$icon.svg" ]] || fail "no icon named $icon"
    # The screenshots the description names are the ones kept with the sources.
    for shot in $(grep -o '[^/]*\.png</image>' "$work/prefix/share/metainfo/$app_id.metainfo.xml" | sed 's#</image>##'); do
        [[ -f "$source/data/screenshots/$shot" ]] || fail "screenshot $shot is not in data/screenshots"
    done
    ;;

mime)
    needs update-mime-database xdg-mime gio
    install_prefix
    update-mime-database "$work/prefix/share/mime"
    mkdir "$work/files"
    # Without its extension a setting file is still known by its first key.
    for name in station.stf station; do cp "$source/tests/data/example-two-sentences.stf" "$work/files/$name"; done
    printf 'CARDNAME,x,\r\n' >"$work/files/other"
    # xdg-mime asks GLib, which reads the shared MIME database of the test prefix only.
    export XDG_CURRENT_DESKTOP=GNOME XDG_DATA_DIRS="$work/prefix/share:/usr/share" XDG_DATA_HOME="$work/home"
    for file in station.stf station other; do
        type=$(xdg-mime query filetype "$work/files/$file")
        if [[ $file == other ]]; then [[ $type != application/x-dq480-setting ]]
        else [[ $type == application/x-dq480-setting ]]; fi || fail "$file is $type"
    done
    ;;

manpages)
    # Every option and command the programs' --help names is in their manual page.
    for program in dq480 dq480-cli; do
        exe=$DQ480_APP && [[ $program == dq480 ]] || exe=$DQ480_CLI
        page=$(sed 's/\\-/-/g' "$source/data/man/$program.1")
        help=$("$exe" --help)
        for option in $(grep -o -- '--[a-z][a-z-]*' <<<"$help" | sort -u); do
            grep -q -- "$option" <<<"$page" || fail "$program.1 lacks $option"
        done
        if [[ $program == dq480-cli ]]; then
            for command in $(sed -n '/^Commands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p' <<<"$help"); do
                grep -qE "^(\.B[IR]* |\\\\fB)$command\b" <<<"$page" || fail "$program.1 lacks the command $command"
            done
        fi
        version=$("$exe" --version | awk '{print $2}')
        grep -q "^\.TH .*\"dq480 $version\"" "$source/data/man/$program.1" || fail "$program.1 is not of version $version"
    done
    ;;

completion)
    completion=/usr/share/bash-completion/bash_completion
    [[ -f $completion ]] || skip "needs bash-completion"
    # Completions for the words typed so far, the last one being completed.
    complete_words() {
        bash -c 'source "$1"; source "$2"; shift 2
                 COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_LINE="$*"; COMP_POINT=${#COMP_LINE}
                 _dq480_cli; printf "%s\n" "${COMPREPLY[@]}" | sort | xargs' \
            _ "$completion" "$source/data/completion/dq480-cli.bash" "$@"
    }
    commands=$("$DQ480_CLI" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p' | sort | xargs)
    expect() {
        local want=$1 got
        shift
        got=$(complete_words "$@")
        [[ $got == "$want" ]] || fail "completing '$*': got '$got', want '$want'"
    }
    expect "$commands" dq480-cli ""
    expect "--card --encoding --help --no --version --yes" dq480-cli write-card project.stf --
    expect "all info program= programs" dq480-cli print project.stf --kind ""
    expect "--encoding --help --passes --program --render --version" dq480-cli play project.stf --
    ;;

package)
    needs cpack dpkg-deb dpkg-shlibdeps fakeroot
    # The default build's own install: no second build.
    (cd "$work" && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/package" >/dev/null)
    deb=$(ls "$work"/package/dq480_*.deb)
    contents=$(dpkg-deb --contents "$deb" | awk '{print $6}')
    for file in "${installed[@]}"; do
        grep -qx "\./usr/$file" <<<"$contents" || fail "the package lacks /usr/$file"
    done
    depends=$(dpkg-deb --field "$deb" Depends)
    [[ $depends == *libqt6widgets6* ]] || fail "Depends lacks the Qt libraries: $depends"
    # The plugins' own libraries, which the program no longer links.
    for library in libqt6multimedia6 libsndfile1 libmpg123-0 libtwolame0 libqt6printsupport6; do
        [[ $depends == *$library* ]] || fail "Depends lacks $library, which a plugin needs: $depends"
    done
    [[ $(dpkg-deb --field "$deb" Recommends) == "dosfstools, udisks2" ]] || fail "Recommends"
    ! command -v lintian >/dev/null || lintian --fail-on error "$deb" || fail "lintian reports errors"
    ;;

*)
    fail "unknown check $check"
    ;;
esac
echo "PASS: $check"
