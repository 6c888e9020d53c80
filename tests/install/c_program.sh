#!/usr/bin/env bash
# Builds the example as a customer does, and runs it against the installed simulator.
set -euo pipefail

prefix=$WORK_DIR/prefix
export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig
export LD_LIBRARY_PATH=$prefix/$LIBDIR${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}
# shellcheck disable=SC2046,SC2086 # flags are words
"$CC" -std=c99 -Wall -Wextra -Werror ${CFLAGS:-} "$SOURCE_DIR/examples/hello.c" -o "$WORK_DIR/hello" \
  $(pkg-config --cflags --libs qm_sdkDual)

exec {ready}< <(exec "$prefix/$BINDIR/qm_simulator" --port 0 --type 0x0262 --size 96x24)
simulator=$!
trap 'kill "$simulator" 2>/dev/null || true' EXIT
read -r -t 30 line <&"$ready"
[[ $line =~ 127\.0\.0\.1:([0-9]+) ]] || { echo "not ready: $line" >&2; exit 1; }
port=${BASH_REMATCH[1]}

"$WORK_DIR/hello" 127.0.0.1 "$port" "Hello" | tee "$WORK_DIR/hello.txt"
grep -aqx 'A screen of 96 x 24 pixels.' "$WORK_DIR/hello.txt"

kill "$simulator"
wait "$simulator"
status=0
"$WORK_DIR/hello" 127.0.0.1 "$port" "Hello" || status=$?
[[ $status == 2 ]] || { echo "without a controller: exit status $status, not 2" >&2; exit 1; }
