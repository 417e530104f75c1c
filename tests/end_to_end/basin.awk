# Every cell of a grid over the flood of make_parabolic_basin, against Thacker's planar surface in a paraboloid. Input: "x y value".
# Variables: quantity (h, d, speed, vx, vy, direction, bearing; highest h or d with steps), hours, side, x0, y0, mesh (size of a mesh
# square), tolerance; steps: for the highest values, the number of output times from 0 on, a tenth of an hour apart.
BEGIN {
    pi = atan2(0, -1)
    gravity = 9.81
    omega = 2 * pi / 3600
    a = 0.37 * side
    eta = 0.12 * side
    h0 = a * omega * a * omega / (2 * gravity)
    first = steps == "" ? hours : 0
    last = steps == "" ? hours : (steps - 1) / 10
}
function distance(k) { return sqrt((x - eta * cos(2 * pi * k)) ^ 2 + (y - eta * sin(2 * pi * k)) ^ 2) }
function level(k) { return 20 + h0 + eta * h0 / (a * a) * (2 * x * cos(2 * pi * k) + 2 * y * sin(2 * pi * k) - eta) }
function bed() { return 20 + h0 * (x * x + y * y) / (a * a) }
function exact(k,    degrees) {
    if (quantity == "h") return level(k)
    if (quantity == "d") return level(k) - bed()
    if (quantity == "speed") return eta * omega
    if (quantity == "vx") return -eta * omega * sin(2 * pi * k)
    if (quantity == "vy") return eta * omega * cos(2 * pi * k)
    degrees = 360 * k + 90                                   # counter-clockwise from east
    if (quantity == "bearing") degrees = 90 - degrees
    while (degrees > (quantity == "bearing" ? 360 : 180)) degrees -= 360
    while (degrees < (quantity == "bearing" ? 0 : -180)) degrees += 360
    return degrees
}
{
    x = $1 - x0 - side / 2
    y = $2 - y0 - side / 2
    covered = $3 != -99999
    wet = 0                                                  # by how much the cell is within the water, metres
    expected = -1e9
    for (k = first; k <= last + 1e-9; k += 0.1) {
        if (a - distance(k) > wet || k == first) wet = a - distance(k)
        if (distance(k) < a && exact(k) > expected) expected = exact(k)
    }
    if (covered) values++
    error = covered ? $3 - expected : 0
    if (error < 0) error = -error
    # All corners of a wet mesh cell are in the water: only cells at the water's edge may be dry although it reaches them.
    if (covered && wet <= 0 || !covered && wet > 1.5 * mesh || error > tolerance) {
        if (wrong++ < 3) print "  at " $1 " " $2 ": " $3 ", expected " expected ", " wet " m within the water"
    }
}
END { exit wrong > 0 || !values || values < NR / 8 }
