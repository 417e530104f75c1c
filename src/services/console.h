// The console conversation: lines out, questions in, pauses, progress counts and the count of errors and warnings.
// Lines are buffered; prompts, pauses, messages with a severity and the end of the run flush them.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

/// Message levels: the word that gives a message its severity.
enum class MessageLevel : std::uint8_t { None = 0, Error = 1, Warning = 2, Check = 3, Unstable = 4 };

/// What has been said on the console so far. Filled by DMESSAGE.
struct MessageCounts {
    std::array<int, 5> byLevel{};  ///< indexed by MessageLevel
    int lastNumber = 0;            ///< the number of the last message that carried one ("ERROR 0251": 251), else 0
};

/// Starts the console afresh, as at the start of a run: nothing counted, no batch.
void INITIALISE_CONSOLE();
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
/// "<n> warnings" when there were any; said once, at the end of the run.
void REPORT_WARNING_COUNT();
/// Writes out what is buffered.
void FLUSH_CONSOLE();

/// Prints the prompt without a line end and returns the answer without its line end, trimmed of blanks. At the end of
/// the input: "ERROR - End of input reached while waiting for an answer." and EXITS.
std::string ASK(std::string_view prompt);
/// True when a question would reach a person: standard input is a terminal and the run is no batch.
bool SOMEBODY_CAN_ANSWER();
/// Prints the question and returns true for an answer that begins with y or Y. Yes without asking in a batch run or
/// without a terminal, so that nothing hangs overnight.
bool ASK_YES(std::string_view question);
/// Prints the text and waits for Enter when somebody can press it: standard input is a terminal and the run is no
/// batch. A blank text waits only.
void PAUSE(std::string_view text = "Press Enter to Continue");

/// A running count behind a label ("Element: "). On a terminal the count overwrites itself in place; elsewhere only the
/// last one is printed.
class Progress {
public:
    explicit Progress(std::string_view label);
    /// Cheap enough for every row of a table: at most ten counts a second reach the terminal.
    void show(std::int64_t count);
    /// Prints the final count and ends the line.
    void finish(std::int64_t count);

private:
    std::string label_;
    bool inPlace_;
    std::chrono::steady_clock::time_point next_{};  ///< nothing is shown before
};

/// Everything printed through the console while `redirected` lives, instead of on the standard output; what ASK reads
/// comes from `answers`. For tests: pauses never wait, and the end of `answers` is the end of the input.
class ConsoleCapture {
public:
    explicit ConsoleCapture(std::string answers = {});
    ~ConsoleCapture();
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;
    const std::string& text() const;
};
