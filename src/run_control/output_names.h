// Names of the output files: base, time tag, component, grid size, extension ("x_h_Max_g005.asc").
#pragma once

#include "services/options.h"
#include "services/output_time.h"

#include <string>
#include <string_view>
#include <vector>

/// What one output is called after. Filled by the conversion of each input kind.
struct OutputLabel {
    /// folder and name without extension; a dataset tag of an .xmdf ("_h") already behind it
    std::string base;
    bool timed = true;  ///< a mesh on its own has no time tag
    OutputTime time;
    int timeDecimals = 2;          ///< of NAME_DECIMALS
    std::string run;               ///< the base of outputs that hold several datasets
    bool severalDatasets = false;  ///< the run converts several
    std::string ending;            ///< behind base and tag, and behind run, of a difference: "_minus_base_h"
    std::string tag;               ///< of the dataset alone: "_h"; blank where the file's name says it
    std::string dataset;           ///< its path in the source; blank where a file holds one dataset
    std::string quantity;          ///< "Water Level", blank when unknown: names the times of its maximum
    bool vector = false;           ///< component switches name a component of vector results only
    double gridSize = 0.0;         ///< cell size of a grid output, 0 for none
};

/// Decimals that the times of a run need in names. Fewest of 2 to 6 (0 to 6 with -sec) that keep every time distinct;
/// markers do not count.
int NAME_DECIMALS(const std::vector<OutputTime>& times, bool seconds);

/// Tag of a time: "Max", "Min", "time_hMax", "time_exceed_0.5", "t002.50", with -sec "t009000". The quantity
/// tells whose times of maximum they are.
std::string TIME_TAG(const OutputLabel& label, bool seconds);
/// Tag of a cell size: three digits before the point, decimals only as needed: 5 -> "_g005", 2.5 -> "_g002.5".
std::string GRID_TAG(double cellSize);

/// Folder and name, without extension, that the outputs of an input begin with: its own, or with -into in that folder.
std::string OUTPUT_BASE(const std::string& input);

/// The name less the extension that the format adds itself: ("Run.asc", ".asc") -> "Run".
std::string WITHOUT_EXTENSION(const std::string& name, std::string_view extension);

/// True where only the input tells whether the run writes several outputs.
bool MAY_WRITE_SEVERAL(const RunOptions& options);

/// Drops -out with a WARNING when it was given: the run writes several outputs, which cannot share one name.
void IGNORE_OUTPUT_NAME();

/// What the names of all outputs begin with. base: of the run's input.
std::string OUTPUT_STEM(const std::string& base);

/// What an output is called without -out: base, time, component, cell size.
std::string USUAL_NAME(const OutputLabel& label);

/// The output's name without its extension. `extensions` are all the files that the output will write under it (".flt",
/// ".hdr", ".prj"): when the run has already read or written one of them, "_2", "_3" ... is added with a WARNING. With
/// -out in force the name is that name. beside: ending of a second output of the same files, which the name must be
/// free for as well; blank for none. A name that is longer than file systems take stops the run.
std::string OUTPUT_NAME(const OutputLabel& label, const std::vector<std::string_view>& extensions,
                        std::string_view beside = {});
