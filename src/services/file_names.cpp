#include "services/file_names.h"

#include "platform/file_system.h"
#include "services/console.h"
#include "services/files.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace {

struct FileNames {
    std::set<std::string> used;  ///< read or written by this run
    int outputs = 0;             ///< completed
};
FileNames names;

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

bool isFile(std::string_view name) { return KIND_OF_FILE(name) == FileKind::File; }

/// The file of the folder whose name differs in letter case only; the first by name when several do.
std::optional<std::string> caseBlindMatch(std::string_view file) {
    const std::filesystem::path path = PATH_OF(file);
    const std::string folder = NAME_OF(path.parent_path());
    const std::string wanted = lower(NAME_OF(path.filename()));
    std::optional<std::string> best;
    for (const std::string& name : NAMES_IN_FOLDER(folder.empty() ? "." : folder)) {
        const std::string full = NAME_OF(path.parent_path() / PATH_OF(name));
        if (lower(name) == wanted && (!best || full < *best) && isFile(full)) best = full;
    }
    return best;
}

}  // namespace

void FORGET_FILE_NAMES() { names = FileNames{}; }
void NOTE_FILE_USED(std::string_view name) { names.used.insert(COMPARABLE_FILE_NAME(name)); }
bool NAME_IN_USE(std::string_view name) { return names.used.contains(COMPARABLE_FILE_NAME(name)); }

void BEGIN_OUTPUT(std::string_view name) {
    if (isFile(name) && !NAME_IN_USE(name)) DMESSAGE("Check - Replacing " + std::string(name) + ".");
}

void FINISH_OUTPUT(std::string_view name) {
    ++names.outputs;
    REPORT("Wrote " + std::string(name));
}

int OUTPUTS_WRITTEN() { return names.outputs; }

std::string WORKING_NAME(std::string_view finalName) { return std::string(finalName); }

WholeOrNothing::WholeOrNothing(std::string name) : name_(std::move(name)), stopping_(std::uncaught_exceptions()) {}

WholeOrNothing::~WholeOrNothing() {
    if (std::uncaught_exceptions() == stopping_) return;
    std::error_code ignored;
    const std::filesystem::path path = PATH_OF(name_);
    if (std::filesystem::is_regular_file(path, ignored)) std::filesystem::remove(path, ignored);
}

std::optional<std::string> FIND_FILE(std::string_view name) {
    std::string tried(name);
    if (tried.empty()) return {};
    if (isFile(tried)) return tried;
#ifndef _WIN32
    // Batch files made on Windows: the separator is the only thing wrong with the name.
    if (tried.find('\\') != std::string::npos) {
        std::replace(tried.begin(), tried.end(), '\\', '/');
        if (isFile(tried)) return tried;
    }
#endif
    return caseBlindMatch(tried);
}
