// The object record that passes between a layer and its caller, one object at a time. The operations are in
// gis/layers.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

constexpr std::size_t MOST_VERTICES = 50000000;  ///< of one object, named by ERROR 0310
constexpr std::int32_t MOST_POLYGONS = 10000;    ///< rings of a region, named by ERROR 0304, 0421 and 0422

enum class GisKind : std::uint8_t {
    None,
    Point,
    Line,
    Pline,
    PlineMultiple,
    Region,
    Ellipse,
    Rect,
    RoundRect,
    Arc,
    Text,
    MultiPoint
};

/// What a layer holds as a whole; its values are the shape types of a shapefile. Lines are all of Line, Pline and
/// PlineMultiple.
enum class GisShape : std::int32_t { Any = 0, Point = 1, Lines = 3, Region = 5, MultiPoint = 8 };

/// One object (gisO). Parts are stored one after the other: part i holds the vertices ir[i-1]+1 to ir[i].
/// Keep one record for a whole layer: its arrays grow to the largest object and are then used again.
struct GisObject {
    GisKind kind = GisKind::None;
    /// the number read with the keyword: sections of a PlineMultiple, points of a MultiPoint, rings of a
    std::int32_t sectionCount = 0;
    ///< Region; else 0. Not needed for writing
    /// parts: rings of a region, sections of a multiple polyline, else 1; 0 without geometry
    std::int32_t nr = 0;
    /// per part, numbered from 1: number of its last vertex; ir[0] is 0; rises strictly
    std::vector<std::int32_t> ir{0};
    /// per vertex, numbered from 1 (entry 0 unused), map units. Text, Rect, Ellipse, RoundRect
    std::vector<double> x{0.0}, y{0.0};
    ///< and Arc have two: opposite corners
    std::string text;  ///< of a Text object, UTF-8

    /// Empties the record for an object of this kind, keeping its memory.
    void start(GisKind newKind) {
        kind = newKind;
        sectionCount = nr = 0;
        ir.resize(1);
        x.resize(1);
        y.resize(1);
        text.clear();
    }
    void add(double vertexX, double vertexY) {
        x.push_back(vertexX);
        y.push_back(vertexY);
    }
    /// Ends the part that the vertices added since the last call make up.
    void endPart() {
        ir.push_back(static_cast<std::int32_t>(x.size()) - 1);
        ++nr;
    }
    void setPoint(double pointX, double pointY) {
        start(GisKind::Point);
        add(pointX, pointY);
        endPart();
    }
    /// Number of vertices that the parts hold.
    std::size_t vertexCount() const { return static_cast<std::size_t>(ir[static_cast<std::size_t>(nr)]); }
};
