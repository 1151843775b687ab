#!/bin/bash
# installed.sh BUILD LIBDIR VERSION [window]: installs into a temporary prefix, moves that, and looks
# whether all is there and works: qrbtool with its library and plugins, the examples against CMake's
# package and pkg-config, icons, the file type's magic.
set -euo pipefail
build=$1 libdir=$2 version=$3 window=${4:-}
soname=${version%.*}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C.UTF-8 XDG_CONFIG_HOME=$work/config
unset QRB_LIBRARY LD_LIBRARY_PATH PKG_CONFIG_PATH DESTDIR || true

fail() {
    echo "$*" >&2
    exit 1
}

"$CMAKE" --install "$build" --prefix "$work/first" >/dev/null
# What was found by the place of its installation isn't any more.
mv "$work/first" "$work/a prefix"
prefix=$work/a\ prefix

echo "== Files"
missing=0
while read -r name; do
    case $name in
    "" | \#*) continue ;;
    "[window]") [ -n "$window" ] && continue || break ;;
    esac
    name=${name/LIBDIR/$libdir} name=${name/SONAME/$soname} name=${name/VERSION/$version}
    [ -f "$prefix/$name" ] || { echo "not installed: $name" >&2; missing=1; }
done < "$here/installed.txt"
[ "$missing" -eq 0 ] || exit 1
[ -z "$(find "$prefix" -name '*_test*' -o -name '*.qrc' -o -name '__pycache__')" ] ||
    fail "There are files that nobody needs."

echo "== qrbtool"
tool=$prefix/bin/qrbtool
"$tool" sample -n 2000 "$work/scan.qrbx" >/dev/null
# The library of the installation, not one that the system has, too.
LD_DEBUG=libs "$tool" info "$work/scan.qrbx" 2>&1 >/dev/null |
    grep -F "calling init: $prefix/$libdir/qrblib.so" >/dev/null || fail "qrbtool loads another library."
"$tool" plugin list | grep -q ground-grid || fail "qrbtool does not find its plugins."
"$tool" plugin run ground-grid "$work/scan.qrbx" --set cell=5 --trust >/dev/null
# In a prefix without the library none is taken from elsewhere by chance.
mkdir -p "$work/bare/bin"
cp "$tool" "$work/bare/bin"
if [ -z "$(ldconfig -p 2>/dev/null | grep -w qrblib.so)" ]; then
    "$work/bare/bin/qrbtool" info "$work/scan.qrbx" 2>"$work/error" && fail "A library came from nowhere."
    grep -q "folder of libraries" "$work/error" || fail "The message does not say where it was looked for."
fi

echo "== The window's files"
if [ -n "$window" ]; then
    QT_QPA_PLATFORM=offscreen "$prefix/bin/qrbadmin" --version | grep -qF "$version" ||
        fail "qrbadmin does not tell its version."
    for picture in "$prefix"/share/icons/hicolor/*x*/*/*.png; do
        folder=$(basename "$(dirname "$(dirname "$picture")")")
        # Width and height stand in the first chunk.
        size=$(od -An -tu1 -j16 -N8 "$picture" | awk '{print $3 * 256 + $4 "x" $7 * 256 + $8}')
        [ "$size" = "$folder" ] || fail "$picture is of $size."
    done
    for context in apps/qrbadmin mimetypes/application-x-qrbx; do
        [ "$(find "$prefix" -path "*/hicolor/*/$context.png" | wc -l)" -eq 8 ] || fail "$context: sizes are missing."
    done
    # What the file type's rule says of the bytes is so.
    grep -q 'offset="68" value="QRBX"' "$prefix/share/mime/packages/qrbadmin.xml"
    [ "$(head -c 72 "$work/scan.qrbx" | tail -c 4)" = QRBX ] || fail "The magic bytes stand elsewhere."
fi

# examples FOLDER: they do what they say.
examples() {
    rm -f "$work/grid.qrbx"
    "$1/grid" "$work/grid.qrbx" | grep -qxF 'tarvo.xyz[0] < 10 && tarvo.xyz[2] >= 25: 500 points, mean height 37.250'
    "$1/heights" "$work/grid.qrbx" 'tarvo.xyz[0] < 10' | awk '
        NR == 1 { right = $0 == "0.000 to 49.500" }
        NR > 1 && $2 != 100 { right = 0 }
        END { exit !(right && NR == 11) }' || fail "heights: $("$1/heights" "$work/grid.qrbx")"
}

echo "== Examples by CMake's package"
cp -r "$prefix/share/doc/libqrb-dev/examples" "$work/examples"
"$CMAKE" -S "$work/examples" -B "$work/by cmake" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
"$CMAKE" --build "$work/by cmake" >/dev/null
# The layer of a program elsewhere finds the library where the system looks.
export LD_LIBRARY_PATH=$prefix/$libdir
examples "$work/by cmake"
mkdir "$work/old"
cat > "$work/old/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.16)
project(other NONE)
set(CMAKE_SIZEOF_VOID_P 8)
find_package(qrb 999.0 QUIET)
if(qrb_FOUND)
  message(FATAL_ERROR "A version was found that there can't be.")
endif()
END
"$CMAKE" -S "$work/old" -B "$work/old/build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null

if command -v pkg-config >/dev/null; then
    echo "== Examples by pkg-config"
    export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
    mkdir "$work/pc"
    # pkg-config writes blanks of paths with backslashes.
    eval "'$CC' -std=c99 -pedantic -Wall -Wextra -Werror '$work/examples/grid.c' -o '$work/pc/grid' $(pkg-config --cflags --libs qrb)"
    eval "'$CXX' -std=c++20 -Wall -Wextra -Werror '$work/examples/heights.cpp' -o '$work/pc/heights' $(pkg-config --cflags --libs qrb-layer)"
    examples "$work/pc"
    (cd "$prefix/include" && for header in qrb/*.h; do echo "#include <$header>"; done) >"$work/all.cpp"
    eval "'$CXX' -std=c++20 -fsyntax-only -Wall -Wextra -Werror '$work/all.cpp' $(pkg-config --cflags qrb-layer)"
    [ "$(pkg-config --modversion qrb)" = "$version" ] || fail "pkg-config tells another version."
fi
echo "Done."
