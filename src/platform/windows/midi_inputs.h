#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

/// The system's MIDI inputs, by its multimedia calls, without ports that only pass on what others
/// send. The system tells a hidden window when a device comes or goes.
class MidiInputs {
public:
    struct Input {
        int id = 0;  ///< never given twice
        std::wstring name;
    };
    /// The inputs that are listened to now; called on the thread of the hidden window.
    using Changed = std::function<void(const std::vector<Input>& inputs)>;
    /// A channel message, packed; called on a thread of the system.
    using Received = std::function<void(int id, std::uint32_t message)>;

    MidiInputs(Changed changed, Received received);
    ~MidiInputs();
    MidiInputs(const MidiInputs&) = delete;
    MidiInputs& operator=(const MidiInputs&) = delete;

    static std::vector<std::wstring> names();

private:
    struct Device {
        MidiInputs* owner = nullptr;
        int id = 0;
        std::wstring name;
        HMIDIIN input = nullptr;
    };
    /// A device by its name, and its place among those of the same name.
    using Key = std::pair<std::wstring, int>;

    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM first, LPARAM second);
    static void CALLBACK inputProcedure(HMIDIIN input, UINT message, DWORD_PTR device,
                                        DWORD_PTR first, DWORD_PTR second);
    static std::map<Key, UINT> devices();

    void run();
    void update();
    bool open(const Key& key, UINT number);
    static void close(Device& device);

    const Changed changed_;
    const Received received_;
    std::map<Key, Device> open_;  ///< the thread's own; the devices stay where they are
    int lastId_ = 0;
    std::mutex mutex_;
    std::condition_variable started_;
    bool running_ = false;  ///< guarded by the mutex, as the window
    HWND window_ = nullptr;
    std::thread thread_;
};
