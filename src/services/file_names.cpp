#include "services/file_names.h"

#include "platform/file_system.h"
#include "services/files.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace {

std::set<std::string> used;  ///< names of what this run has read or written

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

void FORGET_FILE_NAMES() { used.clear(); }
void NOTE_FILE_USED(std::string_view name) { used.insert(COMPARABLE_FILE_NAME(name)); }
bool NAME_IN_USE(std::string_view name) { return used.contains(COMPARABLE_FILE_NAME(name)); }

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
