#include "services/file_names.h"

#include "services/console.h"
#include "services/files.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

namespace fs = std::filesystem;

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

bool isFile(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error) && !error && !fs::is_directory(path, error);
}

/// The file of the folder whose name differs in letter case only; the first by name when several do.
std::optional<std::string> caseBlindMatch(const fs::path& path) {
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    const std::string wanted = lower(path.filename().string());
    std::optional<std::string> best;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (lower(name) == wanted && isFile(it->path()) && (!best || name < *best)) best = name;
    }
    if (!best) return {};
    return path.has_parent_path() ? (path.parent_path() / *best).string() : *best;
}

}  // namespace

std::string COMPARABLE_NAME(std::string_view name) {
    std::error_code error;
    fs::path path = fs::weakly_canonical(fs::path(name), error);
    if (error || path.empty()) path = fs::path(name);
    if (!path.is_absolute()) path = fs::absolute(path, error);
    return lower(path.generic_string());
}

void FORGET_FILE_NAMES() { names = FileNames{}; }
void NOTE_FILE_USED(std::string_view name) { names.used.insert(COMPARABLE_NAME(name)); }
bool NAME_IN_USE(std::string_view name) { return names.used.contains(COMPARABLE_NAME(name)); }

void BEGIN_OUTPUT(std::string_view name) {
    if (isFile(fs::path(name)) && !NAME_IN_USE(name)) DMESSAGE("Check - Replacing " + std::string(name) + ".");
}

void FINISH_OUTPUT(std::string_view name) {
    ++names.outputs;
    REPORT("Wrote " + std::string(name));
}

int OUTPUTS_WRITTEN() { return names.outputs; }

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
