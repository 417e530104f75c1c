// Columns of the layers, and values as they are written.
#include "gis/data_line.h"

#include "inputs/coordinate_decimals.h"
#include "raster/lattice_mesh.h"
#include "run_control/layer_stage.h"
#include "run_control/read_switches.h"
#include "services/options.h"
#include "testing.h"
#include "vector_outputs/flow.h"
#include "vector_outputs/layer_kinds.h"
#include "vector_outputs/point_types.h"
#include "vector_outputs/record_columns.h"

namespace {

std::string definitionOf(const RecordColumns& record, bool shortIntegers = false) {
    std::string text;
    for (const GisAttribute& a : ATTRIBUTES_OF(record, shortIntegers))
        text += (text.empty() ? "" : " ") + a.name + ":" + a.type;
    return text;
}

std::string columnsOf(const LayerKind& kind, const char* switches) {
    readSwitches(wordsOf(switches));
    const LayerChoice choice = LAYER_CHOICE(*FORMAT_OF("mif"), OPTIONS());
    std::string names;
    for (const GisAttribute& a : ATTRIBUTES_OF(RECORD_COLUMNS(LAYER_COLUMNS(kind, choice.shown), {}, "h", 0, 0), false))
        names += (names.empty() ? "" : " ") + a.name;
    return names;
}

}  // namespace

TEST_CASE("Every layer has its columns in their order") {
    const LayerKind bed{LayerContent::Bed, ItemKind::Node, DrawnAs::Point, false};
    const LayerKind bedCells{LayerContent::Bed, ItemKind::Cell, DrawnAs::Region, false};
    const LayerKind nodes{LayerContent::Vector, ItemKind::Node, DrawnAs::Point, false};
    const LayerKind arrows{LayerContent::Vector, ItemKind::GridCell, DrawnAs::Arrow, false};
    const LayerKind cells{LayerContent::Scalar, ItemKind::Cell, DrawnAs::Region, true};
    const LayerKind grid{LayerContent::Scalar, ItemKind::GridCell, DrawnAs::Point, false};
    const std::tuple<LayerKind, const char*, const char*> rows[] = {
        {bed, "", "SMS_ID PtType Elevation"},
        {bedCells, "", "SMS_ID MatID Elevation"},
        {bed, "-verbose", "SMS_ID PtType Elevation MatID"},
        {cells, "", "SMS_ID MatID Elevation h Depth"},
        {cells, "-verbose", "SMS_ID MatID Elevation h Depth Time"},
        {grid, "", "Grid_Ref h"},
        {grid, "-verbose", "Grid_Ref h MatID Elevation Time"},
        {nodes, "", "SMS_ID PtType Elevation Magnitude Angle X_component Y_component Bearing"},
        {nodes, "-vx", "SMS_ID PtType Elevation X_component"},
        {nodes, "-vy -va", "SMS_ID PtType Elevation Y_component"},
        {nodes, "-vdir", "SMS_ID PtType Elevation Angle"},
        {nodes, "-va -compass", "SMS_ID PtType Elevation Bearing"},
        {arrows, "-va", "Grid_Ref Magnitude Angle X_component Y_component Bearing"},
        {arrows, "-vx", "Grid_Ref X_component"},
    };
    for (const auto& [kind, switches, names] : rows) CHECK(columnsOf(kind, switches) == names);
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
    CHECK(holds(definitionOf(record, false), "MatID:Integer"));
    item[Column::Value] = 1e30;
    NOTE_RECORD(record, item);
    CHECK(definitionOf(record).ends_with("Value:Decimal(36,4)"));
    CHECK(definitionOf(RECORD_COLUMNS({Column::Value}, {7, 0}, "Depth", 0, 0)) == "Depth:Decimal(7,0)");
    CHECK(definitionOf(RECORD_COLUMNS({Column::GridRef}, {}, "", 12345678, 9)) == "Grid_Ref:Char(18)");
}

