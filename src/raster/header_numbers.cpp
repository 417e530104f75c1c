#include "raster/header_numbers.h"

#include "text_utils/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace {

constexpr int MOST_DECIMALS = 20;

bool holds(std::string_view text, double value, double tolerance) {
    double read = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), read);
    // The last bit of the value itself is no reason for more decimals.
    return std::abs(read - value) <= tolerance + std::abs(value) * std::numeric_limits<double>::epsilon();
}

int decimalsFor(double value, double tolerance, int least) {
    while (least < MOST_DECIMALS && !holds(AREALD8(value, least), value, tolerance)) ++least;
    return least;
}

}  // namespace

double CORNER_TOLERANCE(const Grid& grid) { return grid.cellSize / 1000.0; }
double CELL_SIZE_TOLERANCE(const Grid& grid) {
    return CORNER_TOLERANCE(grid) / static_cast<double>(std::max({grid.ncols, grid.nrows, 1}));
}

int ASC_HEADER_DECIMALS(const Grid& grid) {
    int decimals = decimalsFor(grid.cellSize, CELL_SIZE_TOLERANCE(grid), 3);
    decimals = decimalsFor(grid.xll, CORNER_TOLERANCE(grid), decimals);
    return decimalsFor(grid.yll, CORNER_TOLERANCE(grid), decimals);
}

std::string HDR_NUMBER(double value, double tolerance) {
    const std::string text = AREAL8(value);
    return holds(text, value, tolerance) ? text : AREALD8(value, decimalsFor(value, tolerance, 0));
}
