#include "profiles/line_layer.h"

#include "profiles/input_layer.h"
#include "profiles/layer_fields.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/numbers.h"

#include <cstddef>
#include <cstdint>

namespace {

bool isPolyline(GisKind kind) {
    return kind == GisKind::Line || kind == GisKind::Pline || kind == GisKind::PlineMultiple;
}

std::string objectName(std::int32_t object) { return "Object " + AINTEGER(object) + " in LP layer"; }

void takeParts(const GisObject& o, const std::string& name, std::int32_t object, std::vector<ProfileLine>& lines) {
    for (std::size_t part = 1; part <= static_cast<std::size_t>(o.nr); ++part) {
        const auto first = o.ir[part - 1] + 1, end = o.ir[part] + 1;
        ProfileLine line =
            MAKE_PROFILE_LINE(part == 1 ? name : name + "_" + std::to_string(part),
                              {o.x.begin() + first, o.x.begin() + end}, {o.y.begin() + first, o.y.begin() + end});
        if (line.x.size() < 2)
            DMESSAGE("WARNING - " + objectName(object) + " has fewer than two distinct vertices, ignored.");
        else lines.push_back(std::move(line));
    }
}

void checkAttributes(const GisHeader& header) {
    if (header.attributes.size() > 1)
        DMESSAGE("Check - The LP layer has " + AINTEGER(static_cast<std::int32_t>(header.attributes.size())) +
                 " attributes; the first, " + header.attributes.front().name + ", names the profiles.");
}

}  // namespace

std::vector<ProfileLine> READ_PROFILE_LINES(const std::string& file) {
    InputLayer layer(file, "-lp");
    checkAttributes(layer.header());
    std::vector<ProfileLine> lines;
    GisObject o;
    std::string record;
    for (std::int32_t object = 1; layer.next(o, record); ++object) {
        if (!isPolyline(o.kind)) {
            DMESSAGE("WARNING - " + objectName(object) + " is not a polyline, ignored.");
            continue;
        }
        const std::vector<std::string> values = RECORD_VALUES(record);
        const bool named = !values.empty() && !values.front().empty();
        takeParts(o, named ? values.front() : "LP" + AINTEGER(object), object, lines);
    }
    layer.close();
    if (lines.empty()) STOP_RUN("ERROR - No polylines found in " + file);
    REPORT(AINTEGER8(static_cast<std::int64_t>(lines.size())) + " profiles found in " + file);
    return lines;
}
