#pragma once

#include "platform/midi_bytes.h"
#include "platform/midi_in.h"

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/// Hands over to the listener, in a pass of the runtime, what the threads of a system's MIDI inputs
/// receive. Copies hand over to the same listener, from any thread.
class MidiInDelivery {
public:
    explicit MidiInDelivery(Runtime* runtime) : runtime_(runtime) {}

    void begin(MidiInListener& listener) { target_->set(runtime_, &listener); }
    /// Nothing reaches the listener any more, not even what was received before, and the runtime is
    /// not used any more.
    void end() { target_->set(nullptr, nullptr); }

    void message(int input, std::uint32_t message) const {
        if (midi_bytes::isAboutKeys(message))
            hand([=](MidiInListener& listener, Instant at) {
                listener.received({at, input, message});
            });
    }
    void inputs(std::vector<MidiInput> inputs) const {
        hand([inputs = std::move(inputs)](MidiInListener& listener, Instant) {
            listener.inputsChanged(inputs);
        });
    }

private:
    struct Target {
        std::mutex mutex;
        Runtime* runtime = nullptr;          ///< guarded by the mutex
        MidiInListener* listener = nullptr;  ///< used by the runtime's thread alone

        void set(Runtime* newRuntime, MidiInListener* newListener) {
            const std::lock_guard lock(mutex);
            runtime = newRuntime;
            listener = newListener;
        }
    };

    template <typename Work>
    void hand(Work work) const {
        const std::lock_guard lock(target_->mutex);
        if (!target_->runtime)
            return;
        const Instant at = target_->runtime->now();
        target_->runtime->deliver(at, [target = target_, work = std::move(work), at] {
            if (target->listener)
                work(*target->listener, at);
        });
    }

    Runtime* runtime_;
    std::shared_ptr<Target> target_ = std::make_shared<Target>();
};
