#include "profiles/point_stage.h"

#include "gis/layer_test.h"
#include "profiles/small_flood.h"
#include "testing.h"

TEST_CASE("Calibration points: a copy of the layer, a time series, and how it compares") {
    const LayerTest test;
    const std::string name = test.folder.write(
        "marks.mif",
        "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\nCoordSys Earth Projection 1, 104\nColumns 3\n"
        "  Id Integer\n  Obs Decimal(8,2)\n  Place Char(20)\nData\n"
        "Point 5 5\nLine 0 0 9 9\nMultiPoint 2\n15 5\n1 1\nPoint 15 6\nPoint 99 5\nRect 0 0 1 1\nPoint 5 9\n");
    test.folder.write(
        "marks.mid",
        "1,2.4,\"east, low\"\n2,,\"line\"\n3,3,\"dry\"\n4,0,\"none\"\n5,4,\"out\"\n6,,\"rect\"\n7,2.7,\"n\"\n");
    const Mesh mesh = smallMesh();
    Results level = scalarResults({2, 3, 4, 2, 3, 5});
    level.wet[2] = 0;
    const std::string base = test.folder.name("x_h");
    CalibrationPoints points;
    const std::string said = consoleOf([&] {
        points = READ_CALIBRATION_POINTS(name);
        PointStage stage = START_POINTS(mesh, INDEX_ELEMENTS(mesh, PlanKind::Nodes), points, {3, 8, 2, true, ""});
        BEGIN_POINTS(stage, {PlanKind::Nodes, false, "Water Level", 2});
        TAKE_POINTS(stage, level, {"Max", "Max"}, base + "_Max");
        level.wet[2] = 1;
        TAKE_POINTS(stage, level, {"t001.50", "1.50"}, base + "_t001.50");
        END_POINTS(stage, base);
    });
    CHECK(test.folder.read("x_h_Max_cp.mid") ==
          "1,2.4,\"east, low\",2.50,1,0.50,0.10\n2,,\"line\",-99999.00,0,-99999.00,-99999.00\n"
          "3,3,\"dry\",-99999.00,2,1.50,-99999.00\n4,0,\"none\",-99999.00,2,1.50,-99999.00\n"
          "5,4,\"out\",-99999.00,0,-99999.00,-99999.00\n6,,\"rect\",-99999.00,0,-99999.00,-99999.00\n"
          "7,2.7,\"n\",2.50,1,0.50,-0.20\n");
    const std::string layer = test.folder.read("x_h_Max_cp.mif");
    CHECK(holds(layer,
                "CoordSys Earth Projection 1, 104\nColumns 7\n  Id Integer\n  Obs Decimal(8,2)\n  Place Char(20)\n"
                "  Water_Level Decimal(9,2)\n  SMS_ID Integer\n  Elevation Decimal(9,2)\n"
                "  Difference Decimal(9,2)\nData\nPoint "));
    CHECK(layer.find("Line ") < layer.find("15.000000        5.000000"));
    CHECK(holds(layer, "\nnone\n"));
    CHECK(test.folder.read("x_h_cp.csv") ==
          "Label,X,Y,Elevation,SMS_ID,Time,Water_Level,Difference\n"
          "\"east, low\",5.000,5.000,0.50,1,Max,2.50,0.10\n\"east, low\",5.000,5.000,0.50,1,1.50,2.50,0.10\n"
          "dry,15.000,5.000,1.50,2,Max,,\ndry,15.000,5.000,1.50,2,1.50,3.75,0.75\n"
          "none,15.000,6.000,1.50,2,Max,,\nnone,15.000,6.000,1.50,2,1.50,3.80,\n"
          "out,99.000,5.000,,,Max,,\nout,99.000,5.000,,,1.50,,\n"
          "n,5.000,9.000,0.50,1,Max,2.50,-0.20\nn,5.000,9.000,0.50,1,1.50,2.50,-0.20\n");
    for (
        const char* text :
        {"WARNING - Object 3 in CP layer is a multipoint", "Check - 1 points with 0 in field Obs",
         "2 of 5 points have a value.\nCalibration: 2 of 5 points have a recorded and a modelled value, 1 stayed dry.\n"
         "   mean difference -0.05, mean absolute difference 0.15, RMSE 0.16\n"
         "   largest above: east, low 0.10; largest below: n -0.20\n"
         "   within 0.1: 1, 0.2: 2, 0.3: 2, 0.5: 2\n   dry: dry\n   outside the mesh: out\n",
         "4 of 5 points have a value.\nCalibration: 3 of 5 points have a recorded and a modelled value, 0 stayed dry.\n"
         "   mean difference 0.22, mean absolute difference 0.35, RMSE 0.45\n"
         "   largest above: dry 0.75; largest below: n -0.20\n   within 0.1: 1, 0.2: 2, 0.3: 2, 0.5: 2\n   outside the "
         "mesh: out\nWriting"})
        CHECK(holds(said, text));
}

TEST_CASE("A shapefile of gauges stays one, with vectors, without recorded values, or far from the mesh") {
    const LayerTest test;
    test.writeLayer("gauges.shp", headerOf("Magnitude=Char(5)", GisShape::Point),
                    {objectOf(GisKind::Point, {{5, 5}}), objectOf(GisKind::Point, {{50, 5}})}, {"\"a\"", "\"b\""});
    const Mesh mesh = smallMesh();
    Results flow = scalarResults({-3, -3, -3, -3, -3, -3});
    flow.vector = true;
    flow.y.assign(7, -4.0F);
    CalibrationPoints points;
    const PointIndex index = INDEX_ELEMENTS(mesh, PlanKind::Nodes);
    const std::string base = test.folder.name("x");
    consoleOf([&] {
        points = READ_CALIBRATION_POINTS(test.folder.name("gauges.shp"));
        PointStage stage = START_POINTS(mesh, index, points, {3, 8, 2, false, ""});
        BEGIN_POINTS(stage, {PlanKind::Nodes, true, "Vector Velocity", 1});
        TAKE_POINTS(stage, flow, {"Max", "Max"}, base);
        END_POINTS(stage, base);
        WRITE_BED_POINTS(stage, base + "_bed");
    });
    const ReadLayer read = test.readLayer("x_cp.shp");
    CHECK(read.records == std::vector<std::string>{"\"a\",5.00,-126.87", "\"b\",-99999.00,-99999.00"});
    CHECK(read.header.attributes[1].name == "Magnitude2");
    CHECK(test.folder.read("x_cp.csv") ==
          "Label,X,Y,Elevation,SMS_ID,Time,Magnitude,Angle\n"
          "a,5.000,5.000,0.50,1,Max,5.00,-126.87\nb,50.000,5.000,,,Max,,\n");
    CHECK(test.folder.read("x_bed_cp.csv") == "Label,X,Y,Elevation,SMS_ID\na,5.000,5.000,0.50,1\nb,50.000,5.000,,\n");
    points.x = {50, 60};
    CHECK(consoleOf([&] { START_POINTS(mesh, index, points, {}); }) ==
          "WARNING - No calibration point lies within the mesh; check the projection.\n");
    CHECK(consoleOf([&] { START_POINTS(mesh, index, points, {3, 8, 2, false, "obs"}); }).ends_with("<stopped>"));
}
