#!/usr/bin/env bash
# clang-tidy finds nothing in the sources of one folder, those below it left out.
# Usage: check_tidy.sh <root> <build folder> <folder>
set -euo pipefail
cd "$1"
find "$3" -maxdepth 1 -name '*.cpp' ! -name '*_win.cpp' | sort | xargs -n 4 clang-tidy --quiet -p "$2"
