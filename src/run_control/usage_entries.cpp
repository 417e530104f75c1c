#include "run_control/usage_entries.h"

#include "run_control/nearest_switch.h"
#include "run_control/switches.h"
#include "run_control/usage.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::string_view INDENT = "   ";  // of heads; what continues them has more, or begins with no switch
constexpr std::string_view HEADS[] = {"   -", "   VORANT_to_GIS"};
constexpr std::string_view FURTHER = "FURTHER OPTIONS:";
constexpr std::size_t SHORT_WORD = 2;

bool isLetterOrDigit(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

void addLine(std::vector<UsageEntry>& entries, std::string_view section, std::string_view line) {
    const bool head = std::any_of(std::begin(HEADS), std::end(HEADS),
                                  [&](std::string_view begin) { return line.starts_with(begin); });
    if (head || entries.empty() || entries.back().section != section) entries.push_back({section, {}});
    entries.back().lines.emplace_back(line);
}

bool isNamed(std::string_view keyword, const std::vector<UsageEntry>& entries) {
    for (const UsageEntry& entry : entries)
        for (const std::string& line : entry.lines)
            for (const std::string& named : USAGE_HEAD(line).keywords)
                if (ASAME(named, keyword)) return true;
    return false;
}

/// Where a value in brackets or quotes that begins at `at` ends; `at` when none does.
std::size_t behindValue(std::string_view text, std::size_t at) {
    const std::size_t open = text.substr(at).starts_with(' ') ? at + 1 : at;
    if (open >= text.size() || (text[open] != '<' && text[open] != '"')) return at;
    const std::size_t close = text.find(text[open] == '<' ? '>' : '"', open + 1);
    return close == std::string_view::npos ? at : close + 1;
}

/// Length of one switch with its values: -cpsd<sd>, -2dm "<2dm_file>", -s<id>"<output id (integer)>", -prec<u>.<d>.
std::size_t shownLength(std::string_view text, std::size_t end) {
    for (std::size_t next = behindValue(text, end); next > end; next = behindValue(text, end)) {
        end = next;
        if (text.substr(end).starts_with(".<")) ++end;
    }
    return end;
}

/// True when a word of the text is `word`, or begins with it when `longer` ones count.
bool holdsWord(std::string_view text, std::string_view word, bool longer) {
    for (std::size_t at = 0; at + word.size() <= text.size(); ++at) {
        if (at > 0 && isLetterOrDigit(text[at - 1])) continue;
        const std::size_t end = at + word.size();
        if (BEGINS_WITH(text.substr(at), word) && (longer || end == text.size() || !isLetterOrDigit(text[end])))
            return true;
    }
    return false;
}

bool speaksOf(const UsageEntry& entry, std::string_view word, bool longer) {
    return std::any_of(entry.lines.begin(), entry.lines.end(),
                       [&](const std::string& line) { return holdsWord(line, word, longer); });
}

}  // namespace

std::vector<UsageEntry> USAGE_ENTRIES() {
    std::vector<UsageEntry> entries;
    std::string_view section;
    bool described = false;
    for (const std::string_view line : USAGE_LINES()) {
        described = described || line == LAST_OF_DESCRIPTION;
        if (!described || line.empty()) continue;
        if (line.starts_with(INDENT)) addLine(entries, section, line);
        else section = line;
    }
    for (const std::string_view line : UNLISTED_SWITCHES()) addLine(entries, FURTHER, line);
    for (const Switch& row : ALL_SWITCHES())
        if (!isNamed(row.keyword, entries))
            entries.push_back({FURTHER, {"   -" + std::string(row.keyword) + (row.takesNext ? " \"<value>\"" : "")}});
    return entries;
}

UsageHead USAGE_HEAD(std::string_view line) {
    line = TRIMMED(line);
    UsageHead head{{}, {}, line};
    std::size_t end = 0;
    while (line.substr(end).starts_with('-')) {
        const std::size_t name = end + 1;
        for (end = name; end < line.size() && isLetterOrDigit(line[end]);) ++end;
        head.keywords.emplace_back(line.substr(name, end - name));
        end = shownLength(line, end);
        head.shown = line.substr(0, end);
        if (line.substr(end).starts_with(" or -")) end += std::string_view(" or ").size();
    }
    head.text = TRIMMED(line.substr(end));
    if (!head.shown.empty() && head.text.find_first_of(",-.") == 0) head.text = TRIMMED(head.text.substr(1));
    return head;
}

std::vector<UsageEntry> USAGE_ABOUT(std::string_view word) {
    const bool dash = word.starts_with('-') || word.starts_with('/');
    const std::string_view whole = word.substr(dash ? 1 : 0);
    // "-mesh2" is a name as it stands, "-grid5" is one with a number behind it.
    const std::vector<UsageEntry> entries = USAGE_ENTRIES();
    const std::string sought(isNamed(whole, entries) ? whole : WITHOUT_GLUED_NUMBER(whole));
    std::vector<UsageEntry> found;
    if (sought.empty()) return found;
    for (const UsageEntry& entry : entries)
        if (dash ? speaksOf(entry, '-' + sought, false) : speaksOf(entry, sought, sought.size() > SHORT_WORD))
            found.push_back(entry);
    std::stable_partition(found.begin(), found.end(),
                          [&](const UsageEntry& entry) { return isNamed(sought, {entry}); });
    return found;
}
