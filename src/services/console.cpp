#include "services/console.h"

#include "platform/platform.h"
#include "services/exits.h"

#include <charconv>
#include <cstdio>

namespace {

constexpr std::size_t FLUSH_SIZE = 1U << 15;

struct Console {
    std::string buffer;
    MessageCounts counts;
    bool batch = false;
    bool captured = false;
    bool countShown = false;  ///< a progress count stands on the line that is open
    std::string answers;      ///< what is left to read while captured
};
Console console;

/// Text begins on a line of its own, not behind a progress count.
void put(std::string_view text) {
    if (console.countShown) console.buffer += '\n';
    console.countShown = false;
    console.buffer += text;
    if (!console.captured && console.buffer.size() >= FLUSH_SIZE) FLUSH_CONSOLE();
}

/// False at the end of the input.
bool readAnswer(std::string& line) {
    line.clear();
    if (console.captured) {
        if (console.answers.empty()) return false;
        const std::size_t end = console.answers.find('\n');
        line = console.answers.substr(0, end);
        console.answers.erase(0, end == std::string::npos ? end : end + 1);
        return true;
    }
    constexpr std::size_t LONGEST_ANSWER = 10000;
    int c = std::getchar();
    if (c == EOF) return false;
    for (; c != EOF && c != '\n'; c = std::getchar())
        if (line.size() < LONGEST_ANSWER) line.push_back(static_cast<char>(c));
    return true;
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

}  // namespace

void INITIALISE_CONSOLE() {
    SURVIVE_CLOSED_PIPES();
    FLUSH_CONSOLE();
    console.counts = MessageCounts{};
    console.batch = false;
}

bool SOMEBODY_CAN_ANSWER() { return !console.captured && !console.batch && INPUT_IS_TERMINAL(); }
void SET_BATCH(bool batch) { console.batch = batch; }

void REPORT(std::string_view line) {
    put(line);
    put("\n");
}

void DMESSAGE(std::string_view text) {
    constexpr std::string_view WORDS[] = {"ERROR", "WARNING", "CHECK",
                                          "UNSTABLE"};  // a later word overrides an earlier
    const std::string_view head = text.substr(0, text.find(" - "));
    int level = 0;
    console.counts.lastNumber = 0;
    for (int i = 0; i < 4; ++i) {
        std::size_t at = findWord(head, WORDS[i]);
        if (at == 0) continue;
        level = i + 1;
        while (at < head.size() && head[at] == ' ') ++at;
        std::from_chars(head.data() + at, head.data() + head.size(), console.counts.lastNumber);
    }
    ++console.counts.byLevel[static_cast<std::size_t>(level)];
    REPORT(text);
    FLUSH_CONSOLE();
}

const MessageCounts& MESSAGE_COUNTS() { return console.counts; }
void DMESSAGERESETCOUNTERS() { console.counts = MessageCounts{}; }
void DLINE() { REPORT(std::string(60, '_')); }

void REPORT_WARNING_COUNT() {
    const int warnings = console.counts.byLevel[static_cast<std::size_t>(MessageLevel::Warning)];
    if (warnings > 0) REPORT(std::to_string(warnings) + (warnings == 1 ? " warning" : " warnings"));
}

void FLUSH_CONSOLE() {
    if (console.captured || console.buffer.empty()) return;
    // A console that cannot be written (a closed pipe) has nobody left to tell: the conversion goes on.
    std::fwrite(console.buffer.data(), 1, console.buffer.size(), stdout);
    std::fflush(stdout);
    console.buffer.clear();
}

std::string ASK(std::string_view prompt) {
    put(prompt);
    FLUSH_CONSOLE();
    std::string line;
    if (!readAnswer(line)) {
        REPORT("");
        STOP_RUN("ERROR - End of input reached while waiting for an answer.");
    }
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

bool ASK_YES(std::string_view question) {
    const bool answerWaits = console.captured && !console.batch && !console.answers.empty();
    if (!answerWaits && !SOMEBODY_CAN_ANSWER()) {
        REPORT(question);
        return true;
    }
    const std::string answer = ASK(std::string(question) + " ");
    return !answer.empty() && (answer[0] == 'y' || answer[0] == 'Y');
}

void PAUSE(std::string_view text) {
    if (!text.empty()) REPORT(text);
    FLUSH_CONSOLE();
    if (!SOMEBODY_CAN_ANSWER()) return;
    std::string line;
    readAnswer(line);
}

Progress::Progress(std::string_view label) : label_(label), inPlace_(!console.captured && OUTPUT_IS_TERMINAL()) {}

void Progress::show(std::int64_t count) {
    if (!inPlace_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(100);
    console.buffer += "\r" + label_ + std::to_string(count);
    console.countShown = true;
    FLUSH_CONSOLE();
}

void Progress::finish(std::int64_t count) {
    if (console.countShown) console.buffer += '\r';
    console.countShown = false;
    REPORT(label_ + std::to_string(count));
}

ConsoleCapture::ConsoleCapture(std::string answers) {
    FLUSH_CONSOLE();
    console = Console{};
    console.captured = true;
    console.answers = std::move(answers);
}
ConsoleCapture::~ConsoleCapture() { console = Console{}; }
const std::string& ConsoleCapture::text() const { return console.buffer; }
