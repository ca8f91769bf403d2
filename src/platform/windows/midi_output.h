#pragma once

#include "platform/planned_sender.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <windows.h>

/// The system's MIDI outputs, by its multimedia calls. Codes are the system's; 0 is success.
class MidiOutput {
public:
    struct Opened {
        int code = 0;
        std::uint32_t handle = 0;
    };

    MidiOutput() = default;
    ~MidiOutput();
    MidiOutput(const MidiOutput&) = delete;
    MidiOutput& operator=(const MidiOutput&) = delete;

    static int count();

    /// Device -1 is the mapper: the output that the user chose for the whole system.
    static std::optional<std::wstring> name(int device);

    Opened open(int device);
    int send(std::uint32_t handle, std::uint32_t message);
    int reset(std::uint32_t handle);
    int close(std::uint32_t handle);

    /// Sends a message, or a reset, at an instant. False for an unknown handle.
    bool plan(std::uint32_t handle, PlannedSender::Message message, Instant at);
    void cancelPlanned(std::uint32_t handle);

    /// Whether the device of an open handle is gone, by the codes of the last calls for it.
    bool gone(std::uint32_t handle) const;

    /// Opens a device that is gone again, by its name, and closes the old handle.
    Opened reopen(std::uint32_t handle);

    /// At most 127 characters; empty for a code that the system does not know.
    static std::wstring errorText(int code);

private:
    struct Device {
        HMIDIOUT output = nullptr;
        int number = 0;
        std::wstring name;
        bool gone = false;
        std::unique_ptr<PlannedSender> sender;
    };

    int send(std::uint32_t handle, PlannedSender::Message message);
    void end(Device& device);

    std::map<std::uint32_t, Device> open_;
    std::uint32_t lastHandle_ = 0;
};
