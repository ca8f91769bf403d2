#pragma once

#include "audio/sound_event.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

/// A queue from one producer thread to one consumer thread that neither locks nor allocates.
class EventQueue {
public:
    static constexpr std::size_t kCapacity = 1024;

    /// Producer. Answers false, and takes nothing, if the queue is full.
    bool push(const SoundEvent& event) {
        if (freeSlots() == 0)
            return false;
        const auto index = pushed_.load(std::memory_order_relaxed);
        events_[index % kCapacity] = event;
        pushed_.store(index + 1, std::memory_order_release);
        return true;
    }

    /// Producer: how many pushes are certain to succeed now.
    std::size_t freeSlots() const {
        return kCapacity - static_cast<std::size_t>(pushed_.load(std::memory_order_relaxed) -
                                                    popped_.load(std::memory_order_acquire));
    }

    /// Consumer: the oldest event, or nothing.
    const SoundEvent* front() const {
        const auto index = popped_.load(std::memory_order_relaxed);
        if (index == pushed_.load(std::memory_order_acquire))
            return nullptr;
        return &events_[index % kCapacity];
    }

    /// Consumer: removes the front, of which there must be one.
    void pop() {
        popped_.store(popped_.load(std::memory_order_relaxed) + 1, std::memory_order_release);
    }

    std::uint64_t pushed() const { return pushed_.load(std::memory_order_acquire); }
    std::uint64_t popped() const { return popped_.load(std::memory_order_acquire); }

private:
    std::array<SoundEvent, kCapacity> events_;
    std::atomic<std::uint64_t> pushed_ = 0;
    std::atomic<std::uint64_t> popped_ = 0;
};
