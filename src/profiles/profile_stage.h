// The profile output: results along the lines of a layer, collected while the times come, written at the end.
//   stage = START_PROFILES(...)        once the mesh is there
//   BEGIN_PROFILES(stage, facts)       before each dataset; not for a mesh alone
//   TAKE_PROFILES(stage, results, tag) for each of its output times
//   FINISH_PROFILES(stage, base)       one .csv a line
#pragma once

#include "inputs/results.h"
#include "profiles/dataset_facts.h"
#include "profiles/profile_set.h"
#include "profiles/sample_package.h"
#include "profiles/unique_names.h"

#include <string>
#include <vector>

/// What a run of profiles keeps. The mesh, and the calibration points, stay the caller's.
struct ProfileStage {
    const Mesh* mesh = nullptr;
    PointIndex index;
    std::vector<ProfileLine> lines;
    const CalibrationPoints* points = nullptr;  ///< nullptr for none
    SamplePackage* package = nullptr;           ///< takes lines and stations besides the tables; nullptr for none
    ProfileRules rules;
    DatasetFacts facts;            ///< of the dataset that is being taken
    std::vector<ProfileSet> sets;  ///< by kind of values: a run may hold node and cell values
    std::size_t set = 0;           ///< number of the one that is being filled
    UniqueNames columnNames;
    PointValues values;
};

ProfileStage START_PROFILES(const Mesh& mesh, const PointIndex& index, std::vector<ProfileLine> lines,
                            const CalibrationPoints* points, const ProfileRules& rules);

/// Lays the stations when the first dataset of its kind comes, and states the memory that the dataset's columns will
/// take: 4 bytes a station and time, three times that for vectors. Stops the run when there is not enough.
void BEGIN_PROFILES(ProfileStage& stage, const DatasetFacts& facts);

/// Adds the columns of one output time: the scalar, or magnitude, angle and the component along the line of a vector.
/// tag: of the time, for the column's name.
void TAKE_PROFILES(ProfileStage& stage, const Results& results, const std::string& tag);

/// Writes "<base>_<name>.csv" for every line. Characters that file systems refuse become "_", names that repeat get
/// "_2", and a name too long for a file is cut, with a "Check - " line. Node values and cell values have stations of
/// their own, and so a file each.
void FINISH_PROFILES(ProfileStage& stage, const std::string& base);
