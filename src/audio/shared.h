#pragma once

// A field that the game thread and the audio thread both touch without a lock.

#include <atomic>
#include <cstdint>

// Reads and writes like a plain T. Relaxed order: a reader may see a value one buffer late, and
// no group of such fields is read as a consistent whole. Compiles to plain loads and stores.
template <typename T>
class Shared {
public:
    Shared() = default;
    Shared(T value) : value_(value) {} // NOLINT(google-explicit-constructor): reads as a T

    Shared& operator=(T value) {
        value_.store(value, std::memory_order_relaxed);
        return *this;
    }
    operator T() const { // NOLINT(google-explicit-constructor): reads as a T
        return value_.load(std::memory_order_relaxed);
    }

    static_assert(std::atomic<T>::is_always_lock_free);

private:
    std::atomic<T> value_{};
};

// A request: raised by the game thread after it has stored the values that belong to it. The
// mixer only compares it with the count it has served, so it may wrap.
class RequestCounter {
public:
    // Release: whoever sees the new count also sees the values stored before it.
    void raise() { count_.fetch_add(1, std::memory_order_release); }
    [[nodiscard]] std::uint32_t count() const { return count_.load(std::memory_order_acquire); }
    void reset() { count_.store(0, std::memory_order_relaxed); }

private:
    std::atomic<std::uint32_t> count_{0};
};
