// The threads of a run: work cut into numbered pieces that own what they write.
//
// Console, files and exits belong to the calling thread; a piece uses none of them but READ_AT, and does not cut its
// own work again. With one job nothing here starts a thread, and pieces are done in their order.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

constexpr int MOST_JOBS = 256;

/// How many threads the run may use, from 1, the calling one among them. Until it is set: 1.
void SET_JOBS(int jobs);
int JOBS();

/// Does piece 0 to count - 1, each once, on the threads of the run, and returns when all are done. What a piece throws
/// stops the pieces that have not begun, and is thrown here: of several that of the lowest number.
/// between: called on the calling thread behind each piece that it has done itself; for a count on the screen.
void DO_PIECES(std::size_t count, const std::function<void(std::size_t piece)>& work,
               const std::function<void()>& between = {});

/// A line of work in two steps: make(piece, slot) on any thread, ahead of take(piece, slot), which is called on the
/// calling thread in the order of the pieces. slot: from 0 to SLOTS_IN_ORDER() - 1; what is made in it stays untouched
/// until it has been taken. A failure of either stops both and is thrown here.
void DO_IN_ORDER(std::size_t count, const std::function<void(std::size_t piece, std::size_t slot)>& make,
                 const std::function<void(std::size_t piece, std::size_t slot)>& take);
std::size_t SLOTS_IN_ORDER();

/// Pieces that the other threads of the run do while the calling one goes on with something else. What they use has to
/// outlive them: finish(), cancel() or the end of this object waits. With one job nothing is ever begun.
class WorkAhead {
public:
    WorkAhead() = default;
    WorkAhead(WorkAhead&&) = default;
    WorkAhead& operator=(WorkAhead&&) = delete;
    ~WorkAhead();
    void begin(std::size_t count, std::function<void(std::size_t piece)> work);
    bool begun() const { return pieces_ != nullptr; }
    /// What has not begun never does; what has is waited for.
    void cancel();
    /// Does with the others what is left. True when pieces were begun and none of them has thrown: what they should
    /// have done is to be done otherwise, and fails there in its turn.
    bool finish();

    class Pieces;

private:
    std::shared_ptr<Pieces> pieces_;
};

/// Cancels the work ahead of all; its finish() is false then. At the end of a run, before files are closed.
void END_WORK_AHEAD();
