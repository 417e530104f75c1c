#include "run_control/nearest_switch.h"

#include "run_control/help.h"
#include "run_control/switches.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace {

constexpr std::size_t MOST_EDITS = 2;

bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

/// Edits between two texts. Rows of the table: letters of a so far; only the last three are kept.
std::size_t edits(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before, last, row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before = last;
        last = row;
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row[b.size()];
}

}  // namespace

std::string_view WITHOUT_GLUED_NUMBER(std::string_view text) {
    std::size_t end = text.size();
    for (std::size_t at = text.size(); at > 0; --at) {
        const char c = text[at - 1];
        if (std::string_view("0123456789+-.,").find(c) != std::string_view::npos) end = at - 1;
        // the exponent of a number, where digits stand on both sides
        else if (std::string_view("eEdD").find(c) == std::string_view::npos || end != at || end == text.size() ||
                 at < 2 || std::isdigit(static_cast<unsigned char>(text[at - 2])) == 0)
            break;
    }
    return end == 0 ? text : text.substr(0, end);
}

std::string NEAREST_SWITCH(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);  // a second dash is a habit, not a slip of the word
    const auto letters = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isLetter));
    if (letters < 2) return {};
    const std::string whole = LOWERCASE(text), plain = LOWERCASE(WITHOUT_GLUED_NUMBER(text));
    std::string nearest;
    std::size_t least = 2 * (std::min(MOST_EDITS, letters - 1) + 1);
    const auto compare = [&](std::string_view keyword) {
        const std::string known = LOWERCASE(keyword);
        const std::size_t apart = std::min(edits(whole, known), edits(plain, known));
        const std::size_t distance = 2 * apart + (known.starts_with(plain) ? 0 : 1);  // a keyword's beginning is nearer
        if (distance >= least) return;
        least = distance;
        nearest = keyword;
    };
    for (const Switch& row : ALL_SWITCHES()) compare(row.keyword);
    for (const std::string_view word : TELLING_SWITCHES()) compare(word);
    return nearest;
}
