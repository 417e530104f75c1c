#include "services/output_set.h"

#include "platform/file_system.h"
#include "services/working_names.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <utility>

namespace {

struct Move {
    std::string from, to;
    std::string earlier;  ///< where the file that stood there waits; blank when there was none
    bool moved = false;
};

std::string markedStem(const PendingFile& file) {
    return file.working.substr(0, file.working.size() - (file.place.size() - file.stem));
}

Move moveOf(const PendingFile& file, const std::string& ending) {
    const std::string stem = file.place.substr(0, file.stem);
    return {markedStem(file) + ending, stem + ending, MARKED_NAME(stem + ending, file.stem, OLD)};
}

/// Of every file that was written, the main one first.
std::vector<Move> movesOf(const OutputSet& set) {
    std::vector<Move> moves;
    for (const PendingFile& file : set.files) {
        if (file.working.empty()) continue;
        const bool main = file.name == set.main;
        const auto add = [&](const std::string& ending) {
            Move move = moveOf(file, ending);
            const bool known =
                std::any_of(moves.begin(), moves.end(), [&move](const Move& m) { return m.from == move.from; });
            if (!known) moves.insert(main && move.to == file.place ? moves.begin() : moves.end(), std::move(move));
        };
        if (main || !file.ofLibrary) add(file.place.substr(file.stem));
        if (!file.ofLibrary) continue;
        for (const std::string& ending : ENDINGS_OF_MARKED(markedStem(file))) add(ending);
    }
    return moves;
}

/// What stands at the places waits beside them, so that it can come back. A single file needs no such step.
int setAside(std::vector<Move>& moves, std::string& failed) {
    for (Move& move : moves) {
        const FileKind there = KIND_OF_FILE(move.to);
        if (there == FileKind::File) TAKE_OVER_PERMISSIONS(move.to, move.from);
        const bool replacedAtOnce = moves.size() == 1 && there != FileKind::Folder;
        std::string earlier = std::exchange(move.earlier, {});
        if (there == FileKind::Nothing || replacedAtOnce) continue;
        REMOVE_TREE(earlier);
        failed = move.to;
        if (const int error = MOVE_FILE(move.to, earlier); error != 0) return error;
        move.earlier = std::move(earlier);
    }
    return 0;
}

void putBack(const std::vector<Move>& moves) {
    for (const Move& move : moves) {
        if (move.moved) MOVE_FILE(move.to, move.from);
        if (!move.earlier.empty()) MOVE_FILE(move.earlier, move.to);
    }
}

int moveAll(std::vector<Move>& moves, std::string& failed) {
    for (auto move = moves.rbegin(); move != moves.rend(); ++move) {
        failed = move->to;
        if (const int error = MOVE_FILE(move->from, move->to); error != 0) return error;
        move->moved = true;
    }
    return 0;
}

}  // namespace

PendingFile PENDING_FILE(const OutputSet& set, const std::string& name, const std::string& place) {
    PendingFile file{name, place, FILENAMEPATH(place).size(), {}, false};
    const std::string stem = FILENAMEEXT(set.stem);
    const std::string leaf = FILENAMEEXT(place);  // of another name where a link leads there
    if (leaf == stem || leaf.starts_with(stem + ".")) file.stem = FILEFOLDERPATH(place).size() + stem.size();
    file.working = MARKED_NAME(place, file.stem, PART);
    return file;
}

int MOVE_FILES(const OutputSet& set, std::string& failed) {
    std::vector<Move> moves = movesOf(set);
    int error = setAside(moves, failed);
    if (error == 0) error = moveAll(moves, failed);
    if (error != 0) putBack(moves);
    else
        for (const Move& move : moves)
            if (!move.earlier.empty()) REMOVE_TREE(move.earlier);
    return error;
}

void REMOVE_WORKING_FILES(const OutputSet& set) {
    for (const PendingFile& file : set.files) {
        if (file.working.empty()) continue;
        REMOVE_TREE(file.working);
        if (!file.ofLibrary) continue;
        for (const std::string& ending : ENDINGS_OF_MARKED(markedStem(file))) REMOVE_TREE(markedStem(file) + ending);
    }
}
