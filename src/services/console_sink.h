// Where the console's lines go. The standard output unless a program that embeds the readers and writers sets its own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Message levels: the word that gives a message its severity.
enum class MessageLevel : std::uint8_t { None = 0, Error = 1, Warning = 2, Check = 3, Unstable = 4 };

/// Takes what a run says. Only lines have to be taken: by default progress is passed over, nothing waits, and nobody
/// answers.
class ConsoleSink {
public:
    ConsoleSink() = default;
    ConsoleSink(const ConsoleSink&) = delete;
    ConsoleSink& operator=(const ConsoleSink&) = delete;
    virtual ~ConsoleSink() = default;

    /// One whole line, without its end. The level of a plain line is None.
    virtual void line(std::string_view text, MessageLevel level) = 0;

    /// A long step has come to `count` of `total` (0: not known). label: what is counted ("Element: "); blank where
    /// only the share is of interest. At most ten times a second, and only where showsProgress() says so.
    virtual void progress(std::string_view label, std::int64_t count, std::int64_t total);
    virtual bool showsProgress() const { return false; }

    /// A question, whose answer is read next.
    virtual void prompt(std::string_view text);
    /// The next line of answers without its line end; false at their end.
    virtual bool readAnswer(std::string& line);
    virtual bool somebodyAnswers() const { return false; }
    /// A pause: its text, blank for none. wait: where somebody can press Enter, the run goes on when he has.
    virtual void pause(std::string_view text, bool wait);

    /// Hands on what is held back.
    virtual void flush() {}
};
