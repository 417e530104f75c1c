#include "services/standard_console.h"

#include "platform/platform.h"
#include "platform/terminal.h"

#include <algorithm>

namespace {
constexpr std::size_t FLUSH_SIZE = 1U << 15;
constexpr std::size_t LONGEST_ANSWER = 10000;
}  // namespace

void StandardConsole::line(std::string_view text, MessageLevel level) {
    clearProgress();
    // Room for the whole line first: a half one would swallow the ERROR that tells of the lack of memory.
    const std::size_t needed = buffer_.size() + text.size() + 1;
    if (needed > buffer_.capacity()) buffer_.reserve(std::max(needed, 2 * FLUSH_SIZE));
    buffer_ += text;
    buffer_ += '\n';
    if (level != MessageLevel::None || buffer_.size() >= FLUSH_SIZE || OUTPUT_IS_TERMINAL()) flush();
}

bool StandardConsole::showsProgress() const { return OUTPUT_IS_TERMINAL(); }

void StandardConsole::progress(std::string_view label, std::int64_t count, std::int64_t total) {
    const std::string share =
        total > 0
            ? std::to_string(static_cast<int>(100.0 * static_cast<double>(count) / static_cast<double>(total))) + "%"
            : std::string{};
    std::string text = "   " + share;
    if (!label.empty()) {
        text = std::string(label) + std::to_string(count);
        if (total > 0) text += " (" + share + ")";
    }
    const std::size_t length = text.size();
    text.resize(std::max(length, shown_), ' ');
    shown_ = length;
    buffer_ += '\r' + text;
    flush();
}

/// What comes next begins at the start of the line that the progress stood on.
void StandardConsole::clearProgress() {
    if (shown_ > 0) buffer_ += '\r' + std::string(shown_, ' ') + '\r';
    shown_ = 0;
}

void StandardConsole::prompt(std::string_view text) {
    clearProgress();
    buffer_ += text;
    flush();
}

bool StandardConsole::readAnswer(std::string& line) { return READ_INPUT_LINE(line, LONGEST_ANSWER); }

bool StandardConsole::somebodyAnswers() const { return INPUT_IS_TERMINAL(); }

void StandardConsole::pause(std::string_view text, bool wait) {
    if (!text.empty()) line(text, MessageLevel::None);
    flush();
    std::string ignored;
    if (wait && INPUT_IS_TERMINAL()) readAnswer(ignored);
}

void StandardConsole::flush() {
    if (buffer_.empty()) return;
    WRITE_OUTPUT(buffer_);
    buffer_.clear();
}
