#!/usr/bin/env bash
# clang-tidy finds nothing in the product's and the simulator's sources.
# Usage: check_tidy.sh <root> <build folder>
set -euo pipefail
cd "$1"
find src sim -name '*.cpp' ! -name '*_win.cpp' | sort | xargs -P 2 -n 4 clang-tidy --quiet -p "$2"
