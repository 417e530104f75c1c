// The rows of the .csv files: cells between commas, quotes only where a cell needs them, nothing for a missing value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// A file's text under construction, row by row.
class CsvText {
public:
    /// As it stands, in quotes when it holds a comma, a quote or a line break.
    void add(std::string_view text);
    void addInteger(std::int64_t value);
    /// Fixed notation (REAL_TEXT of gis/fixed_text.h).
    void addReal(double value, int decimals);
    /// The same; an empty cell for a missing value.
    void addValue(float value, int decimals);
    void addBlank();
    void endRow();
    std::string& text() { return text_; }

private:
    void startCell();

    std::string text_;
    bool rowStarted_ = false;
};
