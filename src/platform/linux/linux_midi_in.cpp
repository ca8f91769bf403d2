#include "platform/linux/linux_midi_in.h"

#include "platform/linux/midi_in_port.h"
#include "platform/linux/midi_port_changes.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;

/// A sound system that starts is asked for its ports after this time, and after twice as long each
/// time until the last.
constexpr std::chrono::milliseconds kFirstLook = 100ms;
constexpr std::chrono::milliseconds kLastLook = 3200ms;

/// How long the end waits for the thread: a call to a sound server that hangs may never return.
constexpr auto kEndTimeout = 500ms;

}  // namespace

/// The inputs that are listened to; shared with the thread, which may outlast its owner.
class LinuxMidiIn::Inputs {
public:
    explicit Inputs(MidiInDelivery delivery) : delivery_(std::move(delivery)) {}

    static void run(const std::shared_ptr<Inputs>& inputs) {
        inputs->follow();
        const std::lock_guard lock(inputs->mutex_);
        inputs->ended_ = true;
        inputs->changed_.notify_one();
    }

    void end() {
        std::unique_lock lock(mutex_);
        ending_ = true;
        MidiPortChanges::wake();
        changed_.wait_for(lock, kEndTimeout, [this] { return ended_; });
    }

private:
    struct Open {
        MidiInput input;
        std::unique_ptr<MidiInPort> port;
    };

    bool ending() {
        const std::lock_guard lock(mutex_);
        return ending_;
    }

    void follow() {
        MidiPortChanges changes;
        std::optional<std::chrono::milliseconds> nextLook;
        MidiPortChanges::Change change;
        while (!ending()) {
            update(change.exited);
            change = changes.wait(nextLook);
            if (change.starts)
                nextLook = kFirstLook;
            else if (nextLook)
                nextLook = *nextLook < kLastLook ? std::optional(2 * *nextLook) : std::nullopt;
        }
        open_.clear();
    }

    /// Opens what is new, closes what is gone, and tells if there was any.
    void update(const std::vector<std::string>& exited) {
        const std::vector<PortAddress> listed = listMidiInputs();
        bool changed = std::erase_if(open_, [&](const Open& open) {
                           return !open.port->isAlive(exited) ||
                                  std::find(listed.begin(), listed.end(), open.port->address()) ==
                                      listed.end();
                       }) > 0;
        for (const PortAddress& address : listed) {
            if (std::none_of(open_.begin(), open_.end(), [&address](const Open& open) {
                    return open.port->address() == address;
                }))
                changed = open(address) || changed;
        }
        if (changed)
            tell();
    }

    bool open(const PortAddress& address) {
        const int id = ++lastId_;
        auto port = MidiInPort::open(address, [delivery = delivery_, id](std::uint32_t message) {
            delivery.message(id, message);
        });
        if (!port)
            return false;
        open_.push_back({{id, displayName(address)}, std::move(port)});
        return true;
    }

    void tell() {
        std::vector<MidiInput> inputs;
        for (const Open& open : open_)
            inputs.push_back(open.input);
        delivery_.inputs(std::move(inputs));
    }

    const MidiInDelivery delivery_;
    std::vector<Open> open_;  ///< the thread's own
    int lastId_ = 0;          ///< the thread's own
    std::mutex mutex_;
    std::condition_variable changed_;
    bool ending_ = false;
    bool ended_ = false;
};

std::vector<QString> LinuxMidiIn::inputNames() {
    std::vector<QString> names;
    for (const PortAddress& address : listMidiInputs())
        names.push_back(displayName(address));
    return names;
}

void LinuxMidiIn::listen(MidiInListener& listener) {
    stop();
    delivery_.begin(listener);
    inputs_ = std::make_shared<Inputs>(delivery_);
    std::thread([inputs = inputs_] { Inputs::run(inputs); }).detach();
}

void LinuxMidiIn::stop() {
    delivery_.end();
    if (const auto inputs = std::exchange(inputs_, nullptr))
        inputs->end();
}
