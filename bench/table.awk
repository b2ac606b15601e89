# Turns the lines of the programs (see number.h) into one table and tells by its exit code whether all agreed
# limits held. A line "failed <tab> <program>" stands for a program that did not reach its end.
BEGIN {
    FS = "\t"
    columns = split("number|measured|worst|limit|measured beside it|there|ratio|limit|verdict", heading, "|")
    for (column = 1; column <= columns; ++column)
        put(0, column, heading[column])
}

function put(row, column, text) {
    cell[row, column] = text
    if (length(text) > width[column])
        width[column] = length(text)
}

function shown(value) {
    if (value == "")
        return ""
    return sprintf(value >= 100 ? "%.0f" : value >= 10 ? "%.1f" : "%.2f", value)
}

# What stands behind a sign, or nothing.
function bound(sign, value, unit) {
    return value == "" ? "" : sign " " value (unit == "" ? "" : " " unit)
}

function verdict(holds, isLimited, isAim) {
    if (!isLimited)
        return ""
    if (!holds)
        ++missed[isAim]
    return (holds ? "holds" : "missed") (isAim ? " (aim)" : "")
}

$1 == "failed" {
    ++rows
    put(rows, 1, $2 " did not reach its end")
    put(rows, columns, "failed")
    ++failed
}

$1 == "number" {
    ++rows
    ratio = $8 != "" && $9 > 0 ? $3 / $9 : ""
    holds = ($6 == "" || $3 + 0 <= $6 + 0) && ($7 == "" || $3 + 0 >= $7 + 0) && ($10 == "" || (ratio != "" && ratio <= $10 + 0))
    put(rows, 1, $2)
    put(rows, 2, shown($3) " " $4)
    put(rows, 3, shown($5))
    put(rows, 4, bound("<=", $6, $4) bound(">=", $7, $4))
    put(rows, 5, $8)
    put(rows, 6, $9 == "" ? "" : shown($9) " " $4)
    put(rows, 7, ratio == "" ? "" : sprintf(ratio < 10 ? "%.3f" : "%.0f", ratio))
    put(rows, 8, bound("<=", $10, ""))
    put(rows, 9, verdict(holds, $6 $7 $10 != "", $11 == "aim"))
}

END {
    isRight = "|2|3|6|7|"
    dashes = sprintf("%100s", "")
    gsub(/ /, "-", dashes)
    for (row = 0; row <= rows; ++row) {
        line = ""
        for (column = 1; column <= columns; ++column)
            line = line sprintf(index(isRight, "|" column "|") ? "%*s  " : "%-*s  ", width[column], cell[row, column])
        sub(/ +$/, "", line)
        print line
        if (row == 0) {
            for (column = 1; column <= columns; ++column)
                printf "%s  ", substr(dashes, 1, width[column])
            print ""
        }
    }
    printf "%d of %d rows miss an agreed limit, %d an aim; %d programs failed.\n", missed[0], rows, missed[1], failed
    exit missed[0] + failed > 0
}
