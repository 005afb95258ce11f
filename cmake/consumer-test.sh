#!/usr/bin/env bash
# Installs the build tree into a scratch prefix and builds and runs a small
# application against it with find_package(veitikgip).
set -euo pipefail
build_dir="$1"; source_dir="$2"; work="$3"
rm -rf "$work"
cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
cmake -S "$source_dir/cmake/consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/build" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib:$work/prefix/lib/x86_64-linux-gnu:${LD_LIBRARY_PATH:-}" "$work/build/consumer"
test -f "$work/prefix/include/veitikgip/veitikgip_export.h"
test -f "$work/prefix/include/vocore/vsettings.h"
PKG_CONFIG_PATH="$(dirname "$(find "$work/prefix" -name veitikgip.pc)")" pkg-config --libs veitikgip | grep -q -- -lveitikgip
echo "consumer built and ran against the installed library"
