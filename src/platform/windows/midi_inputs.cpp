#include "platform/windows/midi_inputs.h"

#include "platform/midi_bytes.h"
#include "platform/midi_through.h"

#include <set>
#include <utility>

namespace {

constexpr const wchar_t* kWindowClass = L"CantavistaMidi";
/// A device is announced before its driver is there.
constexpr UINT kLateLook = 1000;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kDataMask = 0x7F7FFFu;

std::wstring nameOf(UINT number) {
    MIDIINCAPSW capabilities{};
    if (midiInGetDevCapsW(number, &capabilities, sizeof capabilities) != MMSYSERR_NOERROR)
        return {};
    const wchar_t* const name = capabilities.szPname;
    return std::wstring(name, wcsnlen(name, MAXPNAMELEN));
}

bool passesOn(const std::wstring& name) {
    std::string narrow;
    for (const wchar_t c : name)
        narrow.push_back(c < 128 ? static_cast<char>(c) : '?');
    return midi_through::isName(narrow);
}

}  // namespace

MidiInputs::MidiInputs(Changed changed, Received received)
    : changed_(std::move(changed)), received_(std::move(received)), thread_([this] { run(); }) {
    std::unique_lock lock(mutex_);
    started_.wait(lock, [this] { return running_; });
}

MidiInputs::~MidiInputs() {
    if (window_)
        PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
}

std::map<MidiInputs::Key, UINT> MidiInputs::devices() {
    std::map<Key, UINT> found;
    const UINT count = midiInGetNumDevs();
    for (UINT number = 0; number < count; ++number) {
        const std::wstring name = nameOf(number);
        if (name.empty() || passesOn(name))
            continue;
        int place = 0;
        while (!found.emplace(Key{name, place}, number).second)
            ++place;
    }
    return found;
}

std::vector<std::wstring> MidiInputs::names() {
    std::vector<std::wstring> names;
    for (const auto& [key, number] : devices())
        names.push_back(key.first);
    return names;
}

/// The window is an ordinary one that is never shown: others are not told of devices.
void MidiInputs::run() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &MidiInputs::windowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kWindowClass;
    RegisterClassW(&windowClass);
    HWND window = CreateWindowExW(0, kWindowClass, L"", WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr,
                                  windowClass.hInstance, nullptr);
    if (window)
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    {
        const std::lock_guard lock(mutex_);
        window_ = window;
        running_ = true;
    }
    started_.notify_one();
    update();
    MSG message{};
    while (window && GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    for (auto& [key, device] : open_)
        close(device);
    open_.clear();
}

LRESULT CALLBACK MidiInputs::windowProcedure(HWND window, UINT message, WPARAM first,
                                             LPARAM second) {
    auto* owner = reinterpret_cast<MidiInputs*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (owner && message == WM_DEVICECHANGE) {
        owner->update();
        SetTimer(window, kTimer, kLateLook, nullptr);
    } else if (owner && message == WM_TIMER) {
        KillTimer(window, kTimer);
        owner->update();
    } else if (message == WM_DESTROY) {
        PostQuitMessage(0);
    }
    return DefWindowProcW(window, message, first, second);
}

void MidiInputs::update() {
    const std::map<Key, UINT> found = devices();
    // Of several of one name it is not known which has gone, so all of them are opened anew.
    std::set<std::wstring> fewer;
    for (const auto& [key, device] : open_)
        if (found.count(key) == 0)
            fewer.insert(key.first);
    bool changed = false;
    for (auto one = open_.begin(); one != open_.end();) {
        if (fewer.count(one->first.first) == 0) {
            ++one;
            continue;
        }
        close(one->second);
        one = open_.erase(one);
        changed = true;
    }
    for (const auto& [key, number] : found) {
        if (open_.count(key) == 0)
            changed = open(key, number) || changed;
    }
    if (!changed)
        return;
    std::vector<Input> inputs;
    for (const auto& [key, device] : open_)
        inputs.push_back({device.id, device.name});
    changed_(inputs);
}

/// An input that another program keeps to itself is left out.
bool MidiInputs::open(const Key& key, UINT number) {
    Device& device = open_[key];
    device = {this, ++lastId_, key.first, nullptr};
    const MMRESULT code =
        midiInOpen(&device.input, number, reinterpret_cast<DWORD_PTR>(&MidiInputs::inputProcedure),
                   reinterpret_cast<DWORD_PTR>(&device), CALLBACK_FUNCTION);
    if (code == MMSYSERR_NOERROR && midiInStart(device.input) == MMSYSERR_NOERROR)
        return true;
    if (code == MMSYSERR_NOERROR)
        close(device);
    open_.erase(key);
    return false;
}

void MidiInputs::close(Device& device) {
    midiInReset(device.input);
    midiInClose(device.input);
}

/// No buffer is given for long messages, so that there are none.
void CALLBACK MidiInputs::inputProcedure(HMIDIIN /*input*/, UINT message, DWORD_PTR device,
                                         DWORD_PTR first, DWORD_PTR /*second*/) {
    if (message != MIM_DATA && message != MIM_MOREDATA)
        return;
    const auto packed = static_cast<std::uint32_t>(first) & kDataMask;
    const auto* from = reinterpret_cast<const Device*>(device);
    if (midi_bytes::isChannelMessage(packed))
        from->owner->received_(from->id, packed);
}
