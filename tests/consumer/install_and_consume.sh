#!/usr/bin/env bash
# Installs the built project into a fresh prefix, then builds and runs a program of someone
# else's against it: with find_package (CMake) and with pkg-config. Also checks that the shared
# library exports the object model and not the internals.
#
#   install_and_consume.sh BUILD_DIR WORK_DIR
set -euo pipefail
build=$1
work=$2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"
prefix=$work/prefix

cmake --install "$build" --prefix "$prefix" >/dev/null
library=$(find "$prefix" -name 'libvkTreeList32.so.*.*' | head -1)
plugin=$(find "$prefix" -name 'libvkTreeListDesigner.so' | head -1)
[ -n "$library" ] || { echo "no installed library"; exit 1; }
[ -n "$plugin" ] || { echo "no installed Designer plugin"; exit 1; }

# The object model is exported; the internals are not.
exported=$(nm -D --defined-only "$library" | c++filt)
for name in 'vkTreeList::AddItem' 'lsEdit::Edit' 'lsNodes::Add' 'OffScreenDC::DrawText' \
            'ComponentServer::create'; do
  grep -q "$name" <<<"$exported" || { echo "not exported: $name"; exit 1; }
done
for name in 'TreeListPainter' 'EntryGuard' 'TextCache' 'EditButtonPainter' 'RowSequence'; do
  if grep -q "$name" <<<"$exported"; then echo "exported internal: $name"; exit 1; fi
done

cmake -S "$here" -B "$work/cmake-build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
"$work/cmake-build/consumer" "$work/cmake-consumer.png" "$plugin"

libdir=$(dirname "$library")
export PKG_CONFIG_PATH=$libdir/pkgconfig
# shellcheck disable=SC2046
g++ -std=c++20 -fPIC "$here/main.cpp" -o "$work/pc-consumer" \
  $(pkg-config --cflags --libs vkTreeList Qt6UiPlugin) -Wl,-rpath,"$libdir"
"$work/pc-consumer" "$work/pc-consumer.png"
echo "install_and_consume: installed, found with find_package and pkg-config, and used"
