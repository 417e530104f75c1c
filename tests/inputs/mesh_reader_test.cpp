#include "inputs/mesh_reader.h"

#include "inputs/mesh.h"
#include "services/files.h"
#include "services/workers.h"
#include "testing.h"

namespace {

const std::string CURRENT =
    "MESH2D       16952.500       -8586.281     0.0000    20.00    20.00   10.0   10.0     2.5000\n";
const std::string NINE_NODES =
    "ND 1 0 0 1 0 0. 0. 0.\nND 2 1 0 1 0 0. 0. 0.\nND 3 2 0 1 0 0. 0. 0.\nND 4 2 1 1 0 0. 0. 0.\nND 5 2 2 1 0 0. 0. "
    "0.\n"
    "ND 6 1 2 1 0 0. 0. 0.\nND 7 0 2 1 0 0. 0. 0.\nND 8 0 1 1 0 0. 0. 0.\nND 9 1 1 1 0 0. 0. 0.\n";

Mesh mesh;  // the last one read

/// Both passes over a mesh in a file; what they printed.
std::string readFile(const std::string& name, const std::vector<std::string>& removedParts = {}) {
    return consoleOf([&] {
        INITIALISE_FILES();
        const int file = OPEN_FILE(name, "I ", "2dm");
        SCAN_2DM(file, mesh);
        SIZE_MESH_TABLES(mesh);
        READ_2DM(file, removedParts, mesh);
        CLOSE_FILE(file);
    });
}

std::string readMesh(const std::string& text, const std::vector<std::string>& removedParts = {}) {
    const TemporaryFolder folder;
    return readFile(folder.write("m.2dm", text), removedParts);
}

std::string kindOf(std::size_t node) { return {mesh.nodes[node].kind.begin(), mesh.nodes[node].kind.end()}; }

}  // namespace

TEST_CASE("The length of the first line decides the flavour, and what it lacks stays zero") {
    const std::tuple<std::size_t, bool, bool, double, float> rows[] = {
        {6, true, false, 0.0, 0.0F},   {9, true, false, 0.0, 0.0F},   // trailing blanks do not count
        {12, false, true, 0.0, 0.0F},  {82, false, true, 3.0, 0.0F},  // the eighth value is not read here
        {83, false, false, 3.0, 8.0F},
    };
    const std::string full = "MESH2D    1 2 3 4 5 6 7 8";
    for (const auto& [length, ql, pre2005, third, offset] : rows) {
        CAPTURE(length);
        std::string first = full.substr(0, length);
        if (length > full.size()) first += std::string(length - full.size() - 2, ' ') + " 9";
        const std::string node = length == 83 ? "ND 1 5 6 7 0 0. 0. 0." : "ND 1 5 6 7";
        CHECK(holds(readMesh(first + "   \r\n" + node + "\r\n"), "Finished Reading"));
        CHECK((mesh.qlMesh == ql && mesh.pre2005 == pre2005));
        CHECK((mesh.geoReference.values[2] == third && mesh.geoReference.verticalOffset == offset));
        CHECK(kindOf(1) == (ql ? "QL" : "  "));
    }
}

TEST_CASE("Every value of a card lands in its slot") {
    readMesh(CURRENT + NINE_NODES +
             "ND 10 -1.5d1\t+2,.5 1 4. 5. 6.\nE3T 2 1 2 10 7 -1 5 3\nE4Q,3,10,2,3,8,7,0,0,0\nE9Q 1 1 2 3 4 5 6 7 8 9 1 "
             "0 0 0\n");
    CHECK(mesh.elementCount == 3);
    CHECK(mesh.highResolution);
    CHECK(mesh.elements[2].nodes == std::array<std::int32_t, 9>{1, 10, 2, 0, 0, 0, 0, 0, 0});  // winding reversed
    CHECK(mesh.elements[3].nodes == std::array<std::int32_t, 9>{10, 8, 3, 2, 0, 0, 0, 0, 0});  // winding reversed
    // corners first, winding kept
    CHECK(mesh.elements[1].nodes == std::array<std::int32_t, 9>{1, 3, 5, 7, 2, 4, 6, 8, 9});
    CHECK(mesh.elements[2].material == 7);
    CHECK(mesh.elements[2].extra == std::array<std::int32_t, 2>{-1, 5});
    CHECK(mesh.elements[2].extraByte == 3);
    CHECK(mesh.nodes[10].x == -15.0);
    CHECK(mesh.nodes[10].z == -2.0F);  // datum flag 1: less the vertical offset
    CHECK(mesh.nodes[10].extra == std::array<float, 3>{4, 5, 6});
    CHECK(mesh.zmin == -2.0F);  // extents after the offset, over all nodes
    CHECK(mesh.xmin == -15.0);
    CHECK(mesh.ymax == 2.0);
    // the last element in id order decides
    const std::string kinds[] = {"", "T ", "H ", "H ", "UV", "H ", "UV", "H ", "H ", "C ", "H "};
    for (std::size_t n = 1; n <= 10; ++n) CHECK(kindOf(n) == kinds[n]);
}

