#include "run_control/world_file.h"

#include "run_control/output_names.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/options.h"
#include "text_utils/free_form.h"
#include "text_utils/numbers.h"
#include "text_utils/paths.h"
#include "text_utils/text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace {

struct ControlPoint {
    double x, y;      ///< map units
    double col, row;  ///< pixels from the upper-left corner of the image
};

/// x = xOrigin + xByCol * col + xByRow * row, and y alike; the origin is the corner of the image.
struct Placing {
    double xByCol = 0.0, xByRow = 0.0, xOrigin = 0.0;
    double yByCol = 0.0, yByRow = 0.0, yOrigin = 0.0;
};

/// What the points are about: their means, and sums of products of the differences from them.
struct Moments {
    double x = 0.0, y = 0.0, col = 0.0, row = 0.0;
    double colCol = 0.0, colRow = 0.0, rowRow = 0.0, xCol = 0.0, xRow = 0.0, yCol = 0.0, yRow = 0.0;
};

Moments momentsOf(const std::vector<ControlPoint>& points) {
    Moments m;
    const auto n = static_cast<double>(points.size());
    for (const ControlPoint& p : points) {
        m.x += p.x / n;
        m.y += p.y / n;
        m.col += p.col / n;
        m.row += p.row / n;
    }
    for (const ControlPoint& p : points) {
        const double col = p.col - m.col;
        const double row = p.row - m.row;
        m.colCol += col * col;
        m.colRow += col * row;
        m.rowRow += row * row;
        m.xCol += (p.x - m.x) * col;
        m.xRow += (p.x - m.x) * row;
        m.yCol += (p.y - m.y) * col;
        m.yRow += (p.y - m.y) * row;
    }
    return m;
}

Placing northUp(const ControlPoint& a, const ControlPoint& b) {
    Placing p;
    p.xByCol = (b.x - a.x) / (b.col - a.col);
    p.yByRow = (b.y - a.y) / (b.row - a.row);
    p.xOrigin = a.x - p.xByCol * a.col;
    p.yOrigin = a.y - p.yByRow * a.row;
    return p;
}

/// Mean square distance of the points from the line that fits them best, in pixels squared: the smaller eigenvalue of
/// their scatter.
double squaredWidth(const Moments& m, std::size_t points) {
    const double spread = std::hypot(m.colCol - m.rowRow, 2.0 * m.colRow);
    return (m.colCol + m.rowRow - spread) / 2.0 / static_cast<double>(points);
}

Placing leastSquares(const Moments& m) {
    const double determinant = m.colCol * m.rowRow - m.colRow * m.colRow;
    Placing p;
    p.xByCol = (m.xCol * m.rowRow - m.xRow * m.colRow) / determinant;
    p.xByRow = (m.xRow * m.colCol - m.xCol * m.colRow) / determinant;
    p.yByCol = (m.yCol * m.rowRow - m.yRow * m.colRow) / determinant;
    p.yByRow = (m.yRow * m.colCol - m.yCol * m.colRow) / determinant;
    p.xOrigin = m.x - p.xByCol * m.col - p.xByRow * m.row;
    p.yOrigin = m.y - p.yByCol * m.col - p.yByRow * m.row;
    return p;
}

/// Largest distance, in pixels, between where a point stands on the image and where the placing puts it.
double largestResidual(const Placing& p, const std::vector<ControlPoint>& points) {
    const double determinant = p.xByCol * p.yByRow - p.xByRow * p.yByCol;
    double largest = 0.0;
    for (const ControlPoint& point : points) {
        const double dx = point.x - (p.xOrigin + p.xByCol * point.col + p.xByRow * point.row);
        const double dy = point.y - (p.yOrigin + p.yByCol * point.col + p.yByRow * point.row);
        largest = std::max(
            largest, std::hypot(p.yByRow * dx - p.xByRow * dy, p.xByCol * dy - p.yByCol * dx) / std::abs(determinant));
    }
    return largest;
}

