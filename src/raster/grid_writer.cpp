#include "raster/grid_writer.h"

#include "geometry/no_value.h"
#include "raster/fixed_decimals.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/projection_text.h"
#include "services/workers.h"
#include "text_utils/numbers.h"
#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace {

/// The largest finite value; NO_VALUE when none is above it. Several running maxima, so that the compiler compares them
/// side by side.
float largestOf(std::span<const float> values) {
    constexpr std::size_t LANES = 16;
    constexpr float LARGEST = std::numeric_limits<float>::max();
    std::array<float, LANES> largest;
    largest.fill(NO_VALUE);
    const auto take = [&](float value, float& best) {
        const float finite = value <= LARGEST ? value : NO_VALUE;
        best = finite > best ? finite : best;
    };
    std::size_t i = 0;
    for (; i + LANES <= values.size(); i += LANES)
        for (std::size_t lane = 0; lane < LANES; ++lane) take(values[i + lane], largest[lane]);
    for (; i < values.size(); ++i) take(values[i], largest[0]);
    return *std::max_element(largest.begin(), largest.end());
}

float largestValue(std::span<const float> values) {
    constexpr std::size_t PART = std::size_t{1} << 20;
    std::vector<float> parts((values.size() + PART - 1) / PART, NO_VALUE);
    DO_PIECES(parts.size(), [&](std::size_t part) {
        parts[part] = largestOf(values.subspan(part * PART, std::min(PART, values.size() - part * PART)));
    });
    return parts.empty() ? NO_VALUE : *std::max_element(parts.begin(), parts.end());
}

GridPrecision limited(GridPrecision given) {
    const GridPrecision used = {std::min(given.width, WIDEST_FIELD), std::min(given.decimals, WIDEST_FIELD - 2)};
    if (used.width != given.width || used.decimals != given.decimals)
        DMESSAGE("WARNING - Output precision is limited to " + AINTEGER(used.width) + " characters.");
    return used;
}

}  // namespace

GridPrecision SET_OUTPUT_PRECISION(const GridBands& grid, const std::optional<GridPrecision>& given) {
    if (given) return limited(*given);
    REPORT("Determining maximum value for setting precision...");
    float largest = NO_VALUE;
    FROM_NORTH(grid, [&] { largest = std::max(largest, largestValue(grid.grid.values)); });
    REPORT("   Done.");
    REPORT("Setting output precision.");
    REPORT("Setting output precision based on maximum value of " + AREAL(largest));
    GridPrecision precision;
    if (largest == NO_VALUE) return precision;  // nothing but missing cells
    // The widths jump to 10 and 11 units, so that grids with large values keep room for larger ones.
    if (std::abs(largest) > 99999.0F) precision.width = 11 + precision.decimals + 1;
    else if (std::abs(largest) > 9999.0F) precision.width = 10 + precision.decimals + 1;
    return precision;
}

void WRITE_GRID(GridWriter writer, const std::string& base, const GridBands& bands, GridPrecision precision,
                std::string_view projection) {
    const Grid& grid = bands.grid;
    const bool held = bands.rows > 0 || grid.values.size() == CELL_COUNT(grid);
    if (grid.ncols < 1 || grid.nrows < 1 || !held) SHOULD_NOT_BE_HERE("i.ne.nval");
    writer(base, bands, precision);
    WRITE_GRID_PROJECTION(base, projection);
}

void WRITE_GRID_PROJECTION(const std::string& base, std::string_view projection) {
    if (!TRIMMED(projection).empty()) WRITE_PRJ(base, std::string(TRIMF(projection)) + "\n");
}