TEST_CASE("Directions stay in range, and zero has no sign, after rounding") {
    const std::tuple<float, float, int, const char*> rows[] = {
        // angle, bearing
        {1, 0, 4, "0.0000,90.0000"},
        {0, 1, 2, "90.00,0.00"},
        {-1, 0.0F, 4, "180.0000,270.0000"},
        {-1, -0.0F, 4, "180.0000,270.0000"},   // atan2 gives -180
        {-1, -1e-7F, 4, "180.0000,270.0000"},  // -179.99999: rounds to -180.0000
        {-1, -1e-3F, 4, "-179.9427,269.9427"},
        {-1, -1e-3F, 0, "180,270"},
        {-1e-7F, 1, 4, "90.0000,0.0000"},
        {-5e-3F, 1, 0, "90,0"},  // a bearing of 359.99999
        {1, -1e-7F, 4, "0.0000,90.0000"},
        {0, -1, 4, "-90.0000,180.0000"},  // not -0.0000
        {-1, -1, 12, "-135.000000000000,225.000000000000"},
        {0, 0, 4, "0.0000,0.0000"},
        {1e-6F, -1e-6F, 1, "0.0,0.0"},  // at rest
    };
    for (const auto& [vx, vy, decimals, expected] : rows) {
        MapItem item;
        item.vx = vx;
        item.vy = vy;
        SET_FLOW(item, TURNED_AXES(40.0F));  // the axes of the components never turn the directions
        std::string line;
        FORM_RECORD(RECORD_COLUMNS({Column::Angle, Column::Bearing}, {10, decimals}, "", 0, 0), item, line);
        CHECK(line == expected);
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
    for (const Row& row : rowsOf(R"(
# text, what passes of T, H, UV, C, QL and blank, what is unknown
ALL | T H UV C QL |
CT | T C |
uvh | H UV |
UVC | UV C |
H,t | T H |
# half a "UV" is nothing, and nothing stands for all
XH | H | X
U | T H UV C QL | U
V | T H UV C QL | V
 | T H UV C QL |
# not H, A, L, L
HALL | T H UV C QL |
)")) {
        const PointTypes types = READ_POINT_TYPES(row[0]);
        std::string passing;
        for (const std::string kind : {"T", "H", "UV", "C", "QL", "_"})
            if (PASSES(types, {kind[0] == '_' ? ' ' : kind[0], kind.size() > 1 ? kind[1] : ' '})) passing += kind + " ";
        CHECK_MESSAGE(TRIMMED(passing) == row[1], row[0]);
        CHECK(types.unknown == row[2]);
    }
}

TEST_CASE("Coordinates show a thousandth of the shortest side") {
    using Kind = CoordinateKind;
    const std::tuple<double, double, Kind, int> rows[] = {
        {10, 500000, Kind::Unknown, 3},
        {0.5, 500000, Kind::Unknown, 4},
        {0.01, 500000, Kind::Projected, 5},
        {10, 500000, Kind::Geographic, 8},
        // degrees by its extent, unless a projection says otherwise
        {0.0001, 145, Kind::Unknown, 8},
        {10, 145, Kind::NonEarth, 3},
        {0.5, 145, Kind::Unknown, 4},  // a flume, whose cells are no fraction of a degree
        {1e-6, 145, Kind::Geographic, 9},
        {1e-7, 145, Kind::Unknown, 10},
        {1e-12, 0, Kind::Unknown, 12},
    };
    for (const auto& [side, x0, kind, decimals] : rows) {
        CAPTURE(side);
        // three nodes of a cell, whose other sides are longer, and a removed one
        Mesh mesh = meshOf({{x0, 0}, {x0 + side, 0}, {x0, 5 * side}, {x0, side / 100}}, {{1, 2, 3}, {1, 2, 4}});
        mesh.elements[2].removed = true;
        mesh.xmin = x0;
        mesh.xmax = x0 + side;
        mesh.ymin = 0;
        mesh.ymax = 5 * side;
        CHECK(COORDINATE_DECIMALS(mesh, kind) == decimals);
    }
    std::string line;
    ADD_REAL(line, 145.1, 10);
    CHECK(line == "145.1000000000");
}
