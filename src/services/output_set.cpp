#include "services/output_set.h"

#include "platform/file_system.h"
#include "services/working_names.h"
#include "text_utils/paths.h"

#include <algorithm>
#include <utility>

namespace {

struct Move {
    std::string from, to;
    std::string earlier;  ///< where the file that stands there waits meanwhile; blank when it need not
    bool aside = false;   ///< it waits
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

/// Looks at what stands at the places, where there is memory to: nothing behind it needs any, so that a move that has
/// begun is ended or undone. A single file replaces another at once.
void prepare(std::vector<Move>& moves) {
    for (Move& move : moves) {
        const FileKind there = KIND_OF_FILE(move.to);
        if (there == FileKind::File) TAKE_OVER_PERMISSIONS(move.to, move.from);
        if (there == FileKind::Nothing || (moves.size() == 1 && there == FileKind::File)) move.earlier.clear();
        else REMOVE_TREE(move.earlier);
    }
}

/// What stands at the places waits beside them, the main file first; then the new files come, the main one last. The
/// errno of the first move that fails, and the move.
int moveAll(std::vector<Move>& moves, const Move*& failed) noexcept {
    for (Move& move : moves) {
        if (move.earlier.empty()) continue;
        failed = &move;
        if (const int error = MOVE_FILE(move.to, move.earlier); error != 0) return error;
        move.aside = true;
    }
    for (auto move = moves.rbegin(); move != moves.rend(); ++move) {
        failed = &*move;
        if (const int error = MOVE_FILE(move->from, move->to); error != 0) return error;
        move->moved = true;
    }
    return 0;
}

/// The first that stays aside.
const Move* putBack(const std::vector<Move>& moves) noexcept {
    const Move* left = nullptr;
    for (const Move& move : moves) {
        if (move.moved) MOVE_FILE(move.to, move.from);
        if (move.aside && MOVE_FILE(move.earlier, move.to) != 0 && left == nullptr) left = &move;
    }
    return left;
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

FailedMove MOVE_FILES(const OutputSet& set) {
    std::vector<Move> moves = movesOf(set);
    prepare(moves);
    const Move* stopped = nullptr;
    if (const int error = moveAll(moves, stopped); error != 0) {
        const Move* const left = putBack(moves);
        return {error, stopped->to, left != nullptr ? left->earlier : std::string{}};
    }
    for (const Move& move : moves)
        if (move.aside) REMOVE_TREE(move.earlier);
    return {};
}

bool PUT_BACK_EARLIER(const OutputSet& set, FailedMove& failed) {
    const std::string place = IS_DEVICE(set.main) ? std::string{} : LINK_TARGET(set.main);
    if (place.empty() || KIND_OF_FILE(place) != FileKind::Nothing) return false;
    const std::vector<AsideFile> files = LEFT_ASIDE(place, PENDING_FILE(set, set.main, place).stem);
    for (const AsideFile& file : files) {
        const int error = MOVE_FILE(file.aside, file.place);
        if (error == 0) continue;
        failed = {error, file.place, file.aside};
        break;
    }
    return !files.empty();
}

void REMOVE_WORKING_FILES(const OutputSet& set) {
    for (const PendingFile& file : set.files) {
        if (file.working.empty()) continue;
        REMOVE_TREE(file.working);
        if (!file.ofLibrary) continue;
        for (const std::string& ending : ENDINGS_OF_MARKED(markedStem(file))) REMOVE_TREE(markedStem(file) + ending);
    }
}
