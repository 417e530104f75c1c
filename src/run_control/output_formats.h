// The output formats as a table: everything that the command line, the checks, the naming and the stages know of a
// format stands in its row. A raster format is one writer and one row.
#pragma once

#include "raster/grid_behind.h"
#include "raster/grid_writer.h"
#include "services/options.h"
#include "services/projection.h"

#include <span>
#include <string_view>
#include <vector>

/// What a format makes of a run.
enum class Family : std::uint8_t {
    Raster,       ///< a regular grid
    Layer,        ///< map objects with attributes
    Text,         ///< a table of points
    Profile,      ///< values along lines
    Points,       ///< values at the points of a layer
    ResultsFile,  ///< datasets and times as a file that can be read back
    Scene,        ///< mesh and values for a 3D viewer
    Listing,      ///< what the input holds; no mesh is looked for
    WorldFile,    ///< the place of a picture; no model is read
};

/// What stands together in one output, and so shares its name.
enum class Holds : std::uint8_t { Time, Dataset, Run };

struct ValueBytes {
    double least = 0.0, most = 0.0;
};

struct OutputFormat {
    std::string_view keyword;  ///< of its switch, without the dash; what RunOptions::outputs holds
    std::string_view line;     ///< said when the switches are checked
    Family family = Family::Raster;
    std::vector<std::string_view> files;  ///< extensions, the main file's first; what one output consists of
    ProjectionUse projection = {};
    Holds holds = Holds::Time;
    /// the whole word only: arguments that begin with it may be paths
    bool wholeWord = false;
    GridWriter writer = nullptr;            ///< of a raster format
    GridBehindMaker writeBehind = nullptr;  ///< of one that leaves the other threads nothing to do while it is written
    /// what the writer needs for a value
    ValueBytes (*bytesOfValue)(const RunOptions& options) = nullptr;
    bool outlinedArrows = false;   ///< of a layer format: arrows are polygons, never lines
    double coordinateStep = 0.0;   ///< of a layer format: what the file keeps coordinates to, map units; 0: as they are
    std::string_view driver = {};  ///< GDAL's, which writes the files; blank for our own writers
    std::string_view usage = {};   ///< a line of the usage text, behind those that stand in it; blank for none
};

/// The rows in the order in which the checks name them. Formats without a switch row of their own are tried last on
/// the command line, so that no older switch changes its meaning.
std::span<const OutputFormat> OUTPUT_FORMATS();

/// The row of a keyword; nullptr when there is none.
const OutputFormat* FORMAT_OF(std::string_view keyword);
/// The run's output format: of a run along profiles that takes points too, the profiles. A run has one, or
/// CHECK_SWITCHES has stopped it.
const OutputFormat& OUTPUT_FORMAT(const RunOptions& options);
/// The formats asked for, in the order of the table.
std::vector<const OutputFormat*> FORMATS_GIVEN(const RunOptions& options);
/// True when a format of the family was asked for.
bool GIVEN(const RunOptions& options, Family family);
/// What one output of the run's format holds: with -multiband all times of a dataset.
Holds OUTPUT_HOLDS(const RunOptions& options);
/// True when the format of that keyword was asked for.
bool GIVEN(const RunOptions& options, std::string_view keyword);
/// Takes back every format that `drop` is true for.
void DROP_FORMATS(RunOptions& options, bool (*drop)(const OutputFormat&));
