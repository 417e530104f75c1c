// What a file holds (-xnfo): datasets, times and ranges of results, counts, extents and areas of a mesh.
#pragma once

#include "inputs/mesh.h"
#include "inputs/xmdf_facts.h"
#include "result_files/value_range.h"
#include "run_control/input_files.h"
#include "services/output_time.h"

#include <span>
#include <string>
#include <string_view>

constexpr std::size_t MOST_LISTED_TIMES = 1000;  ///< of one dataset, unless all are asked for

/// The lines of a listing, said as they come.
class Listing {
public:
    explicit Listing(bool allTimes = false) : allTimes_(allTimes) {}
    void line(std::string_view text);
    /// First and last of the times, then each: hours, and the number in the file's unit.
    void times(std::span<const OutputTime> times, std::span<const double> stored, std::string_view unit);
    /// "-" where the range is not known, that is `known` is false.
    void range(const ValueRange& range, bool known);
    const std::string& text() const { return text_; }

private:
    std::string text_;
    bool allTimes_;
};

/// Lists the input and writes the listing to "<base>_xmdf_info.txt", "_dat_info.txt" or "_2dm_info.txt". Values are
/// read only with `verbose`; without it, ranges are those that the file stores. allTimes: else at most
/// MOST_LISTED_TIMES. Stops the run on a file that cannot be read; a dataset that cannot be is named in a WARNING, and
/// the run counts as incomplete.
void LIST_FILE(const InputFiles& files, bool verbose, bool allTimes);

// Of one kind of file each.
void LIST_XMDF(const std::string& name, bool verbose, Listing& listing);
void LIST_DAT(const std::string& name, bool verbose, Listing& listing);
void LIST_MESH(const std::string& name, Listing& listing);
