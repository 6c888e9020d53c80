#!/usr/bin/env bash
# Builds a project that finds the installed package, and runs it.
set -euo pipefail

build=$WORK_DIR/consumer
rm -rf "$build"
"$CMAKE" -S "$SOURCE_DIR/tests/install/consumer" -B "$build" -DCMAKE_PREFIX_PATH="$WORK_DIR/prefix"
"$CMAKE" --build "$build"
"$build/consumer"
