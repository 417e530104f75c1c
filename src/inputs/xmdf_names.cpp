#include "inputs/output_types.h"
#include "inputs/xmdf_items.h"
#include "inputs/xmdf_search.h"
#include "text_utils/text.h"

#include <algorithm>

namespace {

/// Other characters than letters and digits become "_": "ME%" -> "ME_".
std::string cleaned(std::string_view text) {
    std::string clean(text);
    for (char& c : clean) {
        const bool kept = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (!kept) c = '_';
    }
    return clean;
}

std::string nameTag(const XmdfItem& item) { return cleaned(std::string("_").append(XMDF_LAST_PART(item.path))); }
std::string codeTag(const XmdfItem& item) { return item.code.empty() ? nameTag(item) : cleaned("_" + item.code); }

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

}  // namespace

void NAME_XMDF_ITEMS(std::vector<XmdfItem>& items) {
    for (XmdfItem& item : items) {
        const OutputType* type = OUTPUT_TYPE_OF_NAME(XMDF_LAST_PART(item.path));
        item.quantity = type != nullptr ? type->name : XMDF_LAST_PART(item.path);
        if (type != nullptr) item.code = type->code;
    }
    for (XmdfItem& item : items) item.tag = tagOf(items, item);
}
