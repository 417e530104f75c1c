#include "gis/attributes.h"

#include "text_utils/text.h"

#include <algorithm>
#include <charconv>

namespace {

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isTaken(const std::vector<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(), [name](const std::string& other) { return ASAME(other, name); });
}

/// A whole number from 0 to 32767 at the front of `text`, which it leaves.
bool takeNumber(std::string_view& text, std::int32_t& number) {
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || number < 0 || number > 32767) return false;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return true;
}

}  // namespace

std::string CLEANATTRIBUTENAME(std::string_view name) {
    name = TRIMMED(name);
    std::string clean = name.empty() || isDigit(name[0]) ? "_" : "";
    for (const char c : name) clean += isLetter(c) || isDigit(c) ? c : '_';
    return clean;
}

std::vector<std::string> CLEANED_NAMES(const std::vector<GisAttribute>& attributes, std::size_t width) {
    std::vector<std::string> names;
    names.reserve(attributes.size());
    for (const GisAttribute& attribute : attributes) {
        const std::string whole = CLEANATTRIBUTENAME(attribute.name);
        std::string name = FITTED(whole, width);
        for (int repeat = 2; isTaken(names, name); ++repeat) {
            const std::string number = std::to_string(repeat);
            name = FITTED(whole, width - number.size()) + number;
        }
        names.push_back(std::move(name));
    }
    return names;
}

std::optional<ColumnType> COLUMN_TYPE(std::string_view type) {
    std::string packed = UPPERCASE(type);
    std::erase_if(packed, [](char c) { return c == ' ' || c == '\t'; });
    const std::size_t open = packed.find('(');
    ColumnType column{packed.substr(0, open)};
    if (column.word.empty() ||
        !std::all_of(column.word.begin(), column.word.end(), [](char c) { return isLetter(c) || isDigit(c); }))
        return {};
    if (open == std::string::npos) return column;
    std::string_view rest = std::string_view(packed).substr(open + 1);
    if (!takeNumber(rest, column.width)) return {};
    if (rest.starts_with(',')) {
        rest.remove_prefix(1);
        if (!takeNumber(rest, column.decimals)) return {};
    }
    if (rest != ")") return {};
    return column;
}
