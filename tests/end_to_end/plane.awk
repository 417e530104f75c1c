# Every cell of a grid over the plane z = x + 10 y. Input: "x y value". Variables: side, x0 and y0 (south-west corner), turn (degrees) of the
# mesh; rounding: how near its edge a cell may fall on either side; tolerance of a value. A cell inside holds the plane, one outside nothing.
BEGIN {
    angle = turn * atan2(0, -1) / 180
    cx = x0 + side / 2
    cy = y0 + side / 2
}
{
    u = ($1 - cx) * cos(angle) + ($2 - cy) * sin(angle)
    v = ($2 - cy) * cos(angle) - ($1 - cx) * sin(angle)
    if (u < 0) u = -u
    if (v < 0) v = -v
    inside = side / 2 - (u > v ? u : v)
    covered = $3 != -99999
    error = covered ? $3 - ($1 + 10 * $2) : 0
    if (error < 0) error = -error
    if (covered) values++
    if ((inside >= -1e-7 && rounding == 0 || inside > rounding) && !covered || inside < -rounding - 1e-7 && covered || error > tolerance) {
        if (wrong++ < 3) print "  at " $1 " " $2 ": " $3 ", " inside " m inside the mesh"
    }
}
END { exit wrong > 0 || values < least }
