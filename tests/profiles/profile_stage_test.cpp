#include "profiles/profile_stage.h"

#include "gis/layer_test.h"
#include "profiles/profile_file.h"
#include "profiles/small_flood.h"
#include "testing.h"

namespace {

struct Fixture {
    LayerTest layers;
    Mesh mesh = smallMesh();
    CalibrationPoints points;
    std::string base = layers.folder.name("x_h");
    ProfileRules rules{{100.0, 0.001}, 3.0, 3, 2};

    ProfileStage start(const std::vector<ProfileLine>& lines, bool withPoints) const {
        return START_PROFILES(mesh, INDEX_ELEMENTS(mesh, PlanKind::Nodes), lines, withPoints ? &points : nullptr,
                              rules);
    }
    std::string file(const std::string& name) const { return layers.folder.read("x_h_" + name + ".csv"); }
};
const ProfileLine ALONG = MAKE_PROFILE_LINE("A", {-2, 22}, {5, 5});

}  // namespace

TEST_CASE("A profile holds bed, results and calibration points at every station, and nothing where it is dry") {
    Fixture f;
    f.rules.stations.markerDistance = 8.0;
    f.points.header.attributes = {{"Name", "Char(9)"}, {"x", "Float"}};
    f.points.x = {4, 15};
    f.points.y = {7, 90};  // the second one is too far off
    f.points.labels = {"mark, one", "far"};
    f.points.objectOf = {0, 1};
    f.points.objects = {{0, -1, "\"mark, one\",1.5"}, {1, -1, "\"far\",2"}};
    ProfileStage stage = f.start({ALONG}, true);
    Results level = scalarResults({2, 3, 4, 2, 3, 5});
    const std::string said = consoleOf([&] {
        BEGIN_PROFILES(stage, {PlanKind::Nodes, false, "Water Level", 2});
        TAKE_PROFILES(stage, level, "Max");
        level.wet[2] = 0;
        TAKE_PROFILES(stage, level, "t001.50");
        FINISH_PROFILES(stage, f.base);
    });
    CHECK(holds(said, "for 8 stations at 2 times..."));
    CHECK(f.file("A") ==
          "Chainage,X,Y,Type,Elevation,Water_Level_Max,Water_Level_t001.50,Label,Offset,CP_Name,CP_x2,CP_X,CP_Y,"
          "CP_Elevation,CP_Water_Level_Max,CP_Water_Level_t001.50\n"
          "0.000,-2.000,5.000,V,,,,,,,,,,,,\n"
          "2.000,0.000,5.000,E,0.00,2.00,2.00,,,,,,,,,\n"
          "6.000,4.000,5.000,C,0.40,2.40,2.40,\"mark, one\",2.000,\"mark, one\",1.5,4.000,7.000,0.40,2.40,2.40\n"
          "8.000,6.000,5.000,M,0.60,2.60,2.60,8.000,,,,,,,,\n"
          "12.000,10.000,5.000,E,1.00,3.00,3.00,,,,,,,,,\n"
          "16.000,14.000,5.000,M,1.40,3.60,,16.000,,,,,,,,\n"
          "22.000,20.000,5.000,E,2.00,4.50,,,,,,,,,,\n"
          "24.000,22.000,5.000,V,,,,,,,,,,,,\n");
}

TEST_CASE("Vectors come as magnitude, angle and the component along the line; a second dataset has its own names") {
    Fixture f;
    Results flow = scalarResults({3, 3, 3, 3, 3, 3});
    flow.vector = true;
    flow.y = {NO_VALUE, 4, 4, 4, 4, 4, 4};
    f.points.x = {16};
    f.points.y = {4};
    f.points.labels = {"c"};
    f.points.objectOf = {0};
    f.points.objects = {{0, -1, ""}};
    ProfileStage stage = f.start({MAKE_PROFILE_LINE("B", {15, 15, 5}, {2, 8, 8})}, true);
    consoleOf([&] {
        for (const char* quantity : {"Velocity", "Vector Wind"}) {
            BEGIN_PROFILES(stage, {PlanKind::Nodes, true, quantity, 1});
            TAKE_PROFILES(stage, flow, "Max");
        }
        FINISH_PROFILES(stage, f.base);
    });
    const std::string written = f.file("B");
    CHECK(
        written.starts_with("Chainage,X,Y,Type,Elevation,Magnitude_Max,Angle_Max,Along_Max,"
                            "Magnitude_Vector_Wind_Max,Angle_Vector_Wind_Max,Along_Vector_Wind_Max,Label,Offset,"
                            "CP_X,CP_Y,CP_Elevation,CP_Magnitude_Max,CP_Angle_Max,CP_Along_Max,"));
    for (const char* row :
         {"\n0.000,15.000,2.000,V,1.50,5.00,53.13,4.00,5.00,53.13,4.00,,,,",
          "\n2.000,15.000,4.000,C,1.50,5.00,53.13,4.00,5.00,53.13,4.00,c,-1.000,16.000,4.000,1.60,"
          "5.00,53.13,4.00,5.00,53.13,4.00\n",
          "\n6.000,15.000,8.000,V,1.50,5.00,53.13,-3.00,", "\n11.000,10.000,8.000,E,1.00,5.00,53.13,-3.00,",
          "\n16.000,5.000,8.000,V,0.50,5.00,53.13,-3.00,"})
        CHECK(holds(written, row));
}

