// Ends of a run. Stopping is an exception that only main and the tests catch, so that everything opened closes on the
// way.
#pragma once

#include "text_utils/support_contact.h"

#include <stdexcept>
#include <string>
#include <string_view>

/// Thrown when the run ends early, or at its normal end without -b. The reason is already on the console; what() is it
/// once more, for a caller that embeds the readers and writers, and blank at the normal end.
class RunStopped : public std::runtime_error {
public:
    RunStopped(const std::string& message, int exitStatus) : std::runtime_error(message), status(exitStatus) {}
    int status;  ///< exit status of the process
};

constexpr int STATUS_DONE = 0;        ///< "Finished.", or a world file written
constexpr int STATUS_STOPPED = 1;     ///< any premature exit
constexpr int STATUS_USAGE = 2;       ///< the usage text was printed
constexpr int STATUS_INCOMPLETE = 3;  ///< "Finished.", but not everything asked for could be converted

/// Forgets what NOTE_INCOMPLETE noted: the start of a run and of a test.
void INITIALISE_EXITS();
/// Called beside the WARNING by a step that leaves out something asked for and goes on: a dataset that cannot be read,
/// the end of a truncated file.
void NOTE_INCOMPLETE();
/// Of a run that comes to its end: STATUS_INCOMPLETE once anything was noted, else STATUS_DONE.
int FINISHED_STATUS();

/// The one end of a run: closes all files (once, however often it is called), prints an empty line and
/// "Press Enter to Close", waits for Enter where somebody can press it, and throws RunStopped with the last ERROR.
[[noreturn]] void EXITS(int status = STATUS_STOPPED);

/// Reports the message, which begins with its severity ("ERROR - ..."), then leaves through EXITS.
[[noreturn]] void STOP_RUN(std::string_view message);

/// "Should not be here [<routine>] - please contact <support>", then EXITS: an internal consistency check failed.
[[noreturn]] void SHOULD_NOT_BE_HERE(std::string_view routine);

/// The end of a run that was only asked to tell something: STATUS_DONE, without the pause.
[[noreturn]] void END_AT_ONCE();

/// A fault of the program's own, such as a file number that no slot has: the message, then the end without a pause.
[[noreturn]] void STOP_AT_ONCE(std::string_view message);
