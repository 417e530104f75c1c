// Tables of tests as texts, one row a line, where most cells are texts themselves.
#pragma once

#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Cells between "|", blanks around them cut; missing ones are blank.
using Row = std::array<std::string, 8>;

/// A row goes on in the next line behind a backslash; "#" begins a line of comment.
inline std::vector<Row> rowsOf(const std::string& text) {
    std::istringstream lines(text);
    std::string whole;
    std::vector<Row> rows;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.starts_with('#')) continue;
        whole += TRIMMED(line);
        if (whole.ends_with('\\')) {
            whole.pop_back();
            continue;
        }
        Row row;
        std::istringstream cells(std::exchange(whole, {}));
        for (std::size_t i = 0; i < row.size() && std::getline(cells, line, '|'); ++i) row[i] = TRIMMED(line);
        rows.push_back(row);
    }
    return rows;
}

template <typename Take>
void forEachRow(const std::string& rows, Take take) {
    for (const Row& row : rowsOf(rows)) take(row);
}

/// A cell as a number; blank is 0.
inline double numberOf(const std::string& cell) { return cell.empty() ? 0.0 : std::stod(cell); }
inline int wholeOf(const std::string& cell) { return cell.empty() ? 0 : std::stoi(cell); }
/// "1 -2.5 0" -> its numbers.
template <typename Number = double>
std::vector<Number> listOf(const std::string& cell) {
    std::istringstream numbers(cell);
    std::vector<Number> list;
    for (std::string number; numbers >> number;) list.push_back(static_cast<Number>(std::stod(number)));
    return list;
}

inline std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

inline std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// "-path/z odd -max" -> "-path/z odd", "-max": switches between which a blank and a dash stand.
inline std::vector<std::string> switchesOf(const std::string& text) {
    std::vector<std::string> switches;
    for (std::size_t at = 0, next = 0; at < text.size(); at = next + 1) {
        next = std::min(text.find(" -", at), text.size());
        switches.push_back(text.substr(at, next - at));
    }
    return switches;
}
