#include "run_control/switch_checks.h"

#include "read_switches.h"
#include "run_control/usage.h"
#include "services/options.h"
#include "testing.h"

namespace {

/// What the checks say behind their heading.
std::string checked(const std::vector<std::string>& arguments) {
    readSwitches(arguments);
    const std::string heading = "Checking input flags.\n";
    const std::string text = consoleOf([] { CHECK_SWITCHES(); });
    return text.starts_with(heading) ? text.substr(heading.size()) : "no heading";
}
std::string exits(const std::string& text) { return text + "\n\nPress Enter to Close\n<stopped>"; }

const std::string ASC = ".asc output format specified.\n", FLT = ".flt output format specified.\n",
                  MIF = ".mif output format specified.\n", SHP = ".shp output format specified.\n";

/// "$" ends a line.
std::string formatsNamed(std::string text) {
    for (const auto& [name, line] : {std::pair{"ASC", &ASC}, {"FLT", &FLT}, {"MIF", &MIF}, {"SHP", &SHP}})
        text = replaced(text, name, *line);
    return replaced(text, "$", "\n");
}

}  // namespace

TEST_CASE("One output format is wanted, and profiles with their points are one") {
    const std::string several = "ERROR - More than one output format specified. Refer to above for more information.\n";
    for (const Row& row : rowsOf(R"(
-b | ERROR - No output format flag specified.$ | error
-asc | ASC
-flt | FLT
-flt -asc | ASCFLTSEVERAL | error
-cp c.mif -lp l.mif | Long profile (.csv) output format specified.$Calibration point (.csv) output format specified.$
-lp l.mif -txt | .txt output format specified.$Long profile (.csv) output format specified.$SEVERAL | error
-shp -mif | MIFSHPSEVERALWarning - Both .mif and .shp outputs requested, can only process on at a time.$\
    Ignoring shp format.$ | error
-wld | .wld output format specified.$
)")) {
        CHECK(checked(wordsOf(row[0])) == formatsNamed(replaced(row[1], "SEVERAL", several)));
        CHECK(OPTIONS().inputError != row[2].empty());
    }
    CHECK(checked({"-vmi", "-asc"}) == exits("ERROR - vmi output no longer supported."));
}

