// Columns of the layers, and values as they are written.
#include "gis/data_line.h"
#include "inputs/coordinate_decimals.h"
#include "vector_outputs/flow.h"
#include "vector_outputs/layer_kinds.h"
#include "vector_outputs/point_types.h"
#include "vector_outputs/record_columns.h"

#include "run_control/layer_stage.h"

#include <doctest/doctest.h>

#include <string>

namespace {

std::string definitionOf(const RecordColumns& record, bool shortIntegers = false) {
    std::string text;
    for (const GisAttribute& a : ATTRIBUTES_OF(record, shortIntegers))
        text += (text.empty() ? "" : " ") + a.name + ":" + a.type;
    return text;
}

std::string columnsOf(const LayerKind& kind, void (*set)(RunOptions&)) {
    RunOptions options;
    set(options);
    std::string names;
    for (const GisAttribute& a : ATTRIBUTES_OF(
             RECORD_COLUMNS(LAYER_COLUMNS(kind, LAYER_CHOICE(*FORMAT_OF("mif"), options).shown), {}, "h", 0, 0), false))
        names += (names.empty() ? "" : " ") + a.name;
    return names;
}

}  // namespace

TEST_CASE("Every layer has its columns in their order") {
    const auto none = [](RunOptions&) {};
    const LayerKind nodes{LayerContent::Vector, ItemKind::Node, DrawnAs::Point, false};
    const LayerKind arrows{LayerContent::Vector, ItemKind::GridCell, DrawnAs::Arrow, false};
    const LayerKind cells{LayerContent::Scalar, ItemKind::Cell, DrawnAs::Region, true};
    const LayerKind grid{LayerContent::Scalar, ItemKind::GridCell, DrawnAs::Point, false};
    CHECK(columnsOf({LayerContent::Bed, ItemKind::Node, DrawnAs::Point, false}, none) == "SMS_ID PtType Elevation");
    CHECK(columnsOf({LayerContent::Bed, ItemKind::Cell, DrawnAs::Region, false}, none) == "SMS_ID MatID Elevation");
    CHECK(columnsOf(cells, none) == "SMS_ID MatID Elevation h Depth");
    CHECK(columnsOf(grid, none) == "Grid_Ref h");
    CHECK(columnsOf(nodes, none) == "SMS_ID PtType Elevation Magnitude Angle X_component Y_component Bearing");
    CHECK(columnsOf(nodes, [](RunOptions& o) { o.vx = true; }) == "SMS_ID PtType Elevation X_component");
    CHECK(columnsOf(nodes, [](RunOptions& o) {
              o.vy = true;
              o.va = true;
          }) == "SMS_ID PtType Elevation Y_component");
    CHECK(columnsOf(nodes, [](RunOptions& o) { o.vdir = true; }) == "SMS_ID PtType Elevation Angle");
    CHECK(columnsOf(nodes, [](RunOptions& o) { o.va = o.compass = true; }) == "SMS_ID PtType Elevation Bearing");
    CHECK(columnsOf(arrows, [](RunOptions& o) { o.va = true; }) ==
          "Grid_Ref Magnitude Angle X_component Y_component Bearing");
    CHECK(columnsOf(arrows, [](RunOptions& o) { o.vx = true; }) == "Grid_Ref X_component");
    CHECK(columnsOf(cells, [](RunOptions& o) { o.verbose = true; }) == "SMS_ID MatID Elevation h Depth Time");
    CHECK(columnsOf(grid, [](RunOptions& o) { o.verbose = true; }) == "Grid_Ref h MatID Elevation Time");
    CHECK(columnsOf({LayerContent::Bed, ItemKind::Node, DrawnAs::Point, false},
                    [](RunOptions& o) { o.verbose = true; }) == "SMS_ID PtType Elevation MatID");
}

TEST_CASE("Field widths follow the longest text of the layer") {
    RecordColumns record = RECORD_COLUMNS(
        {Column::SmsId, Column::PtType, Column::MatId, Column::GridRef, Column::Value}, {10, 4}, "", 0, 0);
    CHECK(definitionOf(record, true) ==
          "SMS_ID:Integer PtType:Char(2) MatID:Integer Grid_Ref:Char(16) Value:Decimal(10,4)");
    MapItem item;
    item.material = -1234567;
    item[Column::Value] = -9999.99994;  // rounds to ten characters
    NOTE_RECORD(record, item);
    CHECK(definitionOf(record, true).ends_with("MatID:Integer Grid_Ref:Char(16) Value:Decimal(10,4)"));
    item.material = -12345678;  // nine characters: more than a .dbf integer holds
    item[Column::Value] = -9999.99996;
    NOTE_RECORD(record, item);
    CHECK(definitionOf(record, true).ends_with("MatID:Decimal(9,0) Grid_Ref:Char(16) Value:Decimal(11,4)"));
    CHECK(definitionOf(record, false).find("MatID:Integer") != std::string::npos);
    item[Column::Value] = 1e30;
    NOTE_RECORD(record, item);
    CHECK(definitionOf(record).ends_with("Value:Decimal(36,4)"));
    CHECK(definitionOf(RECORD_COLUMNS({Column::Value}, {7, 0}, "Depth", 0, 0)) == "Depth:Decimal(7,0)");
    CHECK(definitionOf(RECORD_COLUMNS({Column::GridRef}, {}, "", 12345678, 9)) == "Grid_Ref:Char(18)");
}

