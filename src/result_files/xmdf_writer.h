// Writes datasets and times into one .xmdf results file, in the folders where readers look for them.
#pragma once

#include "inputs/results.h"
#include "xmdf/xmdf_output.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

class XmdfWriter {
public:
    /// Creates the file `name`. run: the group that holds the folders; shown: the name that messages give the file.
    /// Each member stops the run when the library or the disk refuses.
    XmdfWriter(const std::string& name, const std::string& run, std::string shown);

    /// The times of one dataset and kind come one behind the other. path: of the dataset in its source, blank where
    /// that has none; its last part names the dataset, with a number behind it where two of a folder are called alike.
    void write(const Results& results, const std::string& path, std::span<const std::uint8_t> flags);
    void close();

private:
    void begin(const Results& results, const std::string& path, const std::string& folder, std::size_t flags);
    void check(const XmdfStatus& status) const;

    XmdfOutput file_;
    std::string run_, shown_;
    std::string current_;  ///< key of the dataset being written
    std::vector<float> components_;
};
