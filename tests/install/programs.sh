#!/usr/bin/env bash
# Builds the examples as a customer does, and runs them against the installed simulator.
set -euo pipefail

prefix=$WORK_DIR/prefix
export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig
export LD_LIBRARY_PATH=$prefix/$LIBDIR${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}
# build COMPILER FLAGS SOURCE PROGRAM
build() {
  # shellcheck disable=SC2046,SC2086 # flags are words
  $1 $2 -Wall -Wextra -pedantic -Werror "$SOURCE_DIR/examples/$3" -o "$WORK_DIR/$4" \
    $(pkg-config --cflags --libs qm_sdkDual)
}
build "$CC" "-std=c99 ${CFLAGS:-}" hello.c hello_c99
build "$CXX" "-std=c++17 ${CXXFLAGS:-}" hello.cpp hello_cxx17
build "$CXX" "-std=c++20 ${CXXFLAGS:-}" hello.cpp hello_cxx20
build "$CXX" "-std=c++20 ${CXXFLAGS:-}" board.cpp board
programs=(hello_c99 hello_cxx17 hello_cxx20 board)

exec {ready}< <(exec "$prefix/$BINDIR/qm_simulator" --port 0 --type 0x0262 --size 96x24)
simulator=$!
trap 'kill "$simulator" 2>/dev/null || true' EXIT
read -r -t 30 line <&"$ready"
[[ $line =~ 127\.0\.0\.1:([0-9]+) ]] || { echo "not ready: $line" >&2; exit 1; }
port=${BASH_REMATCH[1]}

for program in "${programs[@]}"; do
  "$WORK_DIR/$program" 127.0.0.1 "$port" "Hello" | tee "$WORK_DIR/hello.txt"
  grep -aqx 'A screen of 96 x 24 pixels.' "$WORK_DIR/hello.txt"
done
"$prefix/$BINDIR/qmctl" -c "127.0.0.1:$port" fs ls | grep -q '^P001  0 '

kill "$simulator"
wait "$simulator"
for program in "${programs[@]}"; do
  status=0
  "$WORK_DIR/$program" 127.0.0.1 "$port" "Hello" || status=$?
  [[ $status == 2 ]] || { echo "$program without a controller: exit status $status, not 2" >&2; exit 1; }
done
