// The data line: one record's values as comma-separated text, split and built without allocation per value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// One value of a data line. The text is valid until the next NEXT of its DataLine.
struct DataValue {
    std::string_view text;  ///< without blanks around it and without its quotes; a doubled quote inside has become one
    bool quoted = false;    ///< it stood in double quotes, so it is text
};

/// Walks the values of a line. Split at delimiters outside double quotes:  1,"a, b",,"say ""hi"""  has 1 / a, b /
/// (blank) / say "hi". A blank line has one blank value. A quote that is never closed runs to the end of the line.
class DataLine {
public:
    explicit DataLine(std::string_view line, char delimiter = ',') : rest_(line), delimiter_(delimiter) {}
    /// False behind the last value.
    bool NEXT(DataValue& value);

private:
    std::string_view upToDelimiter();
    bool nextQuoted(std::size_t first, DataValue& value);

    std::string_view rest_;
    char delimiter_;
    bool ended_ = false;
    std::string unquoted_;
};

/// Number of values of a line, blank ones included.
std::size_t VALUE_COUNT(std::string_view line, char delimiter = ',');

// Each adds one value to the line under construction, behind a comma unless it is the first.
/// In double quotes, quotes inside doubled; line breaks become blanks.
void ADD_TEXT(std::string& line, std::string_view text);
void ADD_INTEGER(std::string& line, std::int64_t value);
/// The text of REAL_TEXT: (2.5, 2) -> 2.50, (2.5, 0) -> 2.
void ADD_REAL(std::string& line, double value, int decimals);
