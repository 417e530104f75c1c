// What the command line asks for. Filled by READ_ARGUMENTS before any file is touched, changed by CHECK_SWITCHES, then
// only read.
#pragma once

#include "services/output_time.h"
#include "services/time_subset.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

constexpr std::size_t MOST_REMOVED_PARTS = 100;

constexpr double DEFAULT_PROFILE_DISTANCE = 100.0;  ///< map units: between markers, and of points from a line

/// Every switch value with its default. Times are in hours, whatever -sec says.
struct RunOptions {
    // Regular grid
    bool grid = false;              ///< -grid
    bool gridSpacingGiven = false;  ///< -grid with a spacing behind it
    double gridSpacing = 0.0;       ///< cell size, metres, above zero when given
    /// -like: external grid whose corner, counts and cell size are taken over; blank for none
    std::string likeGrid;

    // Output formats
    std::vector<std::string_view> outputs;    ///< keywords of the formats asked for ("asc"), each once
    bool vmi = false;                         ///< -vmi, always refused
    bool multiband = false;                   ///< -multiband: all times of a dataset are bands of one GeoTIFF
    std::vector<std::string> driverOptions;   ///< -co: "KEY=VALUE" for GDAL's driver, in the order given
    std::vector<std::string> crs;             ///< -crs: codes, files or texts, of which all name one system
    std::string epoch;                        ///< -epoch: "2020-01-31T12:00:00", UTC, of time zero; blank for none
    bool samplesPackage = false;              ///< -gpkg beside -lp or -cp: what is sampled goes into a GeoPackage too
    std::vector<std::string> resultSwitches;  ///< those that shape the result, as files tell them: "-grid5"

    // Calibration points and long profiles
    bool freeSurfaceOnly = false;  ///< -fso
    std::string cpFile, lpFile;
    double cpSearchDistance = DEFAULT_PROFILE_DISTANCE;  ///< map units
    double lpMarkerDistance = DEFAULT_PROFILE_DISTANCE;  ///< map units
    std::string recordedField;                           ///< -obs; blank: looked for by its usual names

    // Numbers
    bool seconds = false;       ///< -sec: times are shown and entered in seconds
    float cutoffDepth = 0.01F;  ///< metres or feet
    bool precisionGiven = false;
    int precisionWidth = 10;    ///< characters: units + decimals + 1
    int precisionDecimals = 4;  ///< may be zero

    // Arrows
    bool vector = false;                    ///< -vector, -arrow
    bool fixedVectorLength = false;         ///< -sf with a negative value
    float vectorLength = 0.0F;              ///< metres, with fixedVectorLength
    float scaleFactor = 1.0F;               ///< cells per 1 m/s
    bool tailThicknessPerCellSize = false;  ///< -ttf with a negative value
    float tailThicknessFactor = 0.0F;       ///< kept positive
    float vmax = -1.0F;
    bool vmaxNotGiven = true;

    // Run
    bool batch = false;
    bool inputError = false;  ///< the usage text is due
    std::string inputFile;
    bool inputIsMesh = false;      ///< its extension is .2dm
    std::string meshFile;          ///< -2dm
    bool difference = false;       ///< -dif
    std::string secondInput;       ///< behind -dif: what is taken from the input
    std::string secondMesh;        ///< -mesh2: of the second input
    bool outputNameGiven = false;  ///< -out
    std::string outputName;
    std::string outputFolder;       ///< -into: of every output; blank: that of the input
    bool suppressGridSize = false;  ///< -sgs
    bool verbose = false;
    std::optional<std::uint64_t> gridMemory;  ///< -mem: bytes; a share of what is there when not given
    std::optional<int> jobs;  ///< -jobs: threads, from 1; as many as the process may use processors when not given
    bool projectionWarning = false;  ///< -prjwarn: a layer in another projection is read, with a warning

    /// The output is a file of results: -tAll takes stored minimums before and stored maximums behind the times, and
    /// values that are times are hours, whatever -sec says.
    bool resultsFile = false;

    // Mesh
    bool keepAllMeshParts = true;
    std::vector<std::string> removedParts;  ///< -rmp, in the order given, at most MOST_REMOVED_PARTS
    bool no1d = false;                      ///< -no1d: no triangle is a 1D water level line
    bool cellCentred = false;               ///< -cc
    bool region = false;
    std::string pointTypes = "ALL";  ///< -pts, up to 10 characters

    // Times
    bool timeGiven = false;       ///< -t, -max, -min or -tmax
    bool timeValueGiven = false;  ///< -t<time>
    WantedTime outputTime;        ///< of several time switches the last one given
    std::string timeText;         ///< "Max", "Min", "tmax", or the switch without its dash ("t2.5")
    bool tmax = false, allTimes = false, max = false, min = false;
    std::optional<double> timeTolerance;  ///< -dttol: hours, not negative
    TimeSubset subset;                    ///< -from, -until, -nth: of all times
    bool subsetAlone = false;             ///< it stands for -tAll, which was not given

    // Components of vector results
    bool vx = false, vy = false, va = false, vdir = false, compass = false;
    float slantAngle = 0.0F;  ///< degrees, counter-clockwise

    // XMDF dataset
    bool typeGiven = false;
    bool allTypes = false;
    std::string typeText;           ///< behind -type, up to 40 characters
    std::string datasetName;        ///< what is looked for in the file; set when the type is looked up
    std::string secondDatasetName;  ///< -type with -tmax: "Time of Peak h" or "Time of Peak V"
    bool datasetByNumber = false;
    bool scalarIdGiven = false, vectorIdGiven = false;
    std::int32_t scalarId = 0, vectorId = 0;
    bool xmdfPathGiven = false;
    std::string xmdfPath;
    bool folderGiven = false;
    std::string folder;
};

const RunOptions& OPTIONS();
/// The defaults: the start of a run and of every test.
void INITIALISE_OPTIONS();
/// The record to fill, for READ_ARGUMENTS, the switch table and CHECK_SWITCHES only.
RunOptions& OPTIONS_TO_FILL();
/// Answered on the console because the command line left it open.
void SET_GRID_SPACING(double metres);
void SET_INPUT_FILE(const std::string& name);
/// Drops -out where a run writes several outputs, or -grid where something else settles the grid.
void DROP_OUTPUT_NAME();
void DROP_GRID();
/// Dropped, with the -tAll that it stands for, where the input has no times.
void DROP_TIME_SUBSET();
/// Dropped where the output that was asked for has no use for them.
void DROP_REGION();
void DROP_POINT_TYPES();
