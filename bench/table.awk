# Turns the lines of the programs (see number.h) into one table and tells by its exit code whether all agreed
# limits held. In front of the lines of a program stands "program <tab> <its name> <tab> <how many numbers it owes>".
# A line "failed <tab> <program>" stands for a program that did not reach its end.
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

function fail(what) {
    ++rows
    put(rows, 1, what)
    put(rows, columns, "failed")
    ++failed
}

# Whether all fields of a line that may hold a number do, if they are not empty.
function isMeasured() {
    if ($3 == "")
        return 0
    for (field = 3; field <= 10; ++field)
        if (field != 4 && field != 8 && $field !~ /^([0-9]+(\.[0-9]+)?(e[-+]?[0-9]+)?)?$/)
            return 0
    return 1
}

# Tells of numbers that the last program owes still.
function endProgram() {
    if (told != owed)
        fail(program " told " told + 0 " of " owed + 0 " numbers")
}

$1 == "program" {
    endProgram()
    program = $2
    owed = $3
    told = 0
    ++programs
}

$1 == "failed" { fail($2 " did not reach its end") }

$1 == "number" { ++told }

$1 == "number" && !isMeasured() {
    fail($2 ": not a number")
    next
}

$1 == "number" {
    ++rows
    judged = $12 == "worst" ? $5 : $3
    ratio = $8 != "" && $9 > 0 ? $3 / $9 : ""
    holds = ($6 == "" || (judged != "" && judged + 0 <= $6 + 0)) && ($7 == "" || judged + 0 >= $7 + 0) && ($10 == "" || (ratio != "" && ratio <= $10 + 0))
    put(rows, 1, $2)
    put(rows, 2, shown($3) " " $4)
    put(rows, 3, shown($5))
    put(rows, 4, bound($12 == "worst" ? "worst <=" : "<=", $6, $4) bound(">=", $7, $4))
    put(rows, 5, $8)
    put(rows, 6, $9 == "" ? "" : shown($9) " " $4)
    put(rows, 7, ratio == "" ? "" : sprintf(ratio < 10 ? "%.3f" : "%.0f", ratio))
    put(rows, 8, bound("<=", $10, ""))
    put(rows, 9, verdict(holds, $6 $7 $10 != "", $11 == "aim"))
}

END {
    endProgram()
    if (!programs)
        fail("no program ran")
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