TEST_CASE("Of opposing flows the element with the larger magnitude counts, with its own direction") {
    const Mesh mesh = smallMesh();
    Results flow = scalarResults({2, -5}, true);
    flow.vector = true;
    flow.y = {NO_VALUE, 0, 0};
    PointValues values;
    const SampledPoints points = LOCATE_POINTS(INDEX_ELEMENTS(mesh, PlanKind::Cells), mesh, {10, 30}, {5, 5});
    SAMPLE_RESULTS(points, mesh, flow, values);
    CHECK(values.value == std::vector<float>{5, NO_VALUE});
    CHECK(values.east[0] == -5.0F);
    CHECK(values.element == std::vector<std::int32_t>{2, 0});
}

TEST_CASE("Cell values have a station in every cell; the bed alone comes without results") {
    const Fixture f;
    ProfileStage cells = f.start({ALONG}, false);
    ProfileStage bed = f.start({ALONG, MAKE_PROFILE_LINE("a", {90, 95}, {5, 5})}, false);
    consoleOf([&] {
        BEGIN_PROFILES(cells, {PlanKind::Cells, false, "", 1});
        TAKE_PROFILES(cells, scalarResults({7, 8}, true), "t000.00");
        FINISH_PROFILES(cells, f.base);
        FINISH_PROFILES(bed, f.base);
    });
    CHECK(f.file("A") ==
          "Chainage,X,Y,Type,Elevation,Value_t000.00,Label,Offset\n0.000,-2.000,5.000,V,,,,\n1.000,-1.000,5.000,E,,,,\n"
          "7.000,5.000,5.000,E,0.50,7.00,,\n17.000,15.000,5.000,E,1.50,8.00,,\n23.000,21.000,5.000,E,,,,\n"
          "24.000,22.000,5.000,V,,,,\n");
    CHECK(holds(f.file("A_2"), "\n12.000,10.000,5.000,E,1.00,,\n"));
    CHECK(f.file("a_3").ends_with("Label,Offset\n0.000,90.000,5.000,V,,,\n5.000,95.000,5.000,V,,,\n"));
}

TEST_CASE("Lines outside the mesh are told from those in parts that were removed") {
    Fixture f;
    f.mesh.elements[2].removed = true;
    const std::vector<ProfileLine> away = {MAKE_PROFILE_LINE("e", {12, 18}, {5, 5}),
                                           MAKE_PROFILE_LINE("o", {90, 95}, {5, 5})};
    const auto said = [&](const std::vector<ProfileLine>& lines) {
        ProfileStage stage = f.start(lines, false);
        return consoleOf([&] { BEGIN_PROFILES(stage, {PlanKind::Nodes, false, "", 1}); });
    };
    CHECK(said({ALONG, away[0], away[1]})
              .starts_with("WARNING - Profile e lies in removed parts of the mesh (-rmp), it holds no values.\n"
                           "WARNING - Profile o lies outside the mesh, it holds no values.\n"));
    CHECK(said(away).starts_with("ERROR - No profile lies within what -rmp leaves of the mesh.\n"));
    CHECK(said({away[1]}).starts_with("ERROR - No profile lies within the mesh; check the projection.\n"));
}

TEST_CASE("Names of profiles become names of files") {
    UniqueNames taken;
    const std::string wide(300, 'x'), longest = "run_" + std::string(239, 'x');
    for (const auto& [name, file] : {std::pair{std::string("a/b:c"), std::string("run_a_b_c.csv")},
                                     {"A?B*C", "run_A_B_C_2.csv"},  // one file where letter case is ignored
                                     {wide, longest + ".csv"},
                                     {wide, longest + "_2.csv"},
                                     {std::string(238, 'x') + "\xC3\xA9t", "run_" + std::string(238, 'x') + ".csv"}})
        consoleOf([&, n = name, expected = file] { CHECK(PROFILE_FILE_NAME("run", n, taken) == expected); });
}
