// Whole runs of -dif on files put together by hand.
#include "inputs/dat_bytes.h"
#include "run_control/driver.h"
#include "testing.h"

#include <cctype>
#include <set>
#include <sstream>

namespace {

/// Cells 1 to 3 from west to east, 2 m wide and high; nodes 1 to 4 south of them, 5 to 8 north. shift: of x, m.
std::string threeCells(double shift = 0.0, const std::string& last = "E4Q 3 3 4 8 7 1\n", double bed = 0.0) {
    std::string text = "MESH2D\nE4Q 1 1 2 6 5 1\nE4Q 2 2 3 7 6 1\n" + last;
    for (int id = 1; id <= 8; ++id)
        text += "ND " + std::to_string(id) + " " + std::to_string(1000 + (id - 1) % 4 * 2 + shift) + " " +
                (id > 4 ? "2 " : "0 ") + std::to_string(bed * id) + "\n";
    return text;
}

/// One 9-node quad, 4 m wide and high: nodes 1 to 8 around it from the south-west corner, 9 in its centre.
std::string nineNodes() {
    std::string text = "MESH2D" + std::string(80, ' ') + "0\nE9Q 1 1 2 3 4 5 6 7 8 9 1 0 0 0\n";
    const char* const places[] = {"0 0", "2 0", "4 0", "4 2", "4 4", "2 4", "0 4", "0 2", "2 2"};
    for (int id = 1; id <= 9; ++id) text += "ND " + std::to_string(id) + " " + places[id - 1] + " 0 0 0 0 0\n";
    return text;
}

/// "h 0: 1 2 3 4 / 1 1 0; 0.5: ...": quantity, then times, values of the nodes from west to east (of V "x,y"; of
/// "cells" of the cells; of a 9-node quad all nine) and flags.
void writeDat(const TemporaryFolder& folder, const std::string& side, const std::string& text, bool nine) {
    std::istringstream words(text);
    std::string quantity, word;
    words >> quantity;
    const bool vector = quantity == "V", cells = quantity == "cells";
    std::vector<dat_bytes::Step> steps;
    bool flags = false;
    while (words >> word) {
        if (word.ends_with(':')) steps.push_back({std::stof(word), {}, {}});
        flags = !word.ends_with(':') && (flags || word == "/");
        if (word.ends_with(':') || word == "/" || word == ";") continue;
        if (flags) steps.back().flags.push_back(std::stoi(word));
        else steps.back().values.push_back(std::stof(word));
        if (vector && !flags) steps.back().values.push_back(std::stof(word.substr(word.find(',') + 1)));
    }
    for (dat_bytes::Step& step : steps)
        if (const std::vector<float> south = step.values; !cells && !nine)
            step.values.insert(step.values.end(), south.begin(), south.end());
    folder.write(side + "_" + (cells ? "d" : quantity) + ".dat",
                 datBytes(dat_bytes::header(cells  ? 3
                                            : nine ? 9
                                                   : 8,
                                            nine ? 1 : 3, vector, 1, quantity == "odd" ? "Foam" : ""),
                          steps));
}

/// The southern row of a grid, missing values as "."; other files as they are, ";" for line ends.
std::string contentOf(const TemporaryFolder& folder, const std::string& file) {
    std::string text = folder.read(file);
    if (!file.ends_with(".asc")) return replaced(text, "\n", ";");
    std::istringstream row(text.substr(text.rfind('\n', text.size() - 2)));
    std::ostringstream values;
    for (double value = 0.0; row >> value;) {
        if (value > -99999.0) values << value << ' ';
        else values << ". ";
    }
    return values.str();
}

/// Runs the program on what stands in the folder; the outputs but headers one after the other, or the ERROR.
std::string outputsOf(const TemporaryFolder& folder, const std::string& switches, const std::string& input,
                      std::string& said) {
    std::set<std::string> before, after;
    const auto list = [&](std::set<std::string>& names) {
        for (const auto& entry : std::filesystem::directory_iterator(folder.name("")))
            names.insert(entry.path().filename().string());
    };
    list(before);
    std::vector<std::string> words = {"VORANT_to_GIS", "-b"};
    std::istringstream split(replaced(switches, "AT/", folder.name("")));
    for (std::string word; split >> word;) words.push_back(word);
    words.push_back(folder.name(input));
    std::vector<const char*> arguments;
    for (const std::string& word : words) arguments.push_back(word.c_str());
    const ConsoleCapture console;
    std::string result;
    int status = -1;
    try {
        status = CONVERT(static_cast<int>(arguments.size()), arguments.data());
    } catch (const RunStopped& stopped) {
        status = stopped.status;
    }
    said = console.text();
    list(after);
    for (const std::string& name : after)
        if (!before.contains(name) && !name.ends_with(".mif")) result += contentOf(folder, name) + "| ";
    return result + std::to_string(status);
}

const std::string LONG_NAME(245, 'n');

/// "shifted", "other" or "nine" before the results.
std::string withoutMesh(const std::string& text) {
    const bool named = text.starts_with("shifted") || text.starts_with("other") || text.starts_with("nine");
    return named ? text.substr(text.find(' ') + 1) : text;
}

void writeSide(const TemporaryFolder& folder, const std::string& side, std::string text) {
    const bool shifted = text.starts_with("shifted"), other = text.starts_with("other"),
               nine = text.starts_with("nine");
    text = withoutMesh(text);
    const bool now = side == "now";
    folder.write(side + ".2dm", threeCells(shifted ? 2.0
                                           : now   ? 0.0
                                                   : 0.0009,
                                           other ? "E3T 3 3 4 8 1\n" : "E4Q 3 3 4 8 7 1\n",
                                           text != "bed" ? 0.0
                                           : now         ? 1.0
                                                         : 0.5));
    if (nine) folder.write(side + ".2dm", nineNodes());
    if (text != "bed") writeDat(folder, side, text, nine);
}

/// "now_h.dat" of "h 0: ...".
std::string fileOf(const std::string& side, std::string text) {
    text = withoutMesh(text);
    if (text == "bed") return side + ".2dm";
    const std::string quantity = text.substr(0, text.find(' '));
    return side + "_" + (quantity == "cells" ? "d" : quantity) + ".dat";
}

void checkRow(const Row& row) {
    CAPTURE(row[0] + " less " + row[1] + row[2]);
    const TemporaryFolder folder;
    writeSide(folder, "now", row[0]);
    writeSide(folder, "was", row[1]);
    if (holds(row[2], "LONG")) {
        folder.write(LONG_NAME + ".dat", folder.read("was_h.dat"));
        folder.write(LONG_NAME + ".2dm", folder.read("was.2dm"));
    }
    folder.write("p.mif", "Version 300\nDelimiter \",\"\nColumns 1\n  N Integer\nData\nPoint 1005 1\nPoint 1009 1\n");
    folder.write("p.mid", "5\n9\n");
    folder.write("l.mif", "Version 300\nDelimiter \",\"\nColumns 1\n  N Integer\nData\nLine 1000.5 1 1002.5 1\n");
    folder.write("l.mid", "7\n");
    std::string switches = replaced(row[2], "LONG", LONG_NAME);
    if (!holds(switches, "-dif")) switches += " -dif AT/" + fileOf("was", row[1]);
    std::string said;
    CHECK(outputsOf(folder, switches, fileOf("now", row[0]), said) == replaced(row[3], "~", "|"));
    const std::string part = replaced(replaced(row[4], "$", "\n"), "AT/", folder.name(""));
    CHECK_MESSAGE(holds(said, part), said);
}

}  // namespace

