#include "inputs/results.h"

#include "geometry/no_value.h"

namespace {
Results results;
}

const Results& RESULTS() { return results; }
Results& RESULTS_TO_FILL() { return results; }

void ALLOCATE_RESULTS(std::int32_t values, std::int32_t cells, bool vector, Results& to) {
    to.nodes = values;
    to.cells = cells;
    to.vector = vector;
    to.x.assign(static_cast<std::size_t>(values) + 1, NO_VALUE);
    to.y.assign(vector ? static_cast<std::size_t>(values) + 1 : 0, NO_VALUE);
    to.wet.assign(static_cast<std::size_t>(cells) + 1, 1);
}

void INITIALISE_RESULTS() { results = Results{}; }
