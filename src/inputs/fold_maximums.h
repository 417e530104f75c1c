// Keeping the maximum of every value while the output times of a source go by. All tables are numbered from 1 and of
// one length.
#pragma once

#include <cstdint>
#include <vector>

/// Keeps what is strictly greater; a missing value never is.
void FOLD_SCALARS(const std::vector<float>& current, std::vector<float>& kept);
/// Keeps both components of the strictly longer vector; a missing one is shorter than any.
void FOLD_VECTORS(const std::vector<float>& x, const std::vector<float>& y, std::vector<float>& keptX,
                  std::vector<float>& keptY);
/// A cell is wet when it was wet at any time.
void FOLD_FLAGS(const std::vector<std::uint8_t>& current, std::vector<std::uint8_t>& kept);
