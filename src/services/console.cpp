#include "services/console.h"

#include "platform/platform.h"
#include "services/exits.h"
#include "services/standard_console.h"
#include "text_utils/text.h"

#include <charconv>
#include <utility>
#include <vector>

namespace {

struct Console {
    ConsoleSink* sink = nullptr;  ///< nullptr: the standard input and output
    MessageCounts counts;
    bool batch = false;
    std::function<void()> first;                     ///< while lines are held
    std::vector<std::pair<std::string, bool>> held;  ///< a line, and whether it has a severity
};
Console console;

ConsoleSink& sink() {
    static StandardConsole standard;
    return console.sink != nullptr ? *console.sink : standard;
}

bool matchesBlindly(std::string_view text, std::size_t at, std::string_view word) {
    if (at + word.size() > text.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char c = text[at + i];
        if ((c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c) != word[i]) return false;
    }
    return true;
}

/// Position behind the first `word` (upper case) in `head`, case ignored; 0 when absent.
std::size_t findWord(std::string_view head, std::string_view word) {
    for (std::size_t i = 0; i < head.size(); ++i)
        if (matchesBlindly(head, i, word)) return i + word.size();
    return 0;
}

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view BLANKS = " \t\r";
    const std::size_t first = text.find_first_not_of(BLANKS);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

/// Files dragged into a terminal come in quotes, of one kind or the other.
std::string_view withoutQuotes(std::string_view text) {
    const bool quoted =
        text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.front() == text.back();
    return quoted ? withoutBlanks(text.substr(1, text.size() - 2)) : text;
}

}  // namespace

void INITIALISE_CONSOLE() {
    SURVIVE_REFUSED_WRITES();
    FLUSH_CONSOLE();
    console.first = {};
    console.held.clear();
    console.counts = MessageCounts{};
    console.batch = false;
}

void HOLD_CONSOLE(std::function<void()> first) {
    RELEASE_CONSOLE();
    console.first = std::move(first);
}

void RELEASE_CONSOLE() {
    if (!console.first) return;
    const auto first = std::exchange(console.first, {});
    const auto held = std::exchange(console.held, {});
    first();
    for (const auto& [text, severe] : held) severe ? DMESSAGE(text) : REPORT(text);
}

ConsoleSink* SET_CONSOLE_SINK(ConsoleSink* next) {
    FLUSH_CONSOLE();
    ConsoleSink* const before = console.sink;
    console.sink = next;
    return before;
}

bool SOMEBODY_CAN_ANSWER() { return !console.batch && sink().somebodyAnswers(); }
void SET_BATCH(bool batch) { console.batch = batch; }

void REPORT(std::string_view line) {
    if (console.first) console.held.emplace_back(line, false);
    else sink().line(line, MessageLevel::None);
}

void DMESSAGE(std::string_view text) {
    constexpr std::string_view WORDS[] = {"ERROR", "WARNING", "CHECK",
                                          "UNSTABLE"};  // a later word overrides an earlier
    const std::string_view head = text.substr(0, text.find(" - "));
    if (console.first) {
        if (findWord(head, WORDS[0]) == 0) return void(console.held.emplace_back(text, true));
        RELEASE_CONSOLE();
    }
    auto level = MessageLevel::None;
    console.counts.lastNumber = 0;
    for (std::uint8_t i = 0; i < 4; ++i) {
        std::size_t at = findWord(head, WORDS[i]);
        if (at == 0) continue;
        level = static_cast<MessageLevel>(i + 1);
        while (at < head.size() && head[at] == ' ') ++at;
        std::from_chars(head.data() + at, head.data() + head.size(), console.counts.lastNumber);
    }
    ++console.counts.byLevel[static_cast<std::size_t>(level)];
    if (level == MessageLevel::Error) console.counts.lastError = text;
    sink().line(text, level);
}

const MessageCounts& MESSAGE_COUNTS() { return console.counts; }
void DMESSAGERESETCOUNTERS() { console.counts = MessageCounts{}; }
void DLINE() { REPORT(std::string(60, '_')); }
void FLUSH_CONSOLE() {
    RELEASE_CONSOLE();
    sink().flush();
}

std::string ASK(std::string_view prompt) {
    RELEASE_CONSOLE();
    std::string line;
    for (;;) {
        sink().prompt(prompt);
        if (!sink().readAnswer(line)) {
            REPORT("");
            STOP_RUN("ERROR - End of input reached while waiting for an answer.");
        }
        if (const std::string_view answer = withoutQuotes(withoutBlanks(line)); !answer.empty())
            return std::string(answer);
    }
}

bool ASK_YES(std::string_view question) {
    if (!SOMEBODY_CAN_ANSWER()) {
        REPORT(question);
        return true;
    }
    for (;;) {
        const std::string answer = ASK(std::string(question) + " (y/n) ");
        if (ASAME(answer, "y") || ASAME(answer, "yes")) return true;
        if (ASAME(answer, "n") || ASAME(answer, "no")) return false;
        REPORT("   \"" + answer + "\" is neither y nor n.");
    }
}

void PAUSE(std::string_view text) {
    RELEASE_CONSOLE();
    sink().pause(text, !console.batch);
}

Progress::Progress(std::string_view label, std::int64_t total)
    : label_(label), total_(total), shown_(sink().showsProgress()) {}

void Progress::show(std::int64_t count) {
    if (!shown_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(100);
    sink().progress(label_, count, total_);
}

void Progress::finish(std::int64_t count) { REPORT(label_ + std::to_string(count)); }

void ConsoleSink::progress(std::string_view, std::int64_t, std::int64_t) {}
void ConsoleSink::prompt(std::string_view) {}
bool ConsoleSink::readAnswer(std::string&) { return false; }
void ConsoleSink::pause(std::string_view, bool) {}
