#include "inputs/xmdf_search.h"

#include "inputs/xmdf_messages.h"
#include "services/console.h"
#include "services/exits.h"
#include "text_utils/text.h"

#include <functional>

namespace {

struct FolderWord {
    XmdfFolder folder;
    std::string_view word;
};
constexpr FolderWord FOLDERS[] = {
    {XmdfFolder::Maximums, "/maximums/"},
    {XmdfFolder::Temporal, "/temporal/"},
    {XmdfFolder::Minimums, "/minimums/"},
    {XmdfFolder::Times, "/times/"},
};

struct KindTexts {
    XmdfKind kind;
    const char* word;
    const char* advice;  ///< the capital of one of them is kept as users know it
};
constexpr KindTexts KINDS[] = {
    {XmdfKind::Scalar, "scalar",
     "If file has not been written by VORANT, other folders can be accessed by specifying the path (-path)"},
    {XmdfKind::Vector, "vector",
     "If File has not been written by VORANT, other folders can be accessed by specifying the path (-path)"},
};

bool contains(std::string_view path, std::string_view part) {
    return !part.empty() && LOWERCASE(path).find(LOWERCASE(part)) != std::string::npos;
}

/// A later match replaces an earlier one, but one that only contains the name does not replace one that is called so.
void note(const XmdfDatasets& datasets, std::int32_t number, std::string_view name, std::int32_t& slot) {
    const auto calledSo = [&](std::int32_t n) { return ASAME(XMDF_LAST_PART(datasets.path(n)), XMDF_LAST_PART(name)); };
    if (slot == 0 || calledSo(number) || !calledSo(slot)) slot = number;
}

std::int32_t& slotOf(XmdfMatches& found, const std::string& path, const KindTexts& texts) {
    switch (XMDF_FOLDER_OF(path)) {
        case XmdfFolder::Maximums: return found.maximum;
        case XmdfFolder::Temporal: return found.temporal;
        case XmdfFolder::Minimums: return found.minimum;
        case XmdfFolder::Times: return found.times;
        case XmdfFolder::Other: break;
    }
    DMESSAGE("ERROR - Unknown Data Folder: " + XMDF_QUOTED(path));
    REPORT("Expecting one of: Maximums, Minimums, Times or Temporal.");
    REPORT(texts.advice);
    EXITS();
}

using Match = std::function<bool(const std::string& path)>;
using Keep = std::function<void(XmdfDatasets& datasets, std::int32_t number, const KindTexts& texts)>;

void search(XmdfEntry& entry, const std::string& name, const Match& matches, const Keep& keep) {
    REPORT("Searching specified xmdf type in " + XMDF_QUOTED(entry.fileName));
    bool anything = false;
    for (const KindTexts& texts : KINDS) {
        XmdfDatasets& datasets = entry.of(texts.kind);
        datasets.found = XmdfMatches{};
        REPORT("Searching " + std::string(texts.word) + " datasets for " + XMDF_QUOTED(name) + "...");
        bool found = false;
        for (std::int32_t number = 1; number <= datasets.count(); ++number) {
            if (!matches(datasets.path(number))) continue;
            REPORT("Found: " + XMDF_QUOTED(datasets.path(number)));
            keep(datasets, number, texts);
            found = true;
        }
        if (!found)
            DMESSAGE("Warning - No " + std::string(texts.word) + " datasets found of type " + XMDF_QUOTED(name));
        anything = anything || found;
    }
    if (anything) return;
    DMESSAGE("ERROR - No datasets found of type " + XMDF_QUOTED(name) + " found in " + entry.fileName);
    REPORT(XMDF_LISTING_HINT);
    EXITS();
}

std::string withLeadingSlash(std::string_view path) {
    return std::string(path.starts_with('/') ? "" : "/").append(path);
}

bool anyPath(const XmdfEntry& entry, const Match& matches) {
    for (const XmdfDatasets& datasets : entry.sorts)
        for (std::int32_t number = 1; number <= datasets.count(); ++number)
            if (matches(datasets.path(number))) return true;
    return false;
}

}  // namespace

XmdfFolder XMDF_FOLDER_OF(std::string_view path) {
    for (const FolderWord& row : FOLDERS)
        if (contains(path, row.word)) return row.folder;
    return XmdfFolder::Other;
}

// npos + 1 is the whole name
std::string_view XMDF_LAST_PART(std::string_view path) { return path.substr(path.rfind('/') + 1); }

bool XMDF_ONLY_IN_FOLDER(std::string_view path, std::string_view text) {
    const std::size_t at = LOWERCASE(path).rfind(LOWERCASE(text));
    return at != std::string::npos && at + text.size() <= path.size() - XMDF_LAST_PART(path).size();
}

void FIND_XMDF_TYPE(XmdfEntry& entry, const std::string& type) {
    search(
        entry, type, [&](const std::string& path) { return contains(path, TRIMMED(type)); },
        [&](XmdfDatasets& datasets, std::int32_t number, const KindTexts& texts) {
            note(datasets, number, type, slotOf(datasets.found, datasets.path(number), texts));
        });
}

void FIND_XMDF_PATH(XmdfEntry& entry, const std::string& path) {
    const Match equal = [full = LOWERCASE(withLeadingSlash(path))](const std::string& p) {
        return LOWERCASE(p) == full;
    };
    const Match holds = [&path](const std::string& p) { return contains(p, path); };
    search(entry, path, anyPath(entry, equal) ? equal : holds,
           [&](XmdfDatasets& datasets, std::int32_t number, const KindTexts&) {
               note(datasets, number, path, datasets.found.path);
               datasets.found.temporal = datasets.found.path;
           });
}

std::vector<std::int32_t> XMDF_DATASETS_IN_FOLDER(const XmdfDatasets& datasets, std::string_view folder) {
    std::string part = REMOVEQUOTES(folder);
    part = TRIMMED(part);
    while (part.starts_with('/') || part.starts_with('\\')) part.erase(0, 1);
    while (part.ends_with('/') || part.ends_with('\\')) part.pop_back();
    std::vector<std::int32_t> numbers;
    for (std::int32_t number = 1; number <= datasets.count() && !part.empty(); ++number)
        if (contains(datasets.path(number), "/" + part + "/")) numbers.push_back(number);
    return numbers;
}

std::int32_t XMDF_TWIN(const XmdfDatasets& datasets, std::string_view path, XmdfFolder folder) {
    const auto wordOf = [](XmdfFolder wanted) {
        for (const FolderWord& row : FOLDERS)
            if (row.folder == wanted) return row.word;
        return std::string_view();
    };
    const std::string_view own = wordOf(XMDF_FOLDER_OF(path));
    if (own.empty()) return 0;
    std::string twin = LOWERCASE(path);
    twin.replace(twin.find(own), own.size(), wordOf(folder));
    for (std::int32_t number = 1; number <= datasets.count(); ++number)
        if (LOWERCASE(datasets.path(number)) == twin) return number;
    return 0;
}
