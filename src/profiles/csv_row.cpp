#include "profiles/csv_row.h"

#include "geometry/no_value.h"
#include "gis/fixed_text.h"

#include <array>
#include <charconv>

void CsvText::startCell() {
    if (rowStarted_) text_ += ',';
    rowStarted_ = true;
}

void CsvText::add(std::string_view text) {
    startCell();
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        text_ += text;
        return;
    }
    text_ += '"';
    for (const char c : text) {
        if (c == '"') text_ += '"';
        text_ += c == '\n' || c == '\r' ? ' ' : c;
    }
    text_ += '"';
}

void CsvText::addInteger(std::int64_t value) {
    startCell();
    std::array<char, 24> digits{};
    text_.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

void CsvText::addReal(double value, int decimals) {
    startCell();
    RealText buffer;
    text_ += REAL_TEXT(buffer, value, decimals);
}

void CsvText::addValue(float value, int decimals) {
    if (IS_MISSING(value)) addBlank();
    else addReal(static_cast<double>(value), decimals);
}

void CsvText::addBlank() { startCell(); }

void CsvText::endRow() {
    text_ += '\n';
    rowStarted_ = false;
}
