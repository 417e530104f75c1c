#include "profiles/calibration_points.h"

#include "profiles/input_layer.h"
#include "profiles/layer_fields.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <utility>

namespace {

void addPoint(CalibrationPoints& points, const GisObject& o, CalibrationObject object, std::size_t labelField) {
    object.point = static_cast<std::int32_t>(points.count());
    points.x.push_back(o.x[1]);
    points.y.push_back(o.y[1]);
    const std::vector<std::string> values = RECORD_VALUES(object.record);
    points.labels.push_back(labelField < values.size() ? values[labelField] : std::string{});
    points.objectOf.push_back(static_cast<std::int32_t>(points.objects.size()));
    points.objects.push_back(std::move(object));
}

void addOther(CalibrationPoints& points, const GisObject& o, CalibrationObject object) {
    object.other = static_cast<std::int32_t>(points.others.size());
    points.others.push_back(o);
    points.objects.push_back(std::move(object));
}

}  // namespace

CalibrationPoints READ_CALIBRATION_POINTS(const std::string& file) {
    CalibrationPoints points;
    points.file = file;
    InputLayer layer(file, "-cp");
    points.header = layer.header();
    const std::size_t labelField = LABEL_FIELD(points.header.attributes);
    GisObject o;
    CalibrationObject object;
    for (std::int32_t number = 1; layer.next(o, object.record); ++number) {
        const bool multiple = o.kind == GisKind::MultiPoint && o.vertexCount() > 0;
        if (multiple)
            DMESSAGE("WARNING - Object " + AINTEGER(number) +
                     " in CP layer is a multipoint, only its first point is used.");
        if (multiple || o.kind == GisKind::Point) addPoint(points, o, std::move(object), labelField);
        else addOther(points, o, std::move(object));
        object = {};
    }
    layer.close();
    if (points.count() == 0) STOP_RUN("ERROR - No points found in " + file);
    REPORT(AINTEGER8(static_cast<std::int64_t>(points.count())) + " calibration points found in " + file);
    return points;
}
