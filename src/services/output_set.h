// A set of files on its way from working names to its place.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct PendingFile {
    std::string name;        ///< as it was asked for
    std::string place;       ///< the same behind all links
    std::size_t stem = 0;    ///< bytes of the place that its mark follows
    std::string working;     ///< blank: written in place
    bool ofLibrary = false;  ///< which may put others beside it
};

struct OutputSet {
    std::string main;
    std::string stem;    ///< of the main name, without its extension
    bool begun = false;  ///< else of one file, which is moved when it is closed
    std::vector<PendingFile> files;
};

/// Gives a file its place and its working name.
PendingFile PENDING_FILE(const OutputSet& set, const std::string& name, const std::string& place);
/// Moves what was written, the main file last. 0, else errno, with the name of the file in `failed` and everything as
/// it was before.
int MOVE_FILES(const OutputSet& set, std::string& failed);
/// Removes what stands under working names.
void REMOVE_WORKING_FILES(const OutputSet& set);
