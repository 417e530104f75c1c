// Outputs on their way: the sets of files that are written under working names and moved to their places together. The
// file service opens them; other folders know services/files.h only.
#pragma once

#include "services/output_set.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

enum class Making : std::uint8_t {
    Made,     ///< under its working name
    InPlace,  ///< to be written over the file of that name, since its folder takes no new one
    LeftOut,  ///< the same folder, another file of the set is written in place, and there is none of that name
    Refused   ///< errno tells why
};

/// A file that is to be written.
struct NewOutput {
    Making making = Making::Refused;
    std::string path;  ///< where its bytes go
    int error = 0;
    std::string failed;           ///< the file that has this error: another of the set that is to be written in place
    std::FILE* stream = nullptr;  ///< of a file that was made
};

/// A file of the set of BEGIN_SET whose main name it shares up to the extension; else it is a set by itself. Links to
/// files are followed, devices and pipes taken in place. What ended runs of this machine left of it is removed.
NewOutput MAKE_OUTPUT(const std::string& name);
/// A file was closed. One that is a set by itself is moved when it is whole, else removed; errno of what prevents it.
int OUTPUT_CLOSED(const std::string& name, bool whole);
/// Makes a file in the folder and removes it again, whatever signal comes between: 0, else errno.
int TRY_FOLDER(const std::string& folder);
/// A library will make the file of MAKE_OUTPUT itself, and may put others beside it.
void LEAVE_TO_LIBRARY(const std::string& name);

/// Puts back what a process that was killed amid its moves had moved away of an earlier set of this name: true when
/// there was any, with what cannot be put back in `failed`.
bool BEGIN_SET(std::string_view mainName, FailedMove& failed);
/// Moves every file of the set, the main one last. When one cannot be moved, those of the earlier set are put back, and
/// the new set is as it was, for another try.
FailedMove MOVE_SET(std::string_view mainName);
/// Removes and forgets whatever is not at its place. Never stops the run.
void DISCARD_OUTPUTS() noexcept;
/// The same beside the thread that writes, at the end of the process: nothing is begun or moved after it.
void DISCARD_OUTPUTS_FOR_GOOD() noexcept;
