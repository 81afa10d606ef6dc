# SPDX-License-Identifier: MIT
# Reads a result table of zirk or zirk-solve, which `solver` says; the check of one example, in a file of its own, says what must hold.
#
#   value[row, name]   the table, rows counted from 1, names as in the header ("TIME" is one, of both commands)
#   rows               the number of rows; last is the same number, to be read as the last row
#   near(what, got, wanted, tolerance)   |got - wanted| <= tolerance, or the check fails
#   holds(what, condition)               the condition is true, or the check fails
#   at(t, x, rate)     value of x at time t, between rows by the cubic through both values and both rates;
#                      rate is the column that holds the time derivative of x
#   rise(k, x, rate, level)   time at which x rises through the level for the k-th time, likewise; -1 when it does not
#   largest(x), smallest(x)   over all rows
#
# A check is a function check(). It fails when it compares nothing.

BEGIN {
    pi = atan2(0, -1)
}

/^#/ {
    if (!columns) {
        sub(/^# *(ORDER)? */, "")
        columns = NF
        for (i = 1; i <= NF; ++i) names[i] = $i
    }
    next
}

NF {
    ++rows
    for (i = 1; i <= columns; ++i) value[rows, names[i]] = $(i + NF - columns)
    if (solver == "zirk-solve") value[rows, "TIME"] = value[rows, "t"]
}

END {
    last = rows
    if (rows < 1) {
        print "no rows"
        exit 1
    }
    check()
    if (!compared) print "nothing was compared"
    exit failed || !compared
}

function near(what, got, wanted, tolerance) {
    ++compared
    # Not-a-number compares false, so the test is for what is wanted.
    if (got != "" && got - wanted <= tolerance && wanted - got <= tolerance) return
    printf "%s: %.15g, not %.15g within %g\n", what, got, wanted, tolerance
    failed = 1
}

function holds(what, condition) {
    ++compared
    if (condition) return
    print "does not hold: " what
    failed = 1
}

# The cubic of Hermite on the row before t.
function at(t, x, rate,    row, h, s, a, b, da, db) {
    for (row = 1; row < rows - 1 && value[row + 1, "TIME"] < t; ++row) {
    }
    return between(row, t, x, rate)
}

function between(row, t, x, rate,    h, s, a, b, da, db) {
    h = value[row + 1, "TIME"] - value[row, "TIME"]
    s = (t - value[row, "TIME"])/h
    a = value[row, x]
    b = value[row + 1, x]
    da = h*value[row, rate]
    db = h*value[row + 1, rate]
    return a + s*(da + s*(3*(b - a) - 2*da - db + s*(da + db - 2*(b - a))))
}

function rise(k, x, rate, level,    row, low, high, middle, i) {
    for (row = 1; row < rows; ++row) {
        if (!(value[row, x] < level && value[row + 1, x] >= level) || --k) continue
        low = value[row, "TIME"]
        high = value[row + 1, "TIME"]
        for (i = 0; i < 60; ++i) {
            middle = (low + high)/2
            if (between(row, middle, x, rate) < level) low = middle
            else high = middle
        }
        return low
    }
    return -1
}

function largest(x,    row, best) {
    best = value[1, x]
    for (row = 2; row <= rows; ++row) if (value[row, x] > best) best = value[row, x]
    return best
}

function smallest(x,    row, best) {
    best = value[1, x]
    for (row = 2; row <= rows; ++row) if (value[row, x] < best) best = value[row, x]
    return best
}
