// The number format asked for with -prec<u>.<d>.
#pragma once

#include <string>

struct Precision {
    int units = 1;     ///< digits before the point, 1 to 99; a minus sign takes one of them
    int decimals = 0;  ///< digits behind it, 0 to 20
};

/// Reads "6.3", whole, and says what was understood. Asks on the console, and says why, until it gets a pair of whole
/// numbers within the limits. Zero units count as one.
Precision READ_PRECISION(std::string text);
