#include "platform/windows/midi_output.h"

#include <array>
#include <utility>

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

MMRESULT transmit(HMIDIOUT output, PlannedSender::Message message) {
    return message ? midiOutShortMsg(output, *message) : midiOutReset(output);
}

void prepareSendingThread() {
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL);
}

}  // namespace

MidiOutput::~MidiOutput() {
    for (auto& [handle, device] : open_) {
        end(device);
        midiOutClose(device.output);
    }
}

/// Takes back what is planned and ends every note that sounds.
void MidiOutput::end(Device& device) {
    device.sender->stop();
    midiOutReset(device.output);
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
    auto sender = std::make_unique<PlannedSender>(
        [opened](PlannedSender::Message message) {
            return static_cast<int>(transmit(opened, message));
        },
        prepareSendingThread);
    open_.emplace(++lastHandle_,
                  Device{opened, device, name(device).value_or(L""), false, std::move(sender)});
    return {0, lastHandle_};
}

int MidiOutput::send(std::uint32_t handle, std::uint32_t message) {
    return send(handle, PlannedSender::Message(message));
}

int MidiOutput::reset(std::uint32_t handle) {
    return send(handle, PlannedSender::Message());
}

/// The calls answer a null handle with their own error.
int MidiOutput::send(std::uint32_t handle, PlannedSender::Message message) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return static_cast<int>(transmit(nullptr, message));
    const int code = found->second.sender->send(message);
    found->second.gone = meansLoss(static_cast<MMRESULT>(code));
    return code;
}

bool MidiOutput::plan(std::uint32_t handle, PlannedSender::Message message, Instant at) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return false;
    found->second.sender->plan(message, at);
    return true;
}

void MidiOutput::cancelPlanned(std::uint32_t handle) {
    if (const auto found = open_.find(handle); found != open_.end())
        found->second.sender->cancel();
}

bool MidiOutput::gone(std::uint32_t handle) const {
    const auto found = open_.find(handle);
    return found != open_.end() &&
           (found->second.gone ||
            meansLoss(static_cast<MMRESULT>(found->second.sender->plannedCode())));
}

MidiOutput::Opened MidiOutput::reopen(std::uint32_t handle) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return {MMSYSERR_INVALHANDLE, 0};
    // The numbers of the others change when a device goes.
    Device& old = found->second;
    int number = old.number;
    const int devices = count();
    if (number >= 0)
        for (number = 0; number < devices && name(number) != old.name;)
            ++number;
    const Opened opened = open(number);
    if (opened.code == 0) {
        old.sender->stop();
        midiOutClose(old.output);
        open_.erase(handle);
    }
    return opened;
}

int MidiOutput::close(std::uint32_t handle) {
    const auto found = open_.find(handle);
    if (found != open_.end())
        end(found->second);
    const MMRESULT code = midiOutClose(found == open_.end() ? nullptr : found->second.output);
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
