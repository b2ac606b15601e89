#!/usr/bin/env bash
# Every source stands as clang-format would write it.
set -euo pipefail
cd "$1"
find src sim bench tests -name '*.h' -o -name '*.cpp' | sort | xargs clang-format --dry-run --Werror
