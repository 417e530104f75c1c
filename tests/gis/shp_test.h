// For the tests of shapefile sets: expected bytes written by hand, and what a set reads as.
#pragma once

#include "layer_test.h"

#include <charconv>
#include <string>
#include <string_view>

/// "0000270A 20*00 'abc" -> the bytes: hexadecimal pairs, a repeated pair, text to the next blank.
inline std::string shpBytesOf(std::string_view text) {
    std::string out;
    const auto pair = [](std::string_view two) {
        unsigned value = 0;
        std::from_chars(two.data(), two.data() + 2, value, 16);
        return static_cast<char>(value);
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view word = text.substr(at, text.find(' ', at) - at);
        at += word.size() + 1;
        std::size_t repeats = 0;
        if (word.starts_with('\'')) {
            out += word.substr(1);
        } else if (const auto star = word.find('*'); star != std::string_view::npos) {
            std::from_chars(word.data(), word.data() + star, repeats);
            out.append(repeats, pair(word.substr(star + 1)));
        } else {
            for (std::size_t i = 0; i + 1 < word.size(); i += 2) out += pair(word.substr(i));
        }
    }
    return out;
}

// 64-bit reals as they stand in a .shp file.
#define D0 " 0000000000000000 "
#define D1 " 000000000000F03F "
#define D2 " 0000000000000040 "
#define D3 " 0000000000000840 "
#define D4 " 0000000000001040 "
#define D_1 " 000000000000F0BF "

/// What is said when that holds an ERROR or a WARNING, the attributes, "|", then a line for each object: its record,
/// "|", "x y," for each vertex and "/" behind each part.
inline std::string shpReadingOf(const LayerTest& test) {
    const ReadLayer read = test.readLayer("a.shp");
    std::string all = read.said;
    if (all.find("ERROR") == std::string::npos && all.find("WARNING") == std::string::npos) all.clear();
    all += columnsOf(read.header) + '|';
    for (std::size_t i = 0; i < read.records.size(); ++i) {
        const GisObject& o = read.objects[i];
        all += '\n' + read.records[i] + '|';
        for (std::size_t v = 1, part = 1; v < o.x.size(); ++v) {
            all += std::to_string(static_cast<int>(o.x[v])) + ' ' + std::to_string(static_cast<int>(o.y[v])) + ',';
            if (v != static_cast<std::size_t>(o.ir[part])) continue;
            all += '/';
            ++part;
        }
    }
    return all;
}