TEST_CASE("-dif: what is now less what was, at each kind of place") {
    // now, was, switches, what the outputs hold (in the order of their names) and the status, what is said
    forEachRow(R"(
# wet in both, only now, no longer: a level needs both, and the flags say who is dry
h 0: 1 2 3 4 / 1 1 0 ; | h 0: 1 1 1 1 / 1 0 1 ; | -asc -grid2 | 0.5 . . . ~ 1 2 3 . ~ 0 | count 1, min 0.500000, max 0.500000,
# a dry depth is 0
d 0: 1 2 3 4 / 1 1 0 ; | d 0: 1 1 1 1 / 1 0 1 ; | -asc -grid2 | 0.5 2.5 -1 . ~ 1 2 3 . ~ 0 | \
    mean 0.666667, mean absolute difference 1.333333, 5 percentile -0.850000, 95 percentile 2.300000$   was dry, now \
    wet: 4.0000 m2$   was wet, now dry: 4.0000 m2
d 0: 1 2 3 4 / 0 1 0 ; | d 0: 1 1 1 1 / 0 1 0 ; | -asc -grid2 | . 1.5 . . ~ . 1 . . ~ 0
# wet without a value is not dry
d 0: 1 2 3 4 / 1 1 1 ; | d 0: 1 -99999 1 1 / 1 1 1 ; | -asc -grid2 | . . 2.5 . ~ . . 1 . ~ 0
d 0: 1 2 3 4 / 1 1 1 ; | d 0: 1 -99999 1 1 / 0 1 1 ; | -asc -grid2 | 1.5 . 2.5 . ~ 2 . 1 . ~ 0
# speeds, components, and directions by the short way round: 170 less -170 degrees
V 0: 3,4 3,4 0,0 0,0 / 1 0 0 ; | V 0: 0,4 0,4 0,0 0,0 / 1 1 1 ; | -asc -grid2 | 1 . . . ~ 1 3 3 . ~ 0
V 0: 3,4 3,4 0,0 0,0 / 1 0 0 ; | V 0: 1,4 1,4 0,0 0,0 / 1 1 1 ; | -asc -grid2 -vx | 2 . . . ~ 1 3 3 . ~ 0
V 0: -0.9848078,0.1736482 -0.9848078,0.1736482 0,0 0,0 / 1 0 0 ; | V 0: -0.9848078,-0.1736482 \
    -0.9848078,-0.1736482 0,0 0,0 / 1 1 1 ; | -asc -grid2 -va | -20 . . . ~ 1 3 3 . ~ 0
# nodes: magnitude and direction are those of the difference
V 0: 3,4 3,4 0,0 0,0 / 1 0 0 ; | V 0: 0,4 0,4 9,9 9,9 / 1 1 1 ; | -txt -prec5.1 | \
    SMS_ID,X,Y,Elevation,Magnitude,Angle,X_component,Y_component;1,1000.000,0.000,0.0,3.0,0.0,3.0,0.0;2,1002.000,0.000,0.0,3.0,0.0,3.0,0.0;\
    5,1000.000,2.000,0.0,3.0,0.0,3.0,0.0;6,1002.000,2.000,0.0,3.0,0.0,3.0,0.0;~ 0 | was wet, now dry: 8.0000 m2
# no depth column and no cutoff for a difference of 2 mm; cells: the mesh's own dry ones are 0
cells 0: 1 0.302 4 / 1 1 0 ; | cells 0: 1 0.3 5 / 0 1 1 ; | -mif -region -cc -prec5.3 | \
    1,1,0.000,1.000;2,1,0.000,0.002;3,1,0.000,-5.000;~ 1,1,0.000,2;2,1,0.000,1;3,1,0.000,3;~ 0 | 5 percentile -4.499800,
# gridded: the bed comes with -verbose only
h 0: 1 2 3 4 / 1 1 0 ; | h 0: 1 1 1 1 / 1 1 1 ; | -mif -grid2 -prec5.1 | "R00001C00001",0.5;"R00001C00002",1.5;~ 0 | \
    was wet, now dry: 4.0000 m2
# times: each with its partner, the others named once
h 0: 1 1 1 1 ; 1: 2 2 2 2 ; 2: 3 3 3 3 ; | h 0.0: 0 0 0 0 ; 1.04: 1.5 1.5 1.5 1.5 ; 3: 0 0 0 0 ; | \
    -asc -grid2 -tAll -dttol0.05 | 1 1 1 . ~ 1 1 1 . ~ 0.5 0.5 0.5 . ~ 1 1 1 . ~ 3 | are left out: 2.$
)",
               checkRow);
}

