#include "inputs/output_types.h"
#include "inputs/xmdf_items.h"
#include "inputs/xmdf_search.h"
#include "text_utils/text.h"

#include <algorithm>
#include <set>

namespace {

std::string nameTag(const XmdfItem& item) {
    return WITH_UNDERSCORES(std::string("_").append(XMDF_LAST_PART(item.path)));
}
std::string codeTag(const XmdfItem& item) {
    return item.code.empty() ? nameTag(item) : WITH_UNDERSCORES("_" + item.code);
}

/// Told by the time marker of its own: "x_time_hMax".
bool namedByTime(const XmdfItem& item) { return item.read == XmdfRead::SingleOutput && !item.time.ordinary(); }

bool anyOther(const std::vector<XmdfItem>& items, const XmdfItem& item, auto&& matches) {
    return std::any_of(items.begin(), items.end(),
                       [&](const XmdfItem& other) { return &other != &item && matches(other); });
}

std::string tagOf(const std::vector<XmdfItem>& items, const XmdfItem& item) {
    if (namedByTime(item)) {
        const bool shared =
            anyOther(items, item, [&](const XmdfItem& other) { return namedByTime(other) && other.time == item.time; });
        return shared ? nameTag(item) : std::string();
    }
    if (item.read == XmdfRead::SingleOutput) return nameTag(item);
    const bool shared = item.kind == XmdfKind::Vector && anyOther(items, item, [&](const XmdfItem& other) {
                            return other.kind == XmdfKind::Scalar && other.read != XmdfRead::SingleOutput &&
                                   ASAME(codeTag(other), codeTag(item));
                        });
    return shared ? nameTag(item) : codeTag(item);
}

// ---- datasets that would share a name ----

std::vector<OutputTime> outputTimes(const XmdfItem& item) {
    return item.read == XmdfRead::AllTimes ? item.facts.times : std::vector{item.time};
}

bool shareOutputTime(const XmdfItem& a, const XmdfItem& b) {
    const std::vector<OutputTime> times = outputTimes(a), others = outputTimes(b);
    return std::find_first_of(times.begin(), times.end(), others.begin(), others.end()) != times.end();
}

bool collide(const XmdfItem& a, const XmdfItem& b) {
    return a.file == b.file && ASAME(a.tag, b.tag) && shareOutputTime(a, b);
}

/// The last `count` folders of the path: ("/run/Temporal/Depth", 1) -> "Temporal"; fewer where the path has no more.
std::string_view lastFolders(std::string_view path, int count) {
    const std::string_view folders = path.substr(0, path.rfind('/'));
    std::size_t at = folders.size();
    for (int i = 0; i < count && at != 0; ++i) at = folders.rfind('/', at - 1);
    return folders.substr(at == folders.size() ? at : at + 1);
}

/// Folders go in front of the tag, as few as tell all of them apart: "_b_Temporal_d". Names that differ in what
/// becomes "_" stay alike.
void addFolders(const std::vector<XmdfItem*>& alike) {
    const std::string& path = alike.front()->path;
    const auto most = static_cast<int>(std::count(path.begin(), path.end(), '/'));
    for (int count = 1; count <= most; ++count) {
        std::set<std::string> told;
        for (const XmdfItem* item : alike) told.insert(LOWERCASE(lastFolders(item->path, count)));
        if (told.size() < alike.size()) continue;
        for (XmdfItem* item : alike)
            if (const std::string_view folders = lastFolders(item->path, count); !folders.empty())
                item->tag = WITH_UNDERSCORES(std::string("_").append(folders)) + item->tag;
        return;
    }
}

void tellApart(std::vector<XmdfItem>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::vector<XmdfItem*> alike = {&items[i]};
        for (std::size_t k = i + 1; k < items.size(); ++k)
            if (collide(items[i], items[k])) alike.push_back(&items[k]);
        if (alike.size() > 1) addFolders(alike);
    }
}

}  // namespace

void NAME_XMDF_ITEMS(std::vector<XmdfItem>& items) {
    for (XmdfItem& item : items) {
        const OutputType* type = OUTPUT_TYPE_OF_NAME(XMDF_LAST_PART(item.path));
        item.quantity = type != nullptr ? type->name : XMDF_LAST_PART(item.path);
        if (type != nullptr) item.code = type->code;
    }
    for (XmdfItem& item : items) item.tag = tagOf(items, item);
    tellApart(items);
}
