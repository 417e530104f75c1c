// What goes wrong on several threads at once: the failure that one thread would have met first.
#pragma once

#include <atomic>
#include <cstddef>
#include <exception>
#include <limits>
#include <mutex>

/// The first failure of a job, by the number of its piece.
class Failure {
public:
    void note(std::size_t piece) {
        const std::lock_guard lock(mutex_);
        if (piece >= piece_) return;
        piece_ = piece;
        what_ = std::current_exception();
        happened_.store(true, std::memory_order_relaxed);
    }
    bool happened() const { return happened_.load(std::memory_order_relaxed); }
    void rethrow() const {
        if (what_) std::rethrow_exception(what_);
    }

private:
    std::mutex mutex_;
    std::atomic<bool> happened_ = false;
    std::size_t piece_ = std::numeric_limits<std::size_t>::max();
    std::exception_ptr what_;
};
