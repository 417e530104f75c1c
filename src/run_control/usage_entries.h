// The usage text taken apart: what it says of each switch, for -help, the manual and the completion of shells.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A switch, an example or a note with all that the usage text says of it.
struct UsageEntry {
    std::string_view section;  ///< its heading, "GENERAL OPTIONS:"; of what the text leaves out "FURTHER OPTIONS:"
    std::vector<std::string> lines;  ///< as they are printed: the head first, then what continues it
};

/// How a line names switches: "   -vector or -arrow for vector" -> "vector", "arrow".
struct UsageHead {
    std::vector<std::string> keywords;  ///< without their dash, letter case as shown; none of an example or a note
    std::string_view shown;             ///< with their values: "-cp \"<cp_file.mif>\"", "-grid<spacing>"
    std::string_view text;  ///< what follows, without what separates the two: "to output on a regular grid."
};

/// In the order of the usage text; behind it the switches that it leaves out, the last of them those of the switch
/// table that nothing is said of.
std::vector<UsageEntry> USAGE_ENTRIES();
/// The views are of `line`.
UsageHead USAGE_HEAD(std::string_view line);

/// The entries that say something of a word, letter case ignored. A switch ("-t", "grid5", whose number is left out)
/// and a word of a letter or two are looked for as they stand; another word may go on ("depth" in "depths"). The entry
/// of the switch itself comes first.
std::vector<UsageEntry> USAGE_ABOUT(std::string_view word);
