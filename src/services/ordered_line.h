// Inside the workers: a line of pieces that are made on any thread and taken in their order.
#pragma once

#include "services/first_failure.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <limits>
#include <mutex>
#include <vector>

/// Pieces handed to whoever is free, with what they have made taken in order by the calling thread.
class OrderedLine {
public:
    OrderedLine(std::size_t count, std::size_t slots, const std::function<void(std::size_t, std::size_t)>& make)
        : count_(count), made_(slots, NONE), make_(make) {}

    /// Until everything has been begun.
    void makeAll() {
        std::unique_lock lock(mutex_);
        while (mayMake(lock)) makeNext(lock);
    }

    /// The calling thread makes the piece that is due itself where nobody has begun it.
    void takeAll(const std::function<void(std::size_t, std::size_t)>& take) {
        std::unique_lock lock(mutex_);
        for (std::size_t piece = 0; piece < count_ && !failed(); ++piece) {
            const std::size_t slot = piece % made_.size();
            while (made_[slot] != piece && !failed()) {
                if (begun_ < count_ && begun_ < taken_ + made_.size()) makeNext(lock);
                else changed_.wait(lock);
            }
            if (failed()) break;
            lock.unlock();
            try {
                take(piece, slot);
            } catch (...) {
                failure_.note(piece);
            }
            lock.lock();
            ++taken_;
            changed_.notify_all();
        }
        changed_.notify_all();
    }

    void rethrow() const { failure_.rethrow(); }

private:
    static constexpr std::size_t NONE = std::numeric_limits<std::size_t>::max();

    bool failed() const { return failure_.happened(); }

    bool mayMake(std::unique_lock<std::mutex>& lock) {
        changed_.wait(lock, [this] { return failed() || begun_ == count_ || begun_ < taken_ + made_.size(); });
        return !failed() && begun_ < count_;
    }

    void makeNext(std::unique_lock<std::mutex>& lock) {
        const std::size_t piece = begun_++;
        lock.unlock();
        try {
            make_(piece, piece % made_.size());
        } catch (...) {
            failure_.note(piece);
        }
        lock.lock();
        made_[piece % made_.size()] = piece;
        changed_.notify_all();
    }

    std::size_t count_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t begun_ = 0, taken_ = 0;
    std::vector<std::size_t> made_;  ///< per slot: the piece that lies in it
    const std::function<void(std::size_t, std::size_t)>& make_;
    Failure failure_;
};