TEST_CASE("Directions stay in range, and zero has no sign, after rounding") {
    const struct {
        float vx, vy;
        int decimals;
        const char* expected;  ///< angle, bearing
    } rows[] = {
        {1, 0, 4, "0.0000,90.0000"},
        {0, 1, 2, "90.00,0.00"},
        {-1, 0.0F, 4, "180.0000,270.0000"},
        {-1, -0.0F, 4, "180.0000,270.0000"},   // atan2 gives -180
        {-1, -1e-7F, 4, "180.0000,270.0000"},  // -179.99999: rounds to -180.0000
        {-1, -1e-3F, 4, "-179.9427,269.9427"},
        {-1, -1e-3F, 0, "180,270"},
        {-1e-7F, 1, 4, "90.0000,0.0000"},  // a bearing of 359.99999
        {-5e-3F, 1, 0, "90,0"},
        {1, -1e-7F, 4, "0.0000,90.0000"},  // not -0.0000
        {0, -1, 4, "-90.0000,180.0000"},
        {-1, -1, 12, "-135.000000000000,225.000000000000"},
        {0, 0, 4, "0.0000,0.0000"},
        {1e-6F, -1e-6F, 1, "0.0,0.0"},  // at rest
    };
    for (const auto& r : rows) {
        const RecordColumns record = RECORD_COLUMNS({Column::Angle, Column::Bearing}, {10, r.decimals}, "", 0, 0);
        MapItem item;
        item.vx = r.vx;
        item.vy = r.vy;
        SET_FLOW(item, TURNED_AXES(40.0F));  // the axes of the components never turn the directions
        std::string line;
        FORM_RECORD(record, item, line);
        CHECK(line == r.expected);
    }
    MapItem item;
    item.vx = 2.0F;
    SET_FLOW(item, TURNED_AXES(30.0F));
    CHECK(item[Column::XComponent] == doctest::Approx(1.7320508));
    CHECK(item[Column::YComponent] == doctest::Approx(-1.0));
    CHECK(item[Column::Magnitude] == 2.0);
}

TEST_CASE(
    "A record is one line: texts quoted, the kind of a node without blanks, grid references alike through a layer") {
    MapItem item;
    item.id = 7;
    item.kind = {'T', ' '};
    item.row = 12;
    item.column = 345678;
    item[Column::Elevation] = -0.00004;
    std::string line;
    FORM_RECORD(
        RECORD_COLUMNS({Column::SmsId, Column::PtType, Column::Elevation, Column::GridRef}, {}, "", 100, 999999), item,
        line);
    CHECK(line == "7,\"T\",0.0000,\"R000012C345678\"");
    item.kind = {'U', 'V'};
    item.column = 34567;
    FORM_RECORD(RECORD_COLUMNS({Column::GridRef, Column::PtType, Column::Elevation}, {5, 0}, "", 100, 99999), item,
                line);
    CHECK(line == "\"R00012C34567\",\"UV\",0");
}

TEST_CASE("-pts is read from left to right") {
    const struct {
        const char* text;
        const char* passing;  ///< of T, H, UV, C, QL and blank
        const char* unknown;
    } rows[] = {
        {"ALL", "T H UVC QL", ""},
        {"CT", "T C ", ""},
        {"uvh", "H UV", ""},
        {"UVC", "UVC ", ""},
        {"H,t", "T H ", ""},
        // half a "UV" is nothing, and nothing stands for all
        {"XH", "H ", "X"},
        {"U", "T H UVC QL", "U"},
        {"V", "T H UVC QL", "V"},
        {"", "T H UVC QL", ""},
        {"HALL", "T H UVC QL", ""},  // not H, A, L, L
    };
    for (const auto& r : rows) {
        const PointTypes types = READ_POINT_TYPES(r.text);
        std::string passing;
        for (const NodeKind kind : {NodeKind{'T', ' '}, NodeKind{'H', ' '}, NodeKind{'U', 'V'}, NodeKind{'C', ' '},
                                    NodeKind{'Q', 'L'}, NodeKind{' ', ' '}})
            if (PASSES(types, kind)) passing.append(kind.data(), 2);
        CAPTURE(r.text);
        CHECK(passing == r.passing);
        CHECK(types.unknown == r.unknown);
    }
}

TEST_CASE("Coordinates show a thousandth of the shortest side") {
    using Kind = CoordinateKind;
    const struct {
        double side, x0;
        Kind kind;
        int decimals;
    } rows[] = {
        {10, 500000, Kind::Unknown, 3},
        {0.5, 500000, Kind::Unknown, 4},
        {0.01, 500000, Kind::Projected, 5},
        {10, 500000, Kind::Geographic, 8},
        {0.0001, 145, Kind::Unknown, 8},  // degrees by its extent, unless a
                                          // projection says otherwise
        {10, 145, Kind::NonEarth, 3},
        {1e-6, 145, Kind::Geographic, 9},
        {1e-7, 145, Kind::Unknown, 10},
        {1e-12, 0, Kind::Unknown, 12},
    };
    for (const auto& r : rows) {
        CAPTURE(r.side);
        Mesh mesh;
        mesh.nodes.resize(5);
        mesh.nodes[2].x = r.side;  // three nodes of a cell, whose other sides are longer, and a removed one
        mesh.nodes[3].y = 5 * r.side;
        mesh.nodes[4].y = r.side / 100;
        mesh.elements.resize(3);
        for (const std::size_t id : {1U, 2U}) {
            mesh.elements[id].shape = 3;
            mesh.elements[id].nodes = {1, 2, id == 1 ? 3 : 4};
            mesh.elements[id].removed = id == 2;
        }
        for (MeshNode& node : mesh.nodes) node.x += r.x0;
        mesh.xmin = r.x0;
        mesh.xmax = r.x0 + r.side;
        mesh.ymin = mesh.ymax = 0;
        CHECK(COORDINATE_DECIMALS(mesh, r.kind) == r.decimals);
    }
    std::string line;
    ADD_REAL(line, 145.1, 10);
    CHECK(line == "145.1000000000");
}