TEST_CASE("Switches that contradict each other stop the run, for both rasters alike") {
    for (const Row& row : rowsOf(R"(
-flt -t5 -max | FLTError - Both max (-max) and time (-t) arguments found, please specify only one.
-asc -t5 -min | ASCError - Both min (-min) and time (-t) arguments found, please specify only one.
-asc -from1 -tAll -max | ASCERROR - -from, -until and -nth take some of all output times, not those of -max, -min, -tmax or -t.
-asc -until1 -from1.1 | ASCERROR - The time of -from is above that of -until.
-asc -tmax -min | ASCError - Maxtime (-tmax) flag found with addition time flags.
-flt -vector | FLTError - Vector option requires -mif or -shp output type.
-asc -typed -tmax | ASCError - Maxtime (-tmax) flag found, with xmdf date type other than "h" or "v".
-asc -s0 -v0 | ASCWarning - Both xmdf scalar (-s) and vector (-v) dataset IDs specified.$Ignoring -v dataset.$\
    Error - Specified scalar dataset (-s<id>) cannot be less than 1.
-asc -v-1 | ASCError - Specified vector dataset (-v<id>) cannot be less than 1.
-flt -region | FLTERROR - Invalid flag combination (-region and -asc).
-mif -region -arrow | MIFERROR - Both -region and -arrows or -vector specified.
-asc -vx -vy | ASCERROR - Please specify only one of -vx or -vy.
-mif -slant90 | MIFERROR - Please specify only one of -vx or -vy.
-mif -slant-1 | MIFERROR - Please specify only one of -vx or -vy.
)"))
        CHECK(checked(wordsOf(row[0])) == exits(formatsNamed(row[1])));
    CHECK(checked({"-mif", "-slant89.9", "-vx"}) == MIF);
    CHECK(checked({"-asc", "-until5400", "-from5400", "-sec"}) == ASC);
    CHECK((OPTIONS().allTimes && OPTIONS().subset == TimeSubset{1.5, 1.5, {}}));
}

TEST_CASE("Overridden switches are cleared with a warning") {
    const RunOptions& o = OPTIONS();
    CHECK(checked({"-flt", "-sgs", "-out", "x"}) ==
          FLT + "Warning - Supress grid size (-sgs) switch ignored as output file specified.\n");
    CHECK((!o.suppressGridSize && o.outputNameGiven));
    CHECK(checked({"-txt", "-out", "x"})
              .ends_with("only available for mif, shp or asc outputs.\n-sgs or -out flag ignored.\n"));
    CHECK((!o.outputNameGiven && o.outputName.empty()));
    CHECK(checked({"-shp", "-vector"}) ==
          SHP + "Check - Tail Thickness Factor not set for Arc Shape vectors, using 0.01 times arrow size.\n");
    CHECK(o.tailThicknessFactor == 0.01F);
    CHECK(checked({"-shp", "-vector", "-ttf-.5"}) == SHP);
    CHECK(checked({"-asc", "-typeall", "-s1"}) ==
          ASC +
              "Warning - All data (-typeAll) specified with one of -s<id> or -v<id>.\n"
              "Exporting all dataset and ignoring -s or -v flag.\n");
    CHECK_FALSE((o.scalarIdGiven || o.datasetByNumber));
    CHECK(checked({"-asc", "-max", "-tall"}) == ASC +
                                                    "Warning - All output times conflicts with another time step "
                                                    "(-max, -min, -tmax or -t<output time>.\nExporting all times.\n");
    CHECK((o.allTimes && !o.timeGiven && !o.max));
    CHECK(checked({"-flt", "-ptsC"}) ==
          FLT + "WARNING - Filtering (-pts) option only valid with -shp or -mif output.\nPress Enter to Continue\n");
    CHECK(checked({"-asc", "-ptsall"}) == ASC);
    CHECK(checked({"-flt", "-grid5", "-like", "dem.flt"}) ==
          FLT + "WARNING - Grid spacing is taken from the template grid (-like), -grid ignored.\n");
    CHECK((!o.grid && o.likeGrid == "dem.flt"));
    checked({"-mif", "-like", "dem.flt"});
    CHECK((!o.grid && o.likeGrid.empty()));
    CHECK(checked({"-mif", "-grid", "-like", "dem.flt"}) == MIF);  // a bare -grid lines up with the template
    CHECK(checked({"-mif", "-grid5", "-like", "dem.flt"}) ==
          MIF + "WARNING - Grid spacing is taken from the template grid (-like), -grid ignored.\n");
    CHECK((o.grid && o.likeGrid == "dem.flt"));
    CHECK_FALSE(holds(checked({"-lp", "l.mif", "-gpkg"}), "ERROR"));  // one format, not two
    CHECK((o.samplesPackage && o.outputs == std::vector<std::string_view>{"lp"}));
    checked({"-cp", "c.mif", "-flt"});
    CHECK((o.inputError && o.outputs == std::vector<std::string_view>{"cp"}));
    for (const char* type : {"-typeH", "-typeWater Level"}) {
        checked({"-asc", type, "-tmax"});
        CHECK(o.secondDatasetName == "Time of Peak h");
    }
    checked({"-asc", "-typev", "-tmax"});
    CHECK(o.secondDatasetName == "Time of Peak V");
    CHECK(checked({"-asc", "-typeAll", "-tmax"}) == ASC);
    CHECK(holds(checked({"-asc", "-mesh2", "b.2dm"}), "(-dif), -mesh2 ignored.\n"));
    CHECK(o.secondMesh.empty());
    CHECK(holds(checked({"-cp", "c.mif", "-obsX", "-dif", "b.dat"}), "recorded values, -obs ignored.\n"));
    CHECK(o.recordedField.empty());
    CHECK(checked({"-asc", "-dif", " "}) == exits(ASC + "ERROR - No file specified after -dif."));
}

TEST_CASE("The usage text keeps its odd lines") {
    const std::string text = consoleOf([] { PRINT_USAGE(); });
    CHECK(text.starts_with("VORANT_to_GIS Description\n\nConverts VORANT"));
    CHECK(
        holds(text, "     T - 1D Water Level Line triangles\n     T - 1D Water Level Line triangles\n    Eg: -ptsCT"));
    CHECK(holds(text, "\n\nREGULAR GRID OUTPUT:\n   -grid<spacing> to output on a regular grid.  \n"));
    CHECK(holds(text, "   -Folder\"<Folder Name>\" the datasets in a particular folder.\n"));
    CHECK(text.ends_with(
        "   VORANT_to_GIS.exe -asc -TypeH -tAll x.xmdf\n      Converts a 3D grid for all water level output times.\n"));
}
