#include "run_control/convert_difference.h"

#include "inputs/difference_source.h"
#include "inputs/mesh_compare.h"
#include "inputs/mesh_degrees.h"
#include "platform/file_system.h"
#include "raster/odd_quads.h"
#include "run_control/convert_results.h"
#include "run_control/mesh_match.h"
#include "run_control/output_formats.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace {

double samePosition(bool degrees) { return degrees ? SAME_POSITION_DEGREES : SAME_POSITION_METRES; }

/// One file, or two that differ in the beds of nodes at most: runs of one mesh mostly have a copy each, and looking
/// through both is quicker than reading.
bool isSameMeshFile(const BothSides& sides, const Mesh& mesh, bool degrees) {
    std::error_code error;  // a file that cannot be looked at is told when it is read
    if (std::filesystem::equivalent(PATH_OF(sides.now.mesh), PATH_OF(sides.was.mesh), error)) return true;
    if (sides.was.kind == InputKind::Mesh) return false;  // the beds are what differs
    const int file = OPEN_FILE(sides.now.mesh, "I ", "2dm"), other = OPEN_FILE(sides.was.mesh, "I ", "2dm");
    const bool same = ARE_ONE_MESH_BY_LINES(file, other, mesh, samePosition(degrees));
    CLOSE_FILE(file);
    CLOSE_FILE(other);
    return same;
}

void findSecondMesh(InputFiles& was) {
    const RunOptions& options = OPTIONS();
    FIND_MESH_FILE(was, options.secondMesh.empty() ? options.meshFile : options.secondMesh);
}

/// Reads the second mesh and compares it with the first. True: they are one.
bool isOneMesh(const BothSides& sides, const Mesh& mesh, bool degrees, Mesh& second) {
    READ_MESH(sides.was.mesh, second);
    const std::string contrast = MESH_CONTRAST(mesh, second, samePosition(degrees));
    if (contrast.empty()) return true;
    const std::string both = sides.now.mesh + " and " + sides.was.mesh + " are two meshes (" + contrast + ")";
    if (!GIVEN(OPTIONS(), Family::Raster))
        STOP_RUN("ERROR - " + both + "; only rasters can be taken as their difference (-dif).");
    REPORT(both + ", each is laid on the grid by itself.");
    REPORT_ODD_QUADS(second);
    return false;
}

DifferenceRules rulesOf(const BothSides& sides, bool degrees) {
    const RunOptions& options = OPTIONS();
    DifferenceRules rules;
    rules.pairs = {sides.now.input, sides.was.input, options.timeTolerance, options.seconds};
    rules.nameEnding = "_minus_" + FILENAMEEXT(FILENAMEPATH(sides.was.input));
    rules.nodeByNode = !GIVEN(options, Family::Raster);
    rules.degrees = degrees;
    return rules;
}

}  // namespace

void FIND_SECOND_INPUT(BothSides& sides) {
    const RunOptions& options = OPTIONS();
    if (!options.difference) return;
    const std::optional<std::string> found = FIND_FILE(options.secondInput);
    if (!found) STOP_RUN("ERROR - File " + options.secondInput + " (-dif) does not exist.");
    sides.was.input = *found;
    FIND_INPUT_KIND(sides.was);
    if ((sides.was.kind == InputKind::Mesh) != (sides.now.kind == InputKind::Mesh))
        STOP_RUN("ERROR - A mesh and results have no difference (-dif): " + sides.now.input + ", " + sides.was.input +
                 ".");
}

void IDENTIFY_SIDES(BothSides& sides) {
    if (sides.was.input.empty()) {
        sides.nowResults = IDENTIFY_RESULTS(sides.now);
        return;
    }
    const bool datLast = sides.now.kind == InputKind::Xmdf && sides.was.kind == InputKind::Dat;
    if (datLast) sides.wasResults = IDENTIFY_RESULTS(sides.was);
    sides.nowResults = IDENTIFY_RESULTS(sides.now, &sides.wasResults);
    if (!datLast) sides.wasResults = IDENTIFY_RESULTS(sides.was, &sides.nowResults);
}

void CONVERT_DIFFERENCE(BothSides sides, const std::string& base, const Mesh& mesh, CoordinateKind coordinates,
                        OutputStages& stages) {
    // what was offers all its times as partners
    std::unique_ptr<ResultsSource> now =
        WITH_SUBSET(OPEN_SOURCE(sides.now, std::move(sides.nowResults), mesh), sides.now);
    findSecondMesh(sides.was);
    const bool degrees = IS_IN_DEGREES(mesh, coordinates);
    Mesh second;
    const bool sameFile = isSameMeshFile(sides, mesh, degrees);
    const bool one = sameFile || isOneMesh(sides, mesh, degrees, second);
    std::unique_ptr<ResultsSource> was = OPEN_SOURCE(sides.was, std::move(sides.wasResults), sameFile ? mesh : second);
    if (one) second = {};
    const Mesh& wasMesh = one ? mesh : second;
    std::vector<bool> wasCellCentred = MATCH_SOURCE_TO_MESH(*was, wasMesh);
    DifferenceSource source(std::move(now), std::move(was), std::move(wasCellCentred), mesh, one ? nullptr : &second,
                            rulesOf(sides, degrees));
    CONVERT_RESULTS(source, base, mesh, RESULTS_TO_FILL(), stages);
}
