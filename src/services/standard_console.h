// The console as the standard input and output.
#pragma once

#include "services/console_sink.h"

#include <cstddef>

/// Lines are buffered, but for messages with a severity; on a terminal every line is seen at once, before the work that
/// it announces, and progress overwrites itself in place.
class StandardConsole final : public ConsoleSink {
public:
    void line(std::string_view text, MessageLevel level) override;
    void progress(std::string_view label, std::int64_t count, std::int64_t total) override;
    bool showsProgress() const override;
    void prompt(std::string_view text) override;
    bool readAnswer(std::string& line) override;
    bool somebodyAnswers() const override;
    void pause(std::string_view text, bool wait) override;
    void flush() override;

private:
    void clearProgress();

    std::string buffer_;
    std::size_t shown_ = 0;  ///< characters of progress on the line that is open
};