/// Nothing, and the reason, when the points do not place the image.
std::optional<Placing> placingOf(const std::vector<ControlPoint>& points, std::string& reason) {
    // pixels: the points are read off a screen, so nearer to a line they do not tell its sides apart
    constexpr double LEAST_WIDTH = 0.5;
    if (points.size() < 2) {
        reason = "fewer than two control points";
        return {};
    }
    Placing placing;
    if (points.size() == 2) {
        placing = northUp(points[0], points[1]);
    } else {
        const Moments moments = momentsOf(points);
        if (squaredWidth(moments, points.size()) < LEAST_WIDTH * LEAST_WIDTH) {
            reason = "the control points lie on a line";
            return {};
        }
        placing = leastSquares(moments);
    }
    // of a pixel on the map, against that of one with the same sides at right angles
    constexpr double LEAST_AREA = 1e-9;
    const double area = placing.xByCol * placing.yByRow - placing.xByRow * placing.yByCol;
    if (!(std::abs(area) >
          LEAST_AREA * std::hypot(placing.xByCol, placing.yByCol) * std::hypot(placing.xByRow, placing.yByRow))) {
        reason = "the control points lie on a line";
        return {};
    }
    const double residual = largestResidual(placing, points);
    if (residual <= 1.0) return placing;
    reason = "the control points disagree by " + AREALD8(residual, 1) + " pixels";
    return {};
}

/// "(X,Y) (column,row)" and whatever follows. False when a number is missing.
bool readControlPoint(std::string_view line, ControlPoint& point) {
    std::string numbers(line);
    std::replace_if(
        numbers.begin(), numbers.end(), [](char c) { return c == '(' || c == ')'; }, ' ');
    FreeForm text(numbers);
    for (double* value : {&point.x, &point.y, &point.col, &point.row})
        if (text.NEXT_REAL(*value) != FreeForm::Read::Value || !std::isfinite(*value)) return false;
    return true;
}

/// Moves behind the line with Type "RASTER"; false when there is none.
bool findRasterType(int file, int& lineNumber) {
    std::string line;
    while (READLINE(file, line) == LineStatus::Read) {
        ++lineNumber;
        if (FLAGEXISTS(line, "Type \"RASTER\"")) return true;
    }
    return false;
}

/// The lines that begin with "(". False, and the reason, when one cannot be read.
bool readControlPoints(int file, int lineNumber, std::vector<ControlPoint>& points, std::string& reason) {
    constexpr std::size_t MOST_POINTS = 100000;  // a screen image has a handful
    std::string line;
    LineStatus status = READLINE(file, line);
    for (; status == LineStatus::Read; status = READLINE(file, line)) {
        ++lineNumber;
        if (!line.starts_with('(')) continue;
        ControlPoint point{};
        if (!readControlPoint(line, point) || points.size() == MOST_POINTS) {
            reason = "line " + AINTEGER(lineNumber) + " of " + GETNAM(file) + ": " + line;
            return false;
        }
        points.push_back(point);
    }
    if (status == LineStatus::EndOfFile) return true;
    reason = "reading stopped behind line " + AINTEGER(lineNumber) + " of " + GETNAM(file);
    return false;
}

void writeWorldFile(const std::string& name, const Placing& p) {
    constexpr int SIZE_DECIMALS = 12;  // a tenth of a millimetre over the width of an image in degrees
    constexpr int ORIGIN_DECIMALS = 9;
    const auto number = [](double value, int decimals) {
        const std::string text = AREALD8(value, decimals);
        return (text.find_first_of("123456789") == std::string::npos && text[0] == '-' ? text.substr(1) : text) + "\n";
    };
    std::string lines;
    for (const double size : {p.xByCol, p.yByCol, p.xByRow, p.yByRow}) lines += number(size, SIZE_DECIMALS);
    lines += number(p.xOrigin + 0.5 * (p.xByCol + p.xByRow), ORIGIN_DECIMALS);
    lines += number(p.yOrigin + 0.5 * (p.yByCol + p.yByRow), ORIGIN_DECIMALS);
    BEGIN_OUTPUT(name);
    const int file = OPEN_FILE(name, "O ", "wld");
    WRITE_OR_STOP(file, lines);
    CLOSE_FILE(file);
    FINISH_OUTPUT(name);
}

}  // namespace

bool MAKE_WORLD_FILE() {
    const int file = OPEN_FILE(OPTIONS().inputFile, "I ", "tab");
    const std::string name = GETNAM(file);
    int lineNumber = 0;
    if (!findRasterType(file, lineNumber)) {
        REPORT("Could not create .wld file from .tab file");
        STOP_RUN("ERROR - " + name + " holds no line with Type \"RASTER\".");
    }
    std::vector<ControlPoint> points;
    std::string reason;
    const bool read = readControlPoints(file, lineNumber, points, reason);
    CLOSE_FILE(file);
    const std::optional<Placing> placing = read ? placingOf(points, reason) : std::nullopt;
    if (!placing) {
        REPORT("Problems creating .wld file - check that .tab file is for a MI georeferenced image.");
        DMESSAGE("ERROR - No .wld file is made: " + reason);
        return false;
    }
    writeWorldFile(OUTPUT_BASE(name) + ".wld", *placing);
    REPORT("Created .wld file from .tab file");
    return true;
}
