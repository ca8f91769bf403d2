#include "platform/windows/midi_output.h"

#include <array>

namespace {

constexpr int kErrorTextBuffer = 128;

/// The mapper is the highest number of the calls' own type.
UINT systemDevice(int device) {
    return static_cast<UINT>(device);
}

/// Whether a code means that a device is gone that was there when it was opened.
bool meansLoss(MMRESULT code) {
    return code == MMSYSERR_NODRIVER || code == MMSYSERR_BADDEVICEID ||
           code == MMSYSERR_INVALHANDLE || code == MIDIERR_NODEVICE;
}

}  // namespace

MidiOutput::~MidiOutput() {
    for (const auto& [handle, device] : open_) {
        midiOutReset(device.output);
        midiOutClose(device.output);
    }
}

int MidiOutput::count() {
    return static_cast<int>(midiOutGetNumDevs());
}

std::optional<std::wstring> MidiOutput::name(int device) {
    MIDIOUTCAPSW capabilities{};
    if (midiOutGetDevCapsW(systemDevice(device), &capabilities, sizeof capabilities) != 0)
        return std::nullopt;
    const wchar_t* const name = capabilities.szPname;
    return std::wstring(name, wcsnlen(name, MAXPNAMELEN));
}

MidiOutput::Opened MidiOutput::open(int device) {
    HMIDIOUT opened = nullptr;
    const MMRESULT code = midiOutOpen(&opened, systemDevice(device), 0, 0, CALLBACK_NULL);
    if (code != MMSYSERR_NOERROR)
        return {static_cast<int>(code), 0};
    // Handles are never used twice, so that one kept too long cannot reach another device.
    open_.emplace(++lastHandle_, Device{opened, device, name(device).value_or(L"")});
    return {0, lastHandle_};
}

int MidiOutput::send(std::uint32_t handle, std::uint32_t message) {
    return noteLoss(handle, midiOutShortMsg(find(handle), message));
}

int MidiOutput::reset(std::uint32_t handle) {
    return noteLoss(handle, midiOutReset(find(handle)));
}

int MidiOutput::noteLoss(std::uint32_t handle, MMRESULT code) {
    const auto found = open_.find(handle);
    if (found != open_.end())
        found->second.gone = meansLoss(code);
    return static_cast<int>(code);
}

bool MidiOutput::gone(std::uint32_t handle) const {
    const auto found = open_.find(handle);
    return found != open_.end() && found->second.gone;
}

MidiOutput::Opened MidiOutput::reopen(std::uint32_t handle) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return {MMSYSERR_INVALHANDLE, 0};
    // The numbers of the others change when a device goes.
    const Device old = found->second;
    int number = old.number;
    const int devices = count();
    if (number >= 0)
        for (number = 0; number < devices && name(number) != old.name;)
            ++number;
    const Opened opened = open(number);
    if (opened.code == 0) {
        midiOutClose(old.output);
        open_.erase(handle);
    }
    return opened;
}

int MidiOutput::close(std::uint32_t handle) {
    midiOutReset(find(handle));  // ends every note that sounds
    const MMRESULT code = midiOutClose(find(handle));
    if (code == MMSYSERR_NOERROR)
        open_.erase(handle);
    return static_cast<int>(code);
}

std::wstring MidiOutput::errorText(int code) {
    std::array<wchar_t, kErrorTextBuffer> text{};
    if (midiOutGetErrorTextW(static_cast<MMRESULT>(code), text.data(), kErrorTextBuffer) != 0)
        return {};
    return text.data();
}

/// The calls answer a null handle with their own error.
HMIDIOUT MidiOutput::find(std::uint32_t handle) const {
    const auto found = open_.find(handle);
    return found == open_.end() ? nullptr : found->second.output;
}