TEST_CASE("A vertical offset that nodes need and the line lacks is told") {
    const std::string seven = "MESH2D    1 2 3 4 5 6" + std::string(61, ' ') + "7\n";
    CHECK(holds(readMesh(seven + "ND 1 0 0 5 1 0. 0. 0.\n"),
                "WARNING - The MESH2D line gives no vertical offset, 0 is taken."));
    CHECK_FALSE(holds(readMesh(seven + "ND 1 0 0 5 0 0. 0. 0.\n"), "vertical offset"));
    CHECK_FALSE(holds(readMesh(CURRENT + "ND 1 0 0 5 1 0. 0. 0.\n"), "vertical offset"));
}

// The mesh ("/" ends a line, NINE stands for nine nodes) and what is said; nothing: the run goes on.
TEST_CASE("A line that cannot be right stops the run, naming itself") {
    const auto check = [](const std::string& mesh, const std::string& expected) {
        CAPTURE(mesh);
        const std::string said = readMesh(replaced(replaced(mesh, "/", "\n"), "NINE", CURRENT + NINE_NODES));
        CHECK(holds(said, replaced(expected, "/", "\n")));
        CHECK(holds(said, "<stopped>") != expected.empty());
    };
    for (const Row& row : rowsOf(R"(
 | is empty
mesh2d/ | Did not find "MESH2D" in first 6 characters of first line/Found: mesh2d/ERROR
MESH2D    1 2 three/ND 1 0 0 0/ |    Line 1 of
MESH2D    1 nan/ND 1 0 0 0/ | not finite
MESH2D/ND 1 0 0 zero/ | ND 1 0 0 zero/   Line 2 of
# blank lines count
MESH2D//ND 1 0 0/ |    Line 3 of
MESH2D/ND 2 0 0 0/ | node number out of range
MESH2D/ND 0 0 0 0/ | node number out of range
MESH2D/ND 1 0 0 0/ND 1 0 0 0/ | this node was given before
MESH2D/ND 1 inf 0 0/ | not finite
# beyond 32 bits
MESH2D/ND 1 0 0 1e39/ | cannot be read
# lower case is no card, nor is one behind a blank
MESH2D/nd 1 0 0 0/ND 2 0 0 0/ | node number out of range
MESH2D/ ND 1 0 0 0/ | holds no nodes
NINEE3T 2 1 2 3 1 0 0 0/ | element number out of range
NINEE3T 1 1 2 3 1 0 0 0/E3T 1 1 2 3 1 0 0 0/ | this element was given before
NINEE3T 1 1 2 10 1 0 0 0/ | node number out of range
# a material is a whole number
NINEE3T 1 1 2 3 1. 0 0 0/ | cannot be read
NINEE9Q 1 1 2 3 4 5 6 7 8 0 1 0 0 0/ | node number out of range
NINEND 10 0 0 1/ | a value is missing
NINEE4Q 1 1 2 3 4 1 0 0/ | Detected pre 2007-05-AB mesh.
NINE | holds no elements that are read (E3T, E4Q or E9Q cards).
MESH2D/E9Q 1 1/E8Q 1 1/ND 1 0 0 0/E8Q 2 1/ | WARNING - Elements of the mesh that are not read: 2 E8Q, 1 E9Q.
MESH2D/MESHPART/ND 1 0 0 0/ | a value is missing
MESH2D/MESHPART "open/ND 1 0 0 0/ | quotes
)"))
        check(row[0], row[1]);
    check(CURRENT + "ND 1 0 0 1/", "Detected pre 2007-05-AB mesh.");  // only the first card of a kind tells
    // the cut at 200 goes between values and never through one
    check("MESH2D/ND 1 0 0 1" + std::string(189, ' ') + "23/E3T 1 1 1 1 1/", "");
    check("MESH2D/ND 1 0 0 " + std::string(189, ' ') + "123/", "a value is missing");
    check("MESH2D    1 2 3 4 5 6 7" + std::string(175, ' ') + "1234/", "a value runs past column 200");
}

TEST_CASE("-rmp removes the elements up to the next part, and the nodes that only they use") {
    const std::string text =
        CURRENT + NINE_NODES +
        "E3T 1 1 2 8 1 0 0 0\nMESHPART \"West bank\"\nE3T 2 2 3 4 1 0 0 0\nMESHPART East\nE3T 3 4 5 9 1 0 0 0\n"
        "MESHPART \"West bank\"\nE3T 4 7 6 8 1 0 0 0\nMESHPART\tweST\n";
    const std::string said = readMesh(text, {"West bank", "west"});
    CHECK(holds(
        said, "WARNING - Meshpart \"west\" was not found in .2dm file and cannot be removed."));  // letter case counts
    CHECK_FALSE(holds(said, "\"West bank\" was not"));
    const std::array<bool, 5> removed = {false, false, true, false, true};
    for (std::size_t e = 1; e <= 4; ++e) CHECK(mesh.elements[e].removed == removed[e]);
    CHECK(mesh.meshPartCount == 4);
    CHECK(mesh.meshParts[2].name == "East");
    CHECK(mesh.nodeExcluded == std::vector<std::uint8_t>{0, 0, 0, 1, 0, 0, 1, 1, 0, 0});  // 2, 4 and 8 are shared
    CHECK_FALSE(holds(readMesh(text), "WARNING"));
    CHECK_FALSE(mesh.elements[2].removed);
    CHECK(holds(readMesh(CURRENT + NINE_NODES + "MESHPART A\nE3T 1 1 2 8 1 0 0 0\n", {"A"}),
                "ERROR - Nothing is left of the mesh after -rmp."));
}

TEST_CASE("A 9-node quad is refused but counted in a QL mesh") {
    const std::string said =
        readMesh("MESH2D\nE9Q 1 1 2 3\nE4Q 2 1 2 3 4 1 0\nND 1 0 0 0\nND 2 1 0 0\nND 3 1 1 0\nND 4 0 1 0\n");
    CHECK(holds(said, "WARNING - Both 4 and 9 node quadrilateral elements detected.  This may cause issues\n"));
    CHECK(holds(said, "ERROR - Unexpected 9 point quad in QL or pre 2005 mesh."));
    CHECK(holds(said, "Element: 2\nFinished Reading .2dm file\n"));
    CHECK_FALSE(holds(said, "<stopped>"));
    CHECK(mesh.elements[1].shape == 0);
    CHECK(mesh.elements[2].shape == 4);
}

TEST_CASE("A mesh that is cut short between its passes is an ERROR, read by one thread or by three") {
    std::string text = CURRENT + "E3T 1 1 2 3 7 0 0 0\n";  // beyond what one thread of several reads at once
    for (int id = 1; id <= 20000; ++id) text += "ND " + std::to_string(id) + " 1000.25 2000.5 1.5 0 0. 0. 0.\n";
    for (const int jobs : {1, 3}) {
        const TemporaryFolder folder;
        const std::string name = folder.write("m.2dm", text);
        SET_JOBS(jobs);
        const std::string said = consoleOf([&] {
            INITIALISE_FILES();
            const int file = OPEN_FILE(name, "I ", "2dm");
            SCAN_2DM(file, mesh);
            SIZE_MESH_TABLES(mesh);
            std::filesystem::resize_file(name, text.size() / 2);
            READ_2DM(file, {}, mesh);
        });
        SET_JOBS(1);
        CHECK(holds(said, "ERROR"));
        CHECK(said.ends_with("<stopped>"));
    }
}
