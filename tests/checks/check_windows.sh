#!/usr/bin/env bash
# Compiles the sources that only Windows uses, with the cross compiler and the Qt headers at hand; nothing is
# linked. Usage: check_windows.sh <root> <Qt include folder>
set -euo pipefail
cd "$1"
qt=$2
found=0
while read -r source; do
    x86_64-w64-mingw32-g++ -std=c++17 -fsyntax-only -Wall -Wextra -Werror -Wno-attributes -DQT_NO_VERSION_TAGGING \
        -Isrc -isystem "$qt" -isystem "$qt/QtCore" -isystem "$qt/QtNetwork" -isystem "$qt/QtSerialPort" "$source"
    found=$((found + 1))
done < <(find src -name '*_win.cpp' | sort)
echo "$found sources compiled"
[ "$found" -gt 0 ]