TEST_CASE("-dif: two meshes, beds, points, names, and what has no difference") {
    // as above; "shifted": the mesh of what was stands 2 m further east, "other": it is another, "nine": a 9-node quad
    forEachRow(R"(
# outside either mesh is nothing, beyond the edge of the other nothing is dry
d 0: 1 2 3 4 / 1 1 0 ; | shifted d 0: 1 1 1 1 / 1 1 1 ; | -asc -grid2 | . 1.5 -1 . ~ . 1 3 . ~ 0 | node 1 stands elsewhere
d 0: 1 2 3 4 ; | shifted d 0: 1 1 1 1 ; | -asc -grid2 -mesh2 AT/now.2dm | 0.5 1.5 2.5 . ~ 1 1 1 . ~ 0
d 0: 1 2 3 4 ; | shifted d 0: 1 1 1 1 ; | -asc -grid2 -2dm AT/now.2dm | 0.5 1.5 2.5 . ~ 1 1 1 . ~ 0
d 0: 1 2 3 4 ; | other d 0: 1 1 1 1 ; | -txt | 1 | was.2dm are two meshes (cell 3 is another); only rasters
d 0: 1 2 3 4 ; | cells 0: 1 1 1 ; | -txt | 1 | ERROR - One file of -dif has values at nodes, the other at cells
d 0: 1 2 3 4 ; | cells 0: 1 1 1 ; | -asc -grid2 | 0.5 1.5 2.5 . ~ 1 1 1 . ~ 0
bed | bed | -asc -grid2 | 1.75 2.25 2.75 . ~ 1 1 1 . ~ 0
bed | bed | -mif -region -prec5.2 | 1,1,3.50,1.75;2,1,4.50,2.25;3,1,5.50,2.75;~ 1,1,3.50,1;2,1,4.50,1;3,1,5.50,1;~ 0
# 9-node quads: four quads around the centre, and by its corners the side that has no value there
nine h 0: 1 2 3 4 5 6 7 8 9 ; | nine h 0: 1 1 1 1 1 1 1 1 5 ; | -asc -grid2 | 3 2.5 . ~ 1 1 . ~ 0
nine h 0: 1 2 3 4 5 6 7 8 9 ; | nine h 0: 1 9 1 9 1 9 1 9 -99999 ; | -asc -grid2 | 4 3.5 . ~ 1 1 . ~ 0
# points: of what is now the element; dry is 0, outside is empty
d 0: 1 2 3 4 / 1 1 0 ; | d 0: 1 1 1 1 / 1 0 1 ; | -cp AT/p.mif -prec5.1 | \
    Label,X,Y,Elevation,SMS_ID,Time,Depth;5,1005.000,1.000,0.0,3,0.00,-1.0;9,1009.000,1.000,,,0.00,;~ 5,-1.0;9,-99999.0;~ 0 | count 1, min -1.0
V 0: 1,0 1,0 1,0 1,0 ; | V 0: 0,2 0,2 0,2 0,2 ; | -lp AT/l.mif -lpmd9 -prec5.1 | \
    Chainage,X,Y,Type,Elevation,Magnitude_t000.00,Angle_t000.00,Along_t000.00,Label,Offset;\
    0.000,1000.500,1.000,V,0.0,-1.0,-90.0,1.0,,;1.500,1002.000,1.000,E,0.0,-1.0,-90.0,1.0,,;2.000,1002.500,1.000,V,0.0,-1.0,-90.0,1.0,,;~ 0
# the file itself; an unknown quantity; others
h 0: 1 2 3 4 ; | h 0: 1 2 3 4 ; | -asc -grid2 -dif AT/now_h.dat -out AT/x | 0 0 0 . ~ 1 1 1 . ~ 0 | x_class.asc
h 0: 1 2 3 4 ; | odd 0: 1 1 1 1 ; | -asc -grid2 | 0.5 1.5 2.5 . ~ 1 1 1 . ~ 0 | WARNING - Whether both files of -dif hold the same
h 0: 1 2 3 4 ; | d 0: 1 1 1 1 ; | -asc -grid2 | 1 | ERROR - Two quantities have no difference (-dif): AT/now_h.dat holds Water Level
h 0: 1 2 3 4 ; | V 0: 1,1 1,1 1,1 1,1 ; | -asc -grid2 | 1 | AT/was_V.dat holds vectors, AT/now_h.dat scalars.
h 0: 1 2 3 4 ; | h 1.5: 1 1 1 1 ; | -asc -grid2 | 1 | by more than 0.001 hours: 0. in AT/now_h.dat, 1.5 in AT/was_h.dat;
h 0: 1 2 3 4 ; 2: 1 2 3 4 ; | h 0: 1 1 1 1 ; 1.5: 1 1 1 1 ; | -asc -grid2 -t2 | 1 | : 2. in AT/now_h.dat, 1.5 in AT/was_h.dat;
h 0: 1 2 3 4 ; | h 1.5: 1 1 1 1 ; | -asc -grid2 -dttol1.5 | 0.5 1.5 2.5 . ~ 1 1 1 . ~ 0
h 0: 1 2 3 4 ; 1: 1 2 3 4 ; | h 3: 1 1 1 1 ; 2: 1 1 1 1 ; | -asc -grid2 -tAll | 1 | AT/was_h.dat (from 3. to 2.); -dttol
h 0: 1 2 3 4 ; | bed | -asc -grid2 | 1 | ERROR - A mesh and results have no difference
h 0: 1 2 3 4 ; | h 0: 1 1 1 1 ; | -asc -grid2 -dif AT/none.dat | 1 | ERROR - File AT/none.dat (-dif) does not exist.
h 0: 1 2 3 4 ; | h 0: 1 1 1 1 ; | -asc -grid2 -dif AT/LONG.dat | 1 | characters of file names; -out gives it another
h 0: 1 2 3 4 ; | h 0: 1 1 1 1 ; | -asc -grid2 -out AT/x -dif AT/LONG.dat | 0.5 1.5 2.5 . ~ 1 1 1 . ~ 0
)",
               checkRow);
}
