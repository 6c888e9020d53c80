#!/usr/bin/env bash
# The example sign in C and in Python against the installed simulator: both end with the same screen.
set -euo pipefail

prefix=$WORK_DIR/prefix
sign=$SOURCE_DIR/examples/sign
export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig
export LD_LIBRARY_PATH=$prefix/$LIBDIR${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}
# shellcheck disable=SC2046,SC2086 # flags are words
"$CC" -std=c99 -Wall -Wextra -Werror ${CFLAGS:-} "$sign/sign.c" -o "$WORK_DIR/sign" \
  $(pkg-config --cflags --libs qm_sdkDual)

# run NAME PROGRAM...: the program's screen and the controller's state when it has ended.
run() {
  local name=$1 simulator line
  shift
  exec {ready}< <(exec "$prefix/$BINDIR/qm_simulator" --port 0 --type 0x0262 --size 96x32 \
    --screenshot "$WORK_DIR/$name.png" --state "$WORK_DIR/$name.json")
  simulator=$!
  # shellcheck disable=SC2064 # the process of this moment
  trap "kill $simulator 2>/dev/null || true" EXIT
  read -r -t 30 line <&"$ready"
  [[ $line =~ 127\.0\.0\.1:([0-9]+) ]] || { echo "not ready: $line" >&2; exit 1; }
  "$@" 127.0.0.1 "${BASH_REMATCH[1]}" "$sign/logo.png" 2 | tee "$WORK_DIR/$name.txt"
  grep -aqx 'status 0' "$WORK_DIR/$name.txt"
  kill "$simulator"
  wait "$simulator"
}

run sign_c "$WORK_DIR/sign"
run sign_python python3 "$sign/sign.py"
cmp "$WORK_DIR/sign_c.png" "$WORK_DIR/sign_python.png"
for name in sign_c sign_python; do
  grep -q '"id": 1' "$WORK_DIR/$name.json"
  grep -q '"id": 3' "$WORK_DIR/$name.json"
  if grep -q '"id": 2' "$WORK_DIR/$name.json"; then
    echo "$name: the clock is still there" >&2
    exit 1
  fi
done
