// Tables of tests as texts, one row a line, where most cells are texts themselves.
#pragma once

#include "text_utils/text.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Cells between "|", blanks around them cut; missing ones are blank.
using Row = std::array<std::string, 5>;

/// A row goes on in the next line behind a backslash; "#" begins a comment.
template <typename Take>
void forEachRow(const std::string& rows, Take take) {
    std::istringstream lines(rows);
    std::string whole;
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
        take(row);
    }
}

inline std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
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
