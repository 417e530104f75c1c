#include "text_utils/text.h"

#include <algorithm>

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool sameLetter(char a, char b) { return upper(a) == upper(b); }

constexpr std::string_view BLANKS = " \t";

}  // namespace

std::string UPPERCASE(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), upper);
    return out;
}

std::string LOWERCASE(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), lower);
    return out;
}

std::string_view TRIMF(std::string_view text) {
    const std::size_t last = text.find_last_not_of(BLANKS);
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string_view TRIMMED(std::string_view text) {
    const std::size_t first = text.find_first_not_of(BLANKS);
    return first == std::string_view::npos ? std::string_view{} : TRIMF(text.substr(first));
}

std::string_view WITHOUT_MARK(std::string_view text) {
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (text.starts_with(BYTE_ORDER_MARK)) text.remove_prefix(BYTE_ORDER_MARK.size());
    return text;
}

std::string WITH_UNDERSCORES(std::string_view text) {
    std::string clean(text);
    for (char& c : clean) {
        const bool kept = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                          static_cast<unsigned char>(c) >= 0x80;
        if (!kept) c = '_';
    }
    return clean;
}

std::string REMOVEQUOTES(std::string_view text) {
    std::string out(text);
    std::erase(out, '"');
    return out;
}

bool ASAMECS(std::string_view a, std::string_view b) { return TRIMMED(REMOVEQUOTES(a)) == TRIMMED(REMOVEQUOTES(b)); }
bool ASAME(std::string_view a, std::string_view b) { return ASAMECS(UPPERCASE(a), UPPERCASE(b)); }

bool BEGINS_WITH(std::string_view text, std::string_view keyword) {
    return text.size() >= keyword.size() && std::equal(keyword.begin(), keyword.end(), text.begin(), sameLetter);
}

bool FLAGEXISTS(std::string_view a, std::string_view b) {
    b = TRIMMED(b);
    return b.empty() || std::search(a.begin(), a.end(), b.begin(), b.end(), sameLetter) != a.end();
}

bool FLAGEXISTSRET(std::string_view a, std::string_view b, std::string& rest) {
    rest.clear();
    b = TRIMMED(b);
    const auto at = std::search(a.begin(), a.end(), b.begin(), b.end(), sameLetter);
    if (at == a.end() && !b.empty()) return false;
    rest.assign(at + static_cast<std::ptrdiff_t>(b.size()), a.end());
    return true;
}

bool COMMENTLINE(std::string& line) {
    line = TRIMMED(line);
    if (line.empty() || line[0] == '#' || line[0] == '!') return true;
    line.resize(std::min(line.find_first_of("#!"), line.size()));
    return false;
}

std::string FITTED(std::string_view text, std::size_t width) { return std::string(text.substr(0, width)); }
