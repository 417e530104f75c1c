#include "run_control/arguments.h"

#include "read_switches.h"
#include "run_control/switches.h"
#include "run_control/usage.h"
#include "run_control/usage_entries.h"
#include "services/options.h"
#include "services/version.h"
#include "testing.h"

#include <sstream>

namespace {

using Outputs = std::vector<std::string_view>;
const RunOptions& after(const std::vector<std::string>& arguments) {
    CAPTURE(arguments.size());
    CHECK(readSwitches(arguments) == "");
    return OPTIONS();
}
std::string stoppedBy(const std::string& argument) {
    return "ERROR reading data\n   from argument " + argument + "\n\nPress Enter to Close\n<stopped>";
}
}  // namespace

TEST_CASE("The banner counts the arguments; without any the usage text is due") {
    const std::vector<std::string> typed = {"-asc", "x.2dm"};
    const auto words = argumentsOf(typed);
    CHECK(consoleOf([&] { READ_ARGUMENTS(1, words.data()); }) ==
          "Build 2018-08-AA\nFound 0 arguments\nInitialising input structure...\nDone.\n");
    CHECK(OPTIONS().inputError);
    CHECK(holds(consoleOf([&] { READ_ARGUMENTS(3, words.data()); }), "Found 2 arguments\n"));
    CHECK_FALSE(OPTIONS().inputError);
}

TEST_CASE("The leading characters choose a switch, in the order of the table") {
    std::istringstream rows(  // what is typed, the keyword of its row
        "sec sec  s3 s  sgs sgs  sf-2 sf  slant5 slant  shp shp  cd.05 cd  cpsd50 cpsd  cp cp  cc cc  compass "
        "compass  lpmd5 lpmd  lp lp  like like  ttf1 ttf  tmax tmax  TALL tAll  typeAll type  txt txt  t5 t "
        "vector vector  verbose verbose  v2 v  vx vx  vdir vdir  vmax3 vmax  max max  mif mif  fso fso "
        "folderMaximums folder  FLT flt  asciigrid asc  batch b  path/a path  DAT dat  xmdf xmdf  "
        "ensight ensight  xnfo xnfo  nth2 nth  no1d no1d  from1 from  fgb fgb  until2 until  INTO into ");
    for (std::string text, keyword; rows >> text >> keyword;) {
        CAPTURE(text);
        const std::optional<Switch> row = FIND_SWITCH(text);
        REQUIRE(row);
        CHECK(row->keyword == keyword);
    }
    for (const char* unknown : {"", "zzz", "as", "lik", "h", "data", "xmdf2", "ensights"})
        CHECK_FALSE(FIND_SWITCH(unknown));
}

TEST_CASE("A switch begins with a hyphen, a slash or an en dash of either encoding") {
    // both encodings of the en dash in octal, which ends behind three digits
    for (const char* argument :
         {"-asc", "-ASC", "/asc", "\226asc", "\342\200\223asc", "-ascx", "\302\226asc", "\303\273asc"})
        CHECK(after({argument}).outputs == Outputs{"asc"});
    CHECK(after({"\342\200\223grid2.5"}).gridSpacing == 2.5);  // the dash counts as one character
    CHECK(after({"\226t20"}).timeText == "t20");
    CHECK(after({"-z", "-12", "x.2dm"}).inputFile == "x.2dm");
    CHECK(after({"\303\273ber.2dm"}).inputFile == "\303\273ber.2dm");  // not -b behind a dash that was misread
    CHECK(after({"\303\273zzz"}).inputFile == "\303\273zzz");
    CHECK_FALSE(OPTIONS().inputError);
}

TEST_CASE("A path from the root is the input file, not a switch") {
    const TemporaryFolder folder;
    const std::string existing = folder.write("type", "");  // no extension: only its existence tells
    CHECK(after({existing}).inputFile == existing);
    CHECK(after({"/no/such/X_h.DAT"}).inputFile == "/no/such/X_h.DAT");
    CHECK(after({"/out", "/asc", "-b"}).outputName == "/asc");  // taken by -out, never looked at
    CHECK(after({"/dif", "/a.dat"}).secondInput == "/a.dat");
    CHECK(readSwitches({"-dif2", "x_h.dat"}) == "Check - -dif2 is not known and ignored; did you mean -dif?\n");
    CHECK_FALSE(OPTIONS().difference);  // whole words only
    for (const char* argument : {"/tAll.dat", "/pathmodel/Temporal/Depth", "/tmp"}) {
        CAPTURE(argument);
        readSwitches({argument});
        CHECK(OPTIONS().inputFile.empty());
    }
}

