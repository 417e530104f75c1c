#include "services/working_names.h"

#include "platform/file_system.h"
#include "platform/process.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

namespace {

constexpr std::size_t DIGITS_OF_PID = 10;
constexpr std::size_t LONGEST_HOST = 32;

/// ".<host>-"
const std::string& hostMark() {
    static const std::string mark = [] {
        std::string host = HOST_NAME().substr(0, LONGEST_HOST);
        for (char& c : host) {
            const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
            if (!plain) c = '_';
        }
        return "." + (host.empty() ? "host" : host) + "-";
    }();
    return mark;
}

/// FNV-1a, as eight hexadecimal digits.
std::string numberOf(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    std::string digits(8, '0');
    for (std::size_t i = digits.size(); i-- > 0; hash >>= 4U) digits[i] = "0123456789abcdef"[hash & 15U];
    return digits;
}

struct Parts {
    std::string folder;  ///< with its separator
    std::string stem;    ///< cut where needed, alike for every process
    std::string rest;
};

Parts partsOf(std::string_view name, std::size_t stem) {
    Parts parts{FILEFOLDERPATH(name), {}, std::string(name.substr(stem))};
    parts.stem = name.substr(parts.folder.size(), stem - parts.folder.size());
    const std::size_t added = hostMark().size() + DIGITS_OF_PID + PART.size() + parts.rest.size();
    if (parts.stem.size() + added <= SHORTEST_NAME_LIMIT) return parts;
    const std::size_t limit = LONGEST_NAME_IN(parts.folder);
    if (parts.stem.size() + added <= limit) return parts;
    const std::string number = "~" + numberOf(parts.stem);
    std::size_t room = limit > added + number.size() ? limit - added - number.size() : 0;
    while (room > 0 && (static_cast<unsigned char>(parts.stem[room]) & 0xC0U) == 0x80U) --room;
    parts.stem = parts.stem.substr(0, room) + number;
    return parts;
}

/// The marked names of this host in a folder when this run first wrote there, whoever made them.
const std::vector<std::string>& markedIn(const std::string& folder) {
    static std::map<std::string, std::vector<std::string>> searched;
    const auto [found, isNew] = searched.try_emplace(folder);
    if (isNew)
        for (std::string& name : NAMES_IN_FOLDER(folder.empty() ? "." : folder))
            if (name.find(hostMark()) != std::string::npos) found->second.push_back(std::move(name));
    return found->second;
}

/// "123.part.shp" in its three parts.
struct Mark {
    std::uint64_t pid = 0;
    std::string_view kind;  ///< blank: it is no mark
    std::string_view rest;
};

Mark markIn(std::string_view text) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits > DIGITS_OF_PID) return {};
    Mark mark{std::stoull(std::string(text.substr(0, digits))), {}, {}};
    text.remove_prefix(digits);
    const std::string_view kind = text.starts_with(PART) ? PART : OLD;
    if (!text.starts_with(kind)) return {};
    mark.kind = kind;
    mark.rest = text.substr(kind.size());
    return mark;
}

/// True of what is named ".shp", and of what a library put beside it, when its process is gone.
bool isLeftover(const Mark& mark, std::string_view rest) {
    if (mark.kind.empty() || !mark.rest.starts_with(rest)) return false;
    const std::string_view beside = mark.rest.substr(rest.size());
    return (beside.empty() || beside.front() == '.' || beside.front() == '-') && PROCESS_IS_GONE(mark.pid);
}

}  // namespace

std::string MARKED_NAME(std::string_view name, std::size_t stem, std::string_view kind) {
    const Parts parts = partsOf(name, stem);
    return parts.folder + parts.stem + hostMark() + std::to_string(PROCESS_NUMBER()) + std::string(kind) + parts.rest;
}

void REMOVE_LEFTOVERS(std::string_view name, std::size_t stem) {
    const Parts parts = partsOf(name, stem);
    const std::string beginning = parts.stem + hostMark();
    for (const std::string& marked : markedIn(parts.folder)) {
        if (!marked.starts_with(beginning)) continue;
        const Mark mark = markIn(std::string_view(marked).substr(beginning.size()));
        if (!isLeftover(mark, parts.rest)) continue;
        const std::string place = std::string(name.substr(0, stem)) + std::string(mark.rest);
        const bool onlyOne = mark.kind == OLD && KIND_OF_FILE(place) == FileKind::Nothing;
        if (!onlyOne) REMOVE_TREE(parts.folder + marked);
    }
}

std::vector<AsideFile> LEFT_ASIDE(std::string_view name, std::size_t stem) {
    const Parts parts = partsOf(name, stem);
    const std::string beginning = parts.stem + hostMark();
    std::vector<AsideFile> files;
    for (const std::string& marked : markedIn(parts.folder)) {
        if (!marked.starts_with(beginning)) continue;
        const Mark mark = markIn(std::string_view(marked).substr(beginning.size()));
        // This process has put nothing there when the folder is searched: an ended one had its number.
        if (mark.kind != OLD || !(mark.pid == PROCESS_NUMBER() || PROCESS_IS_GONE(mark.pid))) continue;
        const std::string aside = parts.folder + marked;
        if (KIND_OF_FILE(aside) == FileKind::Nothing) continue;  // no longer
        files.push_back({aside, std::string(name.substr(0, stem)) + std::string(mark.rest)});
        if (mark.rest == parts.rest) std::swap(files.back(), files.front());
    }
    std::reverse(files.begin(), files.end());
    return files;
}

std::vector<std::string> ENDINGS_OF_MARKED(std::string_view markedStem) {
    const std::string folder = FILEFOLDERPATH(markedStem);
    const std::string leaf = FILENAMEEXT(markedStem);
    std::vector<std::string> endings;
    for (const std::string& name : NAMES_IN_FOLDER(folder.empty() ? "." : folder))
        if (name == leaf || name.starts_with(leaf + ".")) endings.push_back(name.substr(leaf.size()));
    return endings;
}
