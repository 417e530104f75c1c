// The calibration-point output: results at the points of a layer, as a copy of the layer and as time series.
//   stage = START_POINTS(...)                     once the mesh is there
//   BEGIN_POINTS(stage, facts)                    before each dataset; not for a mesh alone
//   TAKE_POINTS(stage, results, time, layerBase)  for each of its output times: writes <layerBase>_cp.mif or .shp
//   END_POINTS(stage, csvBase)                    behind each dataset: writes <csvBase>_cp.csv
// or WRITE_BED_POINTS(stage, base) for a mesh alone.
#pragma once

#include "inputs/results.h"
#include "profiles/calibration_points.h"
#include "profiles/comparison.h"
#include "profiles/dataset_facts.h"
#include "profiles/sample_package.h"
#include "profiles/sampled_points.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct PointRules {
    int coordinateDecimals = 3;
    int valueWidth = 10;  ///< characters, of the columns of a layer; grows to the longest value
    int valueDecimals = 4;
    bool verbose = false;       ///< element number and bed elevation in the layer too
    std::string recordedField;  ///< of -obs; blank: looked for by its usual names, for water levels only
};

/// The values of one output time, per calibration point.
struct PointColumns {
    std::string time;                   ///< as a column of times shows it
    std::vector<float> value;           ///< scalar or magnitude; NO_VALUE for none
    std::vector<float> angle;           ///< of vectors, else empty
    std::vector<float> difference;      ///< modelled less recorded; empty when nothing is compared
    std::vector<std::int32_t> element;  ///< that supplied the value, 0 for none
};

/// What a run of calibration points keeps. The mesh and the points stay the caller's.
struct PointStage {
    const Mesh* mesh = nullptr;
    const CalibrationPoints* points = nullptr;
    SamplePackage* package = nullptr;  ///< takes the layers in place of files of their own; nullptr for none
    PointRules rules;
    PointIndex index;
    SampledPoints places;                  ///< for the kind of values at hand
    std::vector<float> elevation;          ///< bed; NO_VALUE outside the mesh
    std::vector<std::int32_t> bedElement;  ///< the element that supplied it, 0 outside
    RecordedValues recorded;               ///< looked for when the first dataset that is compared comes
    bool recordedLookedFor = false;
    DatasetFacts facts;
    std::vector<PointColumns> taken;  ///< of the dataset at hand
    PointValues values;
};

/// The endings of the files that a copy of the layer consists of: "_cp.mif", "_cp.mid".
std::vector<std::string_view> POINT_LAYER_FILES(const CalibrationPoints& points);

/// Warns when no point lies within the mesh. A field of -obs that the layer lacks stops the run.
PointStage START_POINTS(const Mesh& mesh, const PointIndex& index, const CalibrationPoints& points,
                        const PointRules& rules);
/// States the memory of the time series: 4 bytes a point and time, twice that for vectors.
void BEGIN_POINTS(PointStage& stage, const DatasetFacts& facts);
/// Samples one output time, writes the layer (<layerBase>_cp in a package) and says how many points have a value, and
/// how they compare with what was recorded.
void TAKE_POINTS(PointStage& stage, const Results& results, const TimeText& time, std::string_view layerBase);
/// Writes the time series of the dataset, a row per point and time, and forgets them.
void END_POINTS(PointStage& stage, std::string_view csvBase);
/// The bed alone: layer and table.
void WRITE_BED_POINTS(PointStage& stage, std::string_view base);