TEST_CASE("The argument that is no option is the input file") {
    CHECK(after({"-asc", "MODEL.2DM"}).inputIsMesh);
    CHECK(readSwitches({"a.2dm", "", "b_h.dat"}) ==
          "WARNING - Only one input file is converted: b_h.dat replaces a.2dm\n");
    CHECK(OPTIONS().inputFile == "b_h.dat");
    CHECK_FALSE(OPTIONS().inputIsMesh);
    const std::string tooLong(1001, 'x');
    CHECK(readSwitches({tooLong}).starts_with("WARNING - Argument cut to 1000 characters: xxx"));
    CHECK(OPTIONS().inputFile.size() == 1000);
}

TEST_CASE("Values that follow are taken as they stand") {
    const RunOptions& o = after(
        {"-2dm", "-b", "-cp", "a b.mif", "-lp", "/lp", "-out", " -asc ", "-rmp", "Lower Reach", "-like", "dem.asc"});
    CHECK(o.meshFile == "-b");
    CHECK_FALSE(o.batch);
    CHECK(o.outputs == Outputs{"cp", "lp"});
    CHECK((o.cpFile == "a b.mif" && o.lpFile == "/lp"));
    CHECK((o.outputNameGiven && o.outputName == "-asc"));
    CHECK((!o.keepAllMeshParts && o.removedParts == std::vector<std::string>{"Lower Reach"}));
    CHECK(o.likeGrid == "dem.asc");
    CHECK(readSwitches({"-asc", "-cp"}) == "WARNING - Nothing specified after -cp\n");
    CHECK((OPTIONS().outputs == Outputs{"asc", "cp"} && OPTIONS().cpFile.empty()));
    CHECK(after({"-grid", "x.2dm", "-out", "res\\a b"}).outputName == "res/a b");
    readSwitches({"-out"});
    CHECK_FALSE(OPTIONS().outputNameGiven);  // a blank name would make files named by their extension only
}

TEST_CASE("A hundred mesh parts can be removed") {
    std::vector<std::string> arguments;
    for (int i = 0; i < 100; ++i) arguments.insert(arguments.end(), {"-rmp", "part"});
    CHECK(after(arguments).removedParts.size() == 100);
    arguments.insert(arguments.end(), {"-rmp", "part"});
    CHECK(readSwitches(arguments) ==
          "ERROR - Exceeded limit of number of MESHPARTS to remove\n\nPress Enter to Close\n<stopped>");
}

TEST_CASE("Glued values are read behind their keyword") {
    const RunOptions& o =
        after({"-grid2.000000001", "-cd.05", "-cpsd50", "-lpmd1d1", "-ttf-.01", "-slant30", "-vmax3", "-ptsctuvhctuvh!",
               "-typeh", "-path /a/b ", "-FolderMaximums", "-s3", "-v+4", "-sf0.5"});
    CHECK((o.grid && o.gridSpacingGiven && o.gridSpacing == 2.000000001));  // more digits than single precision holds
    CHECK((o.cutoffDepth == 0.05F && o.cpSearchDistance == 50.0F && o.lpMarkerDistance == 10.0F));
    CHECK((o.tailThicknessPerCellSize && o.tailThicknessFactor == 0.01F));
    CHECK((o.slantAngle == 30.0F && o.vmax == 3.0F && !o.vmaxNotGiven));
    CHECK(o.pointTypes == "ctuvhctuvh");  // 10 characters
    CHECK((o.typeGiven && o.typeText == "h" && !o.allTypes));
    CHECK((o.xmdfPathGiven && o.xmdfPath == "/a/b" && o.folderGiven && o.folder == "Maximums"));
    CHECK((o.datasetByNumber && o.scalarIdGiven && o.scalarId == 3 && o.vectorIdGiven && o.vectorId == 4));
    CHECK((o.scaleFactor == 0.5F && !o.fixedVectorLength));
    CHECK(after({"-PrjWarn"}).projectionWarning);
    CHECK(readSwitches({"-sf-2"}) == "Specified an fixed vector length of 2. metres.\n");
    CHECK((o.fixedVectorLength && o.vectorLength == 2.0F && o.scaleFactor == 1.0F));
    CHECK((after({"-grid", "-typeALL"}).allTypes && OPTIONS().grid && !OPTIONS().gridSpacingGiven));
}

