#!/usr/bin/env bash
# Installs into one place and moves the tree to another: nothing in it may remember where it was.
set -euo pipefail

rm -rf "$WORK_DIR"
"$CMAKE" --install "$BUILD_DIR" --prefix "$WORK_DIR/staging" >/dev/null
mv "$WORK_DIR/staging" "$WORK_DIR/prefix"
cd "$WORK_DIR/prefix"

for file in \
  "$INCLUDEDIR/qm_sdk_dual.h" "$INCLUDEDIR/qm_sdk_dual.hpp" "$LIBDIR/libqm_sdkDual.so" "$LIBDIR/libqm_sdkDual.so.1" \
  "$LIBDIR/pkgconfig/qm_sdkDual.pc" "$LIBDIR/cmake/qm_sdkDual/qm_sdkDualConfig.cmake" \
  "$LIBDIR/cmake/qm_sdkDual/qm_sdkDualConfigVersion.cmake" share/doc/qm_sdkDual/LICENSE; do
  [[ -f $file ]] || { echo "not installed: $file" >&2; exit 1; }
done
for name in staging "$BUILD_DIR"; do
  if grep -rIF "$name" .; then
    echo "the lines above remember $name" >&2
    exit 1
  fi
done
ldd "$BINDIR/qmctl" | grep -F "libqm_sdkDual.so.1 => $PWD/"
"$BINDIR/qmctl" --version | grep -qx 'qmctl [0-9.]*'
"$BINDIR/qm_simulator" --help >/dev/null
