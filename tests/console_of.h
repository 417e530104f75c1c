// What a step printed, for tests: the text, and "<stopped>" at its end when the step ended the run.
#pragma once

#include "services/console.h"
#include "services/exits.h"

#include <string>
#include <utility>

/// Everything said while it lives, instead of on the standard output; questions are answered with the lines of
/// `answers`, whose end is the end of the input. Pauses never wait.
class ConsoleCapture : public ConsoleSink {
public:
    explicit ConsoleCapture(std::string answers = {}) : before_(SET_CONSOLE_SINK(this)), answers_(std::move(answers)) {
        INITIALISE_CONSOLE();
    }
    ~ConsoleCapture() override {
        SET_CONSOLE_SINK(before_);
        INITIALISE_CONSOLE();
    }
    const std::string& text() const { return text_; }

    void line(std::string_view text, MessageLevel) override { text_ += std::string(text) + '\n'; }
    void prompt(std::string_view text) override { text_ += text; }
    bool somebodyAnswers() const override { return !answers_.empty(); }
    bool readAnswer(std::string& line) override {
        const std::size_t end = answers_.find('\n');
        line = answers_.substr(0, end);
        return !std::exchange(answers_, end == std::string::npos ? "" : answers_.substr(end + 1)).empty();
    }
    void pause(std::string_view text, bool) override {
        if (!text.empty()) line(text, MessageLevel::None);
    }

private:
    ConsoleSink* before_;
    std::string answers_, text_;
};

template <typename Step>
std::string consoleOf(Step&& step, std::string answers = {}) {
    ConsoleCapture capture(std::move(answers));
    std::string stopped;
    try {
        std::forward<Step>(step)();
    } catch (const RunStopped&) {
        stopped = "<stopped>";
    }
    return capture.text() + stopped;
}