TEST_CASE("A value that cannot be read stops the run and names its argument") {
    for (const char* argument : {"-gridx", "-grid2,5", "-grid5m", "-t", "-tmaybe", "-s1.0", "-v", "-v2147483648",
                                 "-cdnan", "-vmaxinf", "-slant1e39"})
        CHECK(readSwitches({argument}) == stoppedBy(argument));
    for (const Row& row : rowsOf(R"(
-grid0 | The value of -grid0 must be above zero.
-grid-5 | The value of -grid-5 must be above zero.
# markers would never move on
-lpmd0 | The value of -lpmd0 must be above zero.
-cpsd-1 | The value of -cpsd-1 must be zero or above.
-dttol-1 | The value of -dttol-1 must be zero or above.
-nth0 | The value of -nth0 must be 1 or above.
-sf0 | Scale Factor (-sf) can not equal zero
-out res/ | res/ is a folder: -out needs the name of a file, such as res/result
-out res\ | res\ is a folder: -out needs the name of a file, such as res/result
# what an unset variable leaves
-into | No folder specified after -into.
-grid 5 | The spacing is written without a blank behind the switch: -grid5
# a blank name is found in every path
-type | Nothing specified behind -type
)"))
        CHECK(readSwitches(wordsOf(row[0])) == "ERROR - " + row[1] + "\n\nPress Enter to Close\n<stopped>");
}

TEST_CASE("A slip is answered with the switch that was meant") {
    for (const Row& row : rowsOf(R"(
# changed places; the number does not count
-GIRD5 | grid
# as near as -min, which stands behind
-mi | mif
# the number is part of the name
-no1 | no1d
-hlep | help
# of no row
-fl | flt
# an exponent
-gri1.5e-3 | grid
# two edits, three
-gxxd | grid
-gxxxd
# nothing of it would stay
-zz
# taken for -v2, -t5, -s1 and a spacing
-vecotr | vector | value
# as near to -sec
-vect | vector | value
-tal | tAll | value
-sx | sf | value
-gridd5 | | value
)")) {
        const std::string question = row[1].empty() ? "" : "did you mean -" + row[1] + "?";
        std::string said =
            "Check - " + row[0] + " is not known and ignored" + (question.empty() ? "." : "; " + question) + "\n";
        if (!row[2].empty())
            said = replaced(stoppedBy(row[0]), "\n\n", "\n" + (question.empty() ? "" : "   " + question + "\n") + "\n");
        CHECK(readSwitches({row[0]}) == said);
    }
}

TEST_CASE("What the program is asked about itself ends the run") {
    const std::string usage = consoleOf(PRINT_USAGE);
    for (const char* asked : {"-help", "-Help", "--help", "-h", "-?", "/?"})
        CHECK(readSwitches({asked}) == usage + "<stopped>");
    CHECK(readSwitches({"-out", "-help"}).empty());                  // a name
    CHECK(readSwitches({"-h", "-version"}) == usage + "<stopped>");  // only -help takes a word
    const std::string t =
        "   -t<time> - sets the time to be used from the .dat or .xmdf file\n    -tAll - converts all output times.\n";
    const std::string grid = readSwitches({"-help", "Grid5"});
    CHECK(grid.starts_with(
        "   -grid<spacing> to output on a regular grid.  \n      Sets the -asc grid cell size in metres.\n"
        "      Sets the -mif output spacing in metres.\n   -sgs - suppresses"));
    CHECK_FALSE(holds(grid, "-slant"));
    CHECK(readSwitches({"-help", "-t"}) == t + "<stopped>");  // not -ttf, whose name goes on
    CHECK(readSwitches({"-help", "max"}).starts_with("   -max - "));
    CHECK(readSwitches({"-help", "hzzz"}) == "Nothing is said of hzzz.\n<stopped>");
    CHECK(readSwitches({"--version"})
              .starts_with("VORANT_to_GIS " + std::string(VERSION_TEXT) + "\nBuild 2018-08-AA\nHDF5 "));
    CHECK(readSwitches({"-versionx"}).starts_with("ERROR reading data"));  // -v, and no number
}

TEST_CASE("Every switch has an entry, and is not told by its name alone") {
    for (const Switch& row : ALL_SWITCHES()) {
        CAPTURE(row.keyword);
        const auto told = USAGE_ABOUT('-' + std::string(row.keyword));
        REQUIRE(!told.empty());
        CHECK(told.front().lines.front().find(' ', 4) != std::string::npos);
    }
    CHECK(USAGE_HEAD(USAGE_ABOUT("-mesh2").front().lines.front()).keywords == std::vector<std::string>{"mesh2"});
    const UsageHead head = USAGE_HEAD("   -s<id>\"<output id (integer)>\" to convert");
    CHECK((head.keywords == std::vector<std::string>{"s"} && head.shown == "-s<id>\"<output id (integer)>\"" &&
           head.text == "to convert"));
    CHECK(USAGE_HEAD("   -vector or -arrow for vectors").keywords == std::vector<std::string>{"vector", "arrow"});
    CHECK(USAGE_HEAD("   -prec<u>.<d> sets").shown == "-prec<u>.<d>");
    CHECK(USAGE_HEAD("   -sgs - suppresses").text == "suppresses");
}

TEST_CASE("Precision is asked for until it is a pair of whole numbers") {
    const std::string none = "Incorrect or no precision specification given.\n",
                      prompt = "Enter precision specification (eg. 5.3) then press Enter -> ",
                      pair = " is not two whole numbers with a point between, up to 99.20\n";
    for (const Row& row : rowsOf(R"(
# answers ("/" ends a line), width and decimals
-prec6.3 | | 10 3 | Specified an output precision of 6 units and 3 decimal places.$
-prec0.3 | | 5 3 | Specified an output precision of 1 units and 3 decimal places.$
-prec6.0 | | 7 0 | Specified an output precision of 6 units and 0 decimal places.$
-prec | 5.2 | 8 2 |
-prec6 | 5.2/ | 8 2 |
-prec.3 | -1.2/5.x/999.2/5.99/5.2 | 8 2 |
# read to its end
-prec5,3 | 5.3          .9/5.2 | 8 2 | NONE   "5,3"PAIRPROMPTNONE   "5.3          .9"PAIRPROMPT\
    Specified an output precision of 5 units and 2 decimal places.$
)")) {
        CAPTURE(row[0]);
        const std::string text = readSwitches({row[0]}, replaced(row[1], "/", "\n"));
        const std::string said = replaced(replaced(row[3], "NONE", none), "PAIR", pair);
        if (!said.empty()) CHECK(text == replaced(replaced(said, "PROMPT", prompt), "$", "\n"));
        CHECK(OPTIONS().precisionGiven);
        CHECK(std::vector{OPTIONS().precisionWidth, OPTIONS().precisionDecimals} == listOf<std::int32_t>(row[2]));
    }
    CHECK(readSwitches({"-prec"}) ==
          none + prompt +
              "\nERROR - End of input reached while waiting for an answer.\n\nPress Enter to Close\n<stopped>");
}

TEST_CASE("Times are hours inside, wherever -sec stands, and markers stay") {
    const std::tuple<std::vector<std::string>, float, double, TimeKind, const char*> rows[] = {
        {{"-t2.5"}, 2.5F, 2.5, TimeKind::Ordinary, "t2.5"},
        {{"-sec", "-t3660"}, 3660.0F, 3660.0 / 3600.0, TimeKind::Ordinary, "t3660"},
        {{"-t3660", "-sec"}, 3660.0F, 3660.0 / 3600.0, TimeKind::Ordinary, "t3660"},
        {{"-sec", "-t99999"}, 99999.0F, 27.7775, TimeKind::Maximum, "t99999"},  // a second where no maximums are stored
        {{"-t-99999"}, -99999.0F, -99999.0, TimeKind::Minimum, "t-99999"},
        {{"-tmax"}, 99999.1F, 99999.1F, TimeKind::TimeOfMaximum, "tmax"},
        {{"-min", "-MAX"}, 99999.0F, 99999.0, TimeKind::Maximum, "Max"},  // the last one wins
        {{"-max", "-min"}, -99999.0F, -99999.0, TimeKind::Minimum, "Min"},
    };
    for (const auto& [arguments, typed, hours, kind, text] : rows) {
        CAPTURE(text);
        const WantedTime& wanted = after(arguments).outputTime;
        CHECK((wanted.typed == typed && wanted.hours == hours && wanted.kind() == kind));
        CHECK((OPTIONS().timeGiven && OPTIONS().timeText == text));
        CHECK((!OPTIONS().max || kind == TimeKind::Maximum));
    }
    CHECK(after({"-dttol36", "-sec"}).timeTolerance == 0.01);
    CHECK_FALSE(after({"-max"}).timeValueGiven);
}
