// Where results come from, whatever the file: the datasets that a run converts, and their values one output at a time.
// Two sources, with two meshes, can be open at once: what a source knows stands in the source.
#pragma once

#include "inputs/results.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// One dataset to convert.
struct Dataset {
    std::string path;      ///< in its file; blank where a file holds one
    std::string quantity;  ///< "Water Level", blank when unknown
    std::string code;      ///< "h", blank when unknown
    std::string tag;       ///< of the dataset in file names ("_h"); blank where the file's name says it
    bool vector = false;
    std::int32_t values = 0;  ///< per time: as many as the mesh has nodes, or cells
    std::int32_t flags = 0;   ///< wet/dry flags per time; 0: none, every cell is wet
    std::size_t outputs = 1;  ///< how many of its times, or maximums, are converted
    bool bed = false;         ///< of a mesh: it has no time, and a 9-node quad is the quad of its corners
    bool timed = false;       ///< several outputs, ordinary times among them
};

class ResultsSource {
public:
    virtual ~ResultsSource() = default;

    /// The datasets in the order of conversion, scalars before vectors; final after settle().
    virtual const std::vector<Dataset>& datasets() const = 0;
    /// ".dat" or ".xmdf", for messages.
    virtual std::string_view kind() const = 0;
    /// Said before the first scalar and before the first vector dataset, whether there are any or not; blank for
    /// nothing.
    virtual std::string_view heading(bool vector) const = 0;

    /// Once the datasets have been found to fit the mesh: what remains to be read and said before the first values.
    /// cellCentred: by dataset. results: sized where the source reads all its datasets into one size.
    virtual void settle(const std::vector<bool>& cellCentred, Results& results) = 0;
    /// Every time of every dataset, for the decimals of names.
    virtual std::vector<OutputTime> times() const = 0;

    /// Sizes and labels the record for a dataset; `next` then fills it from each of its outputs in turn, and returns
    /// false, with nothing read, when none is left. A dataset that cannot be read stops the run when it is the only
    /// one; else it ends there, named in a WARNING, and the run counts as incomplete.
    virtual void begin(std::size_t dataset, bool cellCentred, Results& results) = 0;
    virtual bool next(Results& results) = 0;

    /// The times that `next` goes through, in their order; empty for a dataset of one output, whose time its reading
    /// tells.
    virtual std::vector<OutputTime> outputTimes(std::size_t dataset) const = 0;
    /// Of a dataset that has been begun, and of which all times are converted: `next` goes on with this one of
    /// outputTimes(), from 0; behind the last it ends.
    virtual void goTo(std::size_t output, Results& results) = 0;

    /// Behind the dataset's tag in the names of files ("_minus_base_h"): what is handed on is a difference. Blank for
    /// results as a file holds them.
    virtual std::string nameEnding() const { return {}; }

    /// Behind the last dataset: closes the file and says so.
    virtual void finish() = 0;
};
