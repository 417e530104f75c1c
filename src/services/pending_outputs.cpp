#include "services/pending_outputs.h"

#include "platform/file_system.h"
#include "services/closed_folder.h"
#include "services/output_set.h"
#include "services/working_names.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <mutex>
#include <new>
#include <utility>

namespace {

/// Never destroyed: a signal may come while the process ends.
struct PendingOutputs {
    std::mutex guard;  ///< held while files are made or moved, so that a signal finds all of a set moved or none
    std::vector<OutputSet> sets;
};
PendingOutputs& pending() noexcept {
    alignas(PendingOutputs) static std::array<std::byte, sizeof(PendingOutputs)> room;
    static auto& outputs = *new (room.data()) PendingOutputs;
    return outputs;
}

bool folderRefuses(int error) { return error == EACCES || error == EPERM || error == EROFS; }

OutputSet* begunSet(std::string_view mainName) {
    for (OutputSet& set : pending().sets)
        if (set.begun && set.main == mainName) return &set;
    return nullptr;
}

/// Of several sets that a file could belong to, the one whose name it shares most of.
OutputSet& setFor(const std::string& name) {
    OutputSet* best = nullptr;
    for (OutputSet& set : pending().sets)
        if (set.begun && (name == set.main || name.starts_with(set.stem + ".")) &&
            (best == nullptr || set.stem.size() > best->stem.size()))
            best = &set;
    if (best != nullptr) return *best;
    pending().sets.push_back({name, FILENAMEPATH(name), false, {}});
    return pending().sets.back();
}

/// What to do where the folder takes no new file.
void makeWithoutNewFile(OutputSet& set, bool replaces, NewOutput& output) {
    const auto inPlace = [](const PendingFile& file) { return file.working.empty(); };
    const bool begun = std::any_of(set.files.begin(), set.files.end(), inPlace);
    if (!replaces) {
        output.making = begun ? Making::LeftOut : Making::Refused;
        return;
    }
    int error = 0;
    for (const OutputSet& other : pending().sets)
        if (!begun && error == 0 && (other.begun || &other == &set)) error = REFUSES_SET(other.main, output.failed);
    if (error != 0) {
        output.error = error;
        return;
    }
    set.files.back().working.clear();
    output.making = Making::InPlace;
}

void makeFile(const std::string& name, const std::string& place, bool replaces, NewOutput& output) {
    const std::lock_guard lock(pending().guard);
    OutputSet& set = setFor(name);
    std::erase_if(set.files, [&name](const PendingFile& other) { return other.name == name; });
    PendingFile file = PENDING_FILE(set, name, place);
    REMOVE_LEFTOVERS(place, file.stem);
    REMOVE_TREE(file.working);  // of an ended process that had this one's number
    output.path = file.working;
    set.files.push_back(std::move(file));  // known before it is there
    errno = 0;
    output.stream = CREATE_STREAM(output.path);
    output.error = output.stream == nullptr ? errno : 0;
    output.making = Making::Made;
    if (output.stream != nullptr) return;
    output.making = Making::Refused;
    if (folderRefuses(output.error)) makeWithoutNewFile(set, replaces, output);
    output.path = place;
    if (output.making != Making::InPlace) set.files.pop_back();
    if (!set.begun && set.files.empty()) pending().sets.pop_back();
}

void discard() noexcept {
    try {
        for (const OutputSet& set : pending().sets) REMOVE_WORKING_FILES(set);
        pending().sets.clear();
    } catch (const std::exception&) {  // no memory: they stay under their telling names
    }
}

}  // namespace

NewOutput MAKE_OUTPUT(const std::string& name) {
    NewOutput output;
    output.path = output.failed = name;
    output.making = Making::InPlace;
    const std::string place = IS_DEVICE(name) ? std::string{} : LINK_TARGET(name);
    if (place.empty()) return output;
    const bool replaces = KIND_OF_FILE(place) == FileKind::File;
    output.error = replaces ? REFUSES_WRITING(place) : 0;
    output.making = Making::Refused;
    if (output.error == 0) makeFile(name, place, replaces, output);
    return output;
}

int TRY_FOLDER(const std::string& folder) {
    const std::lock_guard lock(pending().guard);
    return REFUSES_MAKING(NAME_OF(PATH_OF(folder) / "new"));
}

void LEAVE_TO_LIBRARY(const std::string& name) {
    const std::lock_guard lock(pending().guard);
    for (OutputSet& set : pending().sets)
        for (PendingFile& file : set.files) file.ofLibrary = file.ofLibrary || file.name == name;
}

int OUTPUT_CLOSED(const std::string& name, bool whole) {
    const std::lock_guard lock(pending().guard);
    auto& sets = pending().sets;
    const auto set =
        std::find_if(sets.begin(), sets.end(), [&name](const OutputSet& s) { return !s.begun && s.main == name; });
    if (set == sets.end()) return 0;
    const int error = whole ? MOVE_FILES(*set).error : 0;
    if (!whole || error != 0) REMOVE_WORKING_FILES(*set);
    sets.erase(set);
    return error;
}

bool BEGIN_SET(std::string_view mainName, FailedMove& failed) {
    const std::lock_guard lock(pending().guard);
    if (begunSet(mainName) != nullptr) return false;
    pending().sets.push_back({std::string(mainName), FILENAMEPATH(mainName), true, {}});
    return PUT_BACK_EARLIER(pending().sets.back(), failed);
}

FailedMove MOVE_SET(std::string_view mainName) {
    const std::lock_guard lock(pending().guard);
    const OutputSet* const set = begunSet(mainName);
    if (set == nullptr) return {};
    FailedMove failed = MOVE_FILES(*set);
    if (failed.error == 0) pending().sets.erase(pending().sets.begin() + (set - pending().sets.data()));
    return failed;
}

void DISCARD_OUTPUTS() noexcept {
    const std::lock_guard lock(pending().guard);
    discard();
}

void DISCARD_OUTPUTS_FOR_GOOD() noexcept {
    pending().guard.lock();  // and never unlocked
    discard();
}
