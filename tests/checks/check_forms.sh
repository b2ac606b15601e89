#!/usr/bin/env bash
# The build knows how the header of every form is made: a changed form reaches the program in one build.
# Usage: check_forms.sh <root> <build folder>
set -euo pipefail
cd "$1"
targets=$(ninja -C "$2" -t targets all)
faults=0
for form in src/forms/*.ui; do
    name=$(basename "$form" .ui)
    if ! grep -q "/ui_$name\.h: CUSTOM_COMMAND" <<<"$targets"; then
        echo "$form: no rule of the build makes ui_$name.h"
        faults=$((faults + 1))
    fi
done
exit $((faults > 0))
