#include "inputs/fold_maximums.h"

#include "geometry/no_value.h"
#include "geometry/vector_magnitude.h"

#include <algorithm>

void FOLD_SCALARS(const std::vector<float>& current, std::vector<float>& kept) {
    for (std::size_t n = 1; n < kept.size(); ++n)
        kept[n] = current[n] > kept[n] && !IS_MISSING(current[n]) ? current[n] : kept[n];
}

void FOLD_VECTORS(const std::vector<float>& x, const std::vector<float>& y, std::vector<float>& keptX,
                  std::vector<float>& keptY) {
    for (std::size_t n = 1; n < keptX.size(); ++n) {
        if (IS_MISSING(x[n]) || IS_MISSING(y[n])) continue;
        if (!IS_MISSING(keptX[n]) && !(VECTOR_MAGNITUDE(x[n], y[n]) > VECTOR_MAGNITUDE(keptX[n], keptY[n]))) continue;
        keptX[n] = x[n];
        keptY[n] = y[n];
    }
}

void FOLD_FLAGS(const std::vector<std::uint8_t>& current, std::vector<std::uint8_t>& kept) {
    std::transform(current.begin(), current.end(), kept.begin(), kept.begin(),
                   [](std::uint8_t a, std::uint8_t b) { return std::max(a, b); });
}
