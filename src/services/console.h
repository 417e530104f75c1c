// The console conversation: lines out, questions in, pauses, progress and the count of errors and warnings. Where all
// of it goes is a sink: the standard input and output, or what a caller sets.
#pragma once

#include "services/console_sink.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// What has been said on the console so far. Filled by DMESSAGE.
struct MessageCounts {
    /// indexed by MessageLevel
    std::array<int, static_cast<std::size_t>(MessageLevel::Unstable) + 1> byLevel{};
    int lastNumber = 0;     ///< the number of the last message that carried one ("ERROR 0251": 251), else 0
    std::string lastError;  ///< the last message of level Error; blank when there was none
};

/// Starts the console afresh, as at the start of a run: nothing counted, no batch. The sink stays.
void INITIALISE_CONSOLE();
/// Sends everything to `sink` from now on, which outlives its use; nullptr for the standard input and output. Returns
/// the one before.
ConsoleSink* SET_CONSOLE_SINK(ConsoleSink* sink);
/// In a batch run (-b) pauses print their text but never wait, and yes/no questions answer themselves with yes.
void SET_BATCH(bool batch);

/// One plain line.
void REPORT(std::string_view line);
/// One line with a severity: "ERROR - ...", "WARNING 0317 - ...", "Check - ...". Counted by level, then flushed.
/// The level is looked for before " - " only, so that a file name in the message cannot change it.
void DMESSAGE(std::string_view text);
const MessageCounts& MESSAGE_COUNTS();
/// Zeroes the counters of every level.
void DMESSAGERESETCOUNTERS();
/// A separator of 60 underscores.
void DLINE();
/// Writes out what is buffered.
void FLUSH_CONSOLE();

/// Keeps what is said from now on, until RELEASE_CONSOLE or whatever a person has to see at once: an ERROR, a question,
/// a pause, FLUSH_CONSOLE. `first` is called then, and what it says comes before what was kept; when it stops the run,
/// that is never said. For work that ends beside the calling thread, so that the order of the console is that of one
/// thread.
void HOLD_CONSOLE(std::function<void()> first);
void RELEASE_CONSOLE();

/// Prints the prompt without a line end and returns the answer: its line without the blanks, and without the pair of
/// quotes, at its ends. A blank answer asks again. At the end of the input: "ERROR - End of input reached while waiting
/// for an answer." and EXITS.
std::string ASK(std::string_view prompt);
/// True when a question would reach a person: somebody is there to answer and the run is no batch.
bool SOMEBODY_CAN_ANSWER();
/// Prints the question with " (y/n) " behind it; asks again until the answer is y, yes, n or no in any letter case. Yes
/// without asking where nobody can answer, so that nothing hangs overnight.
bool ASK_YES(std::string_view question);
/// Prints the text and waits for Enter when somebody can press it: standard input is a terminal and the run is no
/// batch. A blank text waits only.
void PAUSE(std::string_view text = "Press Enter to Continue");

/// A long step. On a terminal its count and percentage overwrite themselves in place; elsewhere nothing but the last
/// count is printed, so that the consoles of two equal runs are equal.
class Progress {
public:
    /// label: what is counted, such as "Element: ". Blank: only the percentage is shown, and it goes with the next
    /// line. total: 0 when it is not known.
    explicit Progress(std::string_view label, std::int64_t total = 0);
    /// Cheap enough for every row of a table: at most ten counts a second are shown.
    void show(std::int64_t count);
    /// Prints the final count on a line of its own. Not for a blank label.
    void finish(std::int64_t count);

private:
    std::string label_;
    std::int64_t total_;
    bool shown_;
    std::chrono::steady_clock::time_point next_{};  ///< nothing is shown before
};
