# A profile's .csv as the shapes of a chart, for gdal_rasterize: rows of "WKT",R,G,B in the order of drawing, in pixels with y upwards.
# The bed is ground, and each column named in `columns` ("name|R,G,B|label;...") a line; empty cells end a line, as they do in a
# spreadsheet's chart. Variables: width, height of the picture, columns.
BEGIN {
    FS = ","
    lines = split(columns, row, ";")
    for (i = 1; i <= lines; i++) { split(row[i], part, "|"); name[i] = part[1]; colour[i] = part[2]; label[i] = part[3] }
    left = 150; right = 40; top = 90; bottom = 110
    lowest = 1e9; highest = -1e9
    # Rows of five pixels from the top, as two hexadecimal digits each.
    font("0", "0E11131519110E"); font("1", "040C040404040E"); font("2", "0E11010204081F"); font("3", "1F02040201110E")
    font("4", "02060A121F0202"); font("5", "1F101E0101110E"); font("6", "0608101E11110E"); font("7", "1F010204080808")
    font("8", "0E11110E11110E"); font("9", "0E11110F01020C"); font(".", "00000000000C0C"); font(",", "000000000C0408")
    font("a", "00000E010F110F"); font("b", "1010161911111E"); font("c", "00000E1010110E"); font("d", "01010D1311110F")
    font("e", "00000E111F100E"); font("g", "000F11110F010E"); font("h", "10101619111111"); font("i", "04000C0404040E")
    font("l", "0C04040404040E"); font("m", "00001A15151111"); font("n", "00001619111111"); font("u", "0000111111130D")
    font("v", "00001111110A04"); font("x", "0000110A040A11")
    print "WKT,R,G,B"
}
function font(letter, rows) { glyph[letter] = rows }
NR == 1 { for (c = 1; c <= NF; c++) at[$c] = c; next }
{
    s[++n] = $1
    bed[n] = $at["Elevation"]
    if (bed[n] != "" && bed[n] + 0 < lowest) lowest = bed[n] + 0
    for (i = 1; i <= lines; i++) {
        value[n, i] = $at[name[i]]
        if (value[n, i] != "" && value[n, i] + 0 > highest) highest = value[n, i] + 0
    }
}
function x(chainage) { return left + (width - left - right) * chainage / s[n] }
function y(level) {
    if (level > highest) level = highest
    return bottom + (height - top - bottom) * (level - lowest) / (highest - lowest)
}
function box(x1, y1, x2, y2, rgb) {
    printf "\"POLYGON((%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f))\",%s\n", x1, y1, x2, y1, x2, y2, x1, y2, x1, y1, rgb
}
function stroke(x1, y1, x2, y2, thick, rgb,    dx, dy, size) {
    size = sqrt((x2 - x1) ^ 2 + (y2 - y1) ^ 2)
    if (size == 0) return
    dx = (x2 - x1) / size * thick / 2
    dy = (y2 - y1) / size * thick / 2
    printf "\"POLYGON((%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f))\",%s\n", x1 - dy, y1 + dx, x2 - dy, y2 + dx, x2 + dy, y2 - dx, x1 + dy,
        y1 - dx, x1 - dy, y1 + dx, rgb
}
# align: 0 from px on, 0.5 around it, 1 up to it; py is the middle of the line.
function text(px, py, align, words,    k, r, b, bits, pixel) {
    pixel = 4
    px -= align * (6 * length(words) - 1) * pixel
    for (k = 1; k <= length(words); k++)
        for (r = 0; r < 7; r++) {
            bits = index("0123456789ABCDEF", substr(glyph[substr(words, k, 1)], 2 * r + 2, 1)) - 1 + 16 * (substr(glyph[substr(words, k, 1)], 2 * r + 1, 1) == "1")
            for (b = 0; b < 5; b++)
                if (int(bits / 2 ^ (4 - b)) % 2 == 1)
                    box(px + (6 * (k - 1) + b) * pixel, py + (2.5 - r) * pixel, px + (6 * (k - 1) + b + 1) * pixel, py + (3.5 - r) * pixel, "60,60,60")
        }
}
function legend(i, rgb, words) {
    stroke(70 + 270 * i, height - 45, 120 + 270 * i, height - 45, 8, rgb)
    text(134 + 270 * i, height - 45, 0, words)
}
# A round step that gives about `wanted` steps over a range.
function step(range, wanted,    size) {
    for (size = 1e-6; range / size > 10 * wanted; size *= 10) ;
    if (range / size > 5 * wanted) return 10 * size
    return range / size > 2 * wanted ? 5 * size : 2 * size
}
END {
    if (n == 0 || highest < lowest) exit 1
    lowest -= 0.1 * (highest - lowest)
    highest += 0.15 * (highest - lowest)
    by = step(highest - lowest, 5)
    for (v = (int(lowest / by) + 1) * by; v < highest; v += by) {
        stroke(left, y(v), width - right, y(v), 2, "225,225,225")
        text(left - 16, y(v), 1, v)
    }
    for (k = 2; k <= n; k++)
        if (bed[k] != "" && bed[k - 1] != "")
            printf "\"POLYGON((%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f))\",222,208,178\n", x(s[k - 1]), bottom, x(s[k]), bottom, x(s[k]),
                y(bed[k]), x(s[k - 1]), y(bed[k - 1]), x(s[k - 1]), bottom
    for (k = 2; k <= n; k++)
        if (bed[k] != "" && bed[k - 1] != "" && (bed[k] < highest || bed[k - 1] < highest))
            stroke(x(s[k - 1]), y(bed[k - 1]), x(s[k]), y(bed[k]), 5, "130,105,65")
    for (i = 1; i <= lines; i++) {
        for (k = 2; k <= n; k++)
            if (value[k, i] != "" && value[k - 1, i] != "")
                stroke(x(s[k - 1]), y(value[k - 1, i]), x(s[k]), y(value[k, i]), 5, colour[i])
        legend(i, colour[i], label[i])
    }
    for (v = 0; v <= s[n]; v += step(s[n], 8)) {
        stroke(x(v), bottom, x(v), bottom - 12, 3, "90,90,90")
        text(x(v), bottom - 32, 0.5, v)
    }
    box(left, bottom - 2, width - right, bottom + 2, "90,90,90")
    box(left - 2, bottom - 2, left + 2, height - top, "90,90,90")
    text(left + (width - left - right) / 2, 30, 0.5, "chainage, m")
    text(10, height - 45, 0, "level, m")
    legend(lines + 1, "130,105,65", "bed")
}
