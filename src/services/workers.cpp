#include "services/workers.h"

#include "services/first_failure.h"
#include "services/ordered_line.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// True on the threads of the run but the calling one: their pieces are not cut again.
thread_local bool isWorker = false;

}  // namespace

/// Numbered pieces that whoever is free takes off.
class WorkAhead::Pieces {
public:
    Pieces(std::size_t count, std::function<void(std::size_t)> work) : count_(count), work_(std::move(work)) {}

    bool allBegun() const { return next_.load(std::memory_order_relaxed) >= count_; }
    /// False when there is none left to begin.
    bool doNext() {
        const std::size_t piece = next_.fetch_add(1, std::memory_order_relaxed);
        if (piece >= count_ || failure_.happened()) return false;
        try {
            work_(piece);
        } catch (...) {
            failure_.note(piece);
        }
        return true;
    }
    /// What has not begun never does.
    void forget() {
        if (next_.exchange(count_, std::memory_order_relaxed) < count_) forgotten_ = true;
    }
    bool failed() const { return forgotten_ || failure_.happened(); }
    void rethrow() const { failure_.rethrow(); }

    std::size_t busy = 0;  ///< threads at it; the pool's

private:
    std::size_t count_;
    std::function<void(std::size_t)> work_;
    std::atomic<std::size_t> next_ = 0;
    bool forgotten_ = false;  ///< the calling thread's
    Failure failure_;
};

namespace {

using Pieces = WorkAhead::Pieces;

/// Threads that wait for one job at a time, in which the calling thread takes part, and for work ahead, which goes
/// before: nobody waits for the thread that does it.
class Pool {
public:
    ~Pool() { resize(1); }

    void resize(int jobs) {
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        wake_.notify_all();
        for (std::thread& thread : threads_) thread.join();
        threads_.clear();
        ending_ = false;
        jobs_ = jobs;
    }
    int jobs() const { return jobs_; }

    /// Calls `share` on every other thread that is free, at the same time as `own` on this one, which does what the
    /// others leave.
    void run(const std::function<void()>& share, const std::function<void()>& own) {
        start();
        {
            const std::lock_guard lock(mutex_);
            share_ = &share;
            ++job_;
        }
        wake_.notify_all();
        std::exception_ptr failure;
        try {
            own();
        } catch (...) {
            failure = std::current_exception();  // the others still use what belongs to the caller
        }
        std::unique_lock lock(mutex_);
        share_ = nullptr;
        done_.wait(lock, [this] { return busy_ == 0; });
        if (failure) std::rethrow_exception(failure);
    }

    void begin(const std::shared_ptr<Pieces>& pieces) {
        start();
        {
            const std::lock_guard lock(mutex_);
            ahead_.push_back(pieces);
        }
        wake_.notify_all();
    }

    /// Nothing of it begins any more; waits for what has begun.
    void end(Pieces& pieces) {
        std::unique_lock lock(mutex_);
        std::erase_if(ahead_, [&](const auto& other) { return other.get() == &pieces; });
        done_.wait(lock, [&] { return pieces.busy == 0; });
    }

    void endAhead() {
        std::unique_lock lock(mutex_);
        for (const auto& pieces : ahead_) pieces->forget();
        ahead_.clear();
        done_.wait(lock, [&] { return busyAhead_ == 0; });
    }

private:
    /// Where the system gives fewer threads, those that there are do the work.
    void start() {
        while (static_cast<int>(threads_.size()) + 1 < jobs_) {
            try {
                threads_.emplace_back([this, seen = job_] { wait(seen); });
            } catch (const std::system_error&) {
                jobs_ = static_cast<int>(threads_.size()) + 1;
            }
        }
    }

    void wait(std::uint64_t seen) {
        isWorker = true;
        for (;;) {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [&] { return ending_ || !ahead_.empty() || (share_ != nullptr && job_ != seen); });
            if (ending_) return;
            if (!ahead_.empty()) doAhead(lock);
            else doShare(lock, seen);
        }
    }

    void doAhead(std::unique_lock<std::mutex>& lock) {
        const std::shared_ptr<Pieces> pieces = ahead_.front();
        if (pieces->allBegun()) {
            ahead_.pop_front();
            return;
        }
        ++pieces->busy;
        ++busyAhead_;
        lock.unlock();
        pieces->doNext();
        lock.lock();
        --busyAhead_;
        if (--pieces->busy == 0) done_.notify_all();
    }

    void doShare(std::unique_lock<std::mutex>& lock, std::uint64_t& seen) {
        seen = job_;
        ++busy_;
        const std::function<void()>& share = *share_;
        lock.unlock();
        share();
        lock.lock();
        if (--busy_ == 0) done_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable wake_, done_;
    std::vector<std::thread> threads_;
    int jobs_ = 1;
    bool ending_ = false;
    std::uint64_t job_ = 0;                         ///< number of the job at hand
    std::size_t busy_ = 0;                          ///< threads that are at it
    const std::function<void()>* share_ = nullptr;  ///< while it lasts
    std::deque<std::shared_ptr<Pieces>> ahead_;
    std::size_t busyAhead_ = 0;
};

Pool& pool() {
    static Pool threads;
    return threads;
}

bool alone() { return isWorker || pool().jobs() == 1; }

}  // namespace

void SET_JOBS(int jobs) { pool().resize(std::clamp(jobs, 1, MOST_JOBS)); }

int JOBS() { return pool().jobs(); }

std::size_t SLOTS_IN_ORDER() { return JOBS() == 1 ? 1 : 2 * static_cast<std::size_t>(JOBS()); }

void DO_PIECES(std::size_t count, const std::function<void(std::size_t)>& work, const std::function<void()>& between) {
    if (alone() || count < 2) {
        for (std::size_t piece = 0; piece < count; ++piece) {
            work(piece);
            if (between) between();
        }
        return;
    }
    Pieces pieces(count, work);
    pool().run(
        [&] {
            while (pieces.doNext()) {
            }
        },
        [&] {
            while (pieces.doNext())
                if (between) between();
        });
    pieces.rethrow();
}

void DO_IN_ORDER(std::size_t count, const std::function<void(std::size_t, std::size_t)>& make,
                 const std::function<void(std::size_t, std::size_t)>& take) {
    if (alone() || count < 2) {
        for (std::size_t piece = 0; piece < count; ++piece) {
            make(piece, 0);
            take(piece, 0);
        }
        return;
    }
    OrderedLine line(count, SLOTS_IN_ORDER(), make);
    pool().run([&] { line.makeAll(); }, [&] { line.takeAll(take); });
    line.rethrow();
}

void END_WORK_AHEAD() { pool().endAhead(); }

WorkAhead::~WorkAhead() { cancel(); }

void WorkAhead::begin(std::size_t count, std::function<void(std::size_t)> work) {
    cancel();
    if (alone() || count == 0) return;
    pieces_ = std::make_shared<Pieces>(count, std::move(work));
    pool().begin(pieces_);
}

void WorkAhead::cancel() {
    if (pieces_ == nullptr) return;
    pool().end(*pieces_);
    pieces_ = nullptr;
}

bool WorkAhead::finish() {
    const std::shared_ptr<Pieces> pieces = pieces_;
    if (pieces == nullptr) return false;
    while (pieces->doNext()) {
    }
    cancel();
    return !pieces->failed();
}
