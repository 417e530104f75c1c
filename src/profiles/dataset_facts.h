// What the profile and point stages are told of a dataset before its values come.
#pragma once

#include "raster/grid_plan.h"

#include <cstddef>
#include <string>

struct DatasetFacts {
    PlanKind kind = PlanKind::Nodes;  ///< values per node or per cell; Corners: a mesh alone
    bool vector = false;
    std::string quantity;   ///< "Water Level"; blank when unknown
    std::size_t times = 1;  ///< output times that will come
};

/// One output time, as texts.
struct TimeText {
    std::string tag;    ///< in column names: "t020.00", "Max"
    std::string shown;  ///< in a column of times: "20.00", "Max"
};
