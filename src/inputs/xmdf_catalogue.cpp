#include "inputs/xmdf_catalogue.h"

#include "inputs/xmdf_messages.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "text_utils/numbers.h"

namespace {

/// What the two kinds of datasets are called in operations and messages.
struct KindWords {
    XmdfKind kind;
    const char* word;     ///< "scalar"
    const char* capital;  ///< "Scalar"
    const char* pathsFailure;
    XmdfStatus (*info)(XmdfFileState&, std::int32_t&, std::int32_t&);
    XmdfStatus (*paths)(XmdfFileState&, std::vector<std::string>&);
};
constexpr KindWords KINDS[] = {
    {XmdfKind::Scalar, "scalar", "Scalar", "ERROR - Exracting Scalar Dataset Paths [XF_GET_SCALAR_DATASET_PATHS].",
     xfgetscalardatasetsinfo_f, xfgetscalardatasetpaths_f},
    {XmdfKind::Vector, "vector", "Vector", "ERROR - Exracting Vector Dataset Paths [XF_GET_VECTOR_DATASET_PATHS].",
     xfgetvectordatasetsinfo_f, xfgetvectordatasetpaths_f},
};

/// Without the file nothing can be converted.
void checked(const XmdfStatus& status, const std::string& message) {
    if (status < 0) STOP_XMDF({message, status.reason});
}

void openFile(XmdfEntry& entry) {
    REPORT("Opening XMDF file " + XMDF_QUOTED(entry.fileName));
    checked(xfopenfile_f(entry.fileName, entry.file),
            "ERROR - Could not open XMDF file " + XMDF_QUOTED(entry.fileName));
    NOTE_FILE_USED(entry.fileName);
    if (XMDF_UNLOCKED(*entry.file))
        DMESSAGE("WARNING - XMDF file " + XMDF_QUOTED(entry.fileName) +
                 " is open in another program, it is read without locking: what that still writes may be missing.");
    REPORT("Done.");
    float version = 0.0F;
    checked(xfgetlibraryversion_f(version), "ERROR - Determining XMDF Library Version.");
    REPORT("XMDF Version: " + AREAL(version));
}

void reportCounts(XmdfEntry& entry, const KindWords& words) {
    const std::string word = words.word;
    REPORT("Getting " + word + " dataset information");
    std::int32_t count = 0;
    std::int32_t longest = 0;
    checked(words.info(*entry.file, count, longest), "ERROR - Getting " + word + " data set information.");
    if (count <= 0) DMESSAGE("Warning - Number of " + word + " paths less than or equal to zero.");
    REPORT("Number of " + word + " datasets: " + AINTEGER(count));
    REPORT("Maximum character length of dataset names: " + AINTEGER(longest));
}

void reportPassedOver(const XmdfFileState& file) {
    for (const std::string& line : XMDF_SKIPPED(file)) DMESSAGE(line);
    for (const std::string& reason : XMDF_UNREADABLE_GROUPS(file)) {
        DMESSAGE("WARNING - A damaged group is left out, with the datasets that it may hold.");
        REPORT("        " + reason);
        NOTE_INCOMPLETE();
    }
}

void readPaths(XmdfEntry& entry, const KindWords& words) {
    std::vector<std::string> paths;
    checked(words.paths(*entry.file, paths), words.pathsFailure);
    REPORT(std::string(words.capital) + " datasets available:");
    for (const std::string& path : paths) REPORT(path);
    paths.insert(paths.begin(), std::string());
    entry.of(words.kind).paths = std::move(paths);
}

}  // namespace

XmdfCatalogue OPEN_XMDF_FILES(const std::vector<std::string>& names) {
    REPORT("Opening all .xmdf files to extract header information.");
    XmdfCatalogue catalogue;
    for (const std::string& name : names) {
        XmdfEntry& entry = catalogue.emplace_back();
        entry.fileName = name;
        openFile(entry);
        REPORT("Extracting filepath information for array allocation...");
        for (const KindWords& words : KINDS) reportCounts(entry, words);
        reportPassedOver(*entry.file);
        REPORT("Getting dataset names from XMDF file " + XMDF_QUOTED(name));
        for (const KindWords& words : KINDS) readPaths(entry, words);
    }
    return catalogue;
}
