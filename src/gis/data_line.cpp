#include "gis/data_line.h"

#include "gis/fixed_text.h"
#include "text_utils/text.h"

#include <array>
#include <charconv>

bool DataLine::NEXT(DataValue& value) {
    value = {};
    if (ended_) return false;
    const std::size_t first = rest_.find_first_not_of(delimiter_ == '\t' ? " " : " \t");
    if (first != std::string_view::npos && rest_[first] == '"') return nextQuoted(first + 1, value);
    value.text = upToDelimiter();
    return true;
}

std::string_view DataLine::upToDelimiter() {
    const std::size_t end = rest_.find(delimiter_);
    const std::string_view text = TRIMMED(rest_.substr(0, end));
    ended_ = end == std::string_view::npos;
    if (!ended_) rest_.remove_prefix(end + 1);
    return text;
}

bool DataLine::nextQuoted(std::size_t first, DataValue& value) {
    value.quoted = true;
    bool doubled = false;
    std::size_t end = first;
    for (; (end = rest_.find('"', end)) != std::string_view::npos && rest_.substr(end + 1).starts_with('"'); end += 2)
        doubled = true;
    value.text = rest_.substr(first, end == std::string_view::npos ? end : end - first);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    upToDelimiter();  // what stands between the closing quote and the delimiter is no part of the value
    if (!doubled) return true;
    unquoted_.clear();
    for (std::size_t i = 0; i < value.text.size(); ++i) {
        unquoted_ += value.text[i];
        if (value.text[i] == '"') ++i;
    }
    value.text = unquoted_;
    return true;
}

std::size_t VALUE_COUNT(std::string_view line, char delimiter) {
    enum class Place { Start, Quoted, QuoteEnded, Inside };
    std::size_t count = 1;
    Place place = Place::Start;
    for (const char c : line) {
        if (place == Place::Quoted) {
            if (c == '"') place = Place::QuoteEnded;
        } else if (c == delimiter) {
            ++count;
            place = Place::Start;
        } else if (c == '"' && place != Place::Inside) {
            place = Place::Quoted;  // behind a quote that seemed to end it, this one doubles that
        } else if (place == Place::QuoteEnded || (c != ' ' && c != '\t')) {
            place = Place::Inside;
        }
    }
    return count;
}

namespace {

void addComma(std::string& line) {
    if (!line.empty()) line += ',';
}

}  // namespace

void ADD_TEXT(std::string& line, std::string_view text) {
    addComma(line);
    line += '"';
    for (const char c : text) {
        if (c == '"') line += '"';
        line += c == '\n' || c == '\r' ? ' ' : c;
    }
    line += '"';
}

void ADD_INTEGER(std::string& line, std::int64_t value) {
    addComma(line);
    std::array<char, 24> digits{};
    line.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

void ADD_REAL(std::string& line, double value, int decimals) {
    addComma(line);
    RealText buffer;
    line += REAL_TEXT(buffer, value, decimals);
}
