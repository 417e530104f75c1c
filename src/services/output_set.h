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
/// A move that failed.
struct FailedMove {
    int error = 0;      ///< errno; 0: none
    std::string place;  ///< of the file
    std::string aside;  ///< where an earlier file waits that could not be put back either; mostly blank
};

/// Moves what was written, the main file last. When it fails everything is as it was before, but for what could not be
/// put back.
FailedMove MOVE_FILES(const OutputSet& set);
/// What a process that was killed amid its moves had moved away. True when there was any: the place of the main file is
/// free. What cannot be put back waits for another run.
bool PUT_BACK_EARLIER(const OutputSet& set, FailedMove& failed);
/// Removes what stands under working names.
void REMOVE_WORKING_FILES(const OutputSet& set);
