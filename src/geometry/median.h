// The middle of a list of numbers.
#pragma once

#include <vector>

/// The middle one, or the mean of the two in the middle. values: not empty; their order changes.
double MEDIAN(std::vector<double>& values);
