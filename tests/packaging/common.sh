# What the tests here share. Sets `build`, `source`, and `work`, a directory that is gone when the test ends.
set -euo pipefail
build=$1
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home XDG_DATA_HOME=$work/data XDG_STATE_HOME=$work/state XDG_CACHE_HOME=$work/cache XDG_RUNTIME_DIR=$work/run
export LANG=en_GB.UTF-8 LC_ALL= QUILLON_DIR= TZ=UTC
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
mkdir -p -m 700 "$HOME" "$XDG_RUNTIME_DIR"

fail() {
    echo "$*"
    exit 1
}

# same WHAT EXPECTED ACTUAL
same() {
    [ "$2" = "$3" ] || fail "$1:"$'\n'"$(diff <(echo "$2") <(echo "$3") || true)"
}

# Starts the program without a display server, waits until `file` is there, and ends it.
starts() { # PROGRAM FILE ARGUMENTS...
    local program=$1 file=$2 running
    shift 2
    QT_QPA_PLATFORM=offscreen "$program" "$@" &
    running=$!
    for _ in $(seq 150); do
        [ -e "$file" ] && break
        sleep 0.1
    done
    sleep 0.5
    kill -0 $running 2>/dev/null || fail "the program ended by itself"
    kill $running
    wait $running 2>/dev/null || true
    [ -e "$file" ] || fail "the program did not write $file"
}

# Every file that an installation holds, below its prefix.
installed_files() {
    cat <<END
bin/quillon
share/applications/quillon.desktop
share/doc/quillon/LICENSE
share/doc/quillon/copyright
share/icons/hicolor/128x128/apps/quillon.png
share/icons/hicolor/16x16/apps/quillon.png
share/icons/hicolor/24x24/apps/quillon.png
share/icons/hicolor/256x256/apps/quillon.png
share/icons/hicolor/32x32/apps/quillon.png
share/icons/hicolor/48x48/apps/quillon.png
share/icons/hicolor/64x64/apps/quillon.png
share/icons/hicolor/scalable/apps/quillon.svg
share/man/man1/quillon.1
share/metainfo/org.quillon.Quillon.metainfo.xml
share/quillon/country.lst
share/quillon/manual.html
share/quillon/quillon_index.template
share/quillon/quillon_log.template
share/quillon/quillon_mapview.htm
END
}
