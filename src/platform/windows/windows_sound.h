#pragma once

#include "platform/sound.h"
#include "platform/windows/timer_resolution.h"
#include "platform/windows/windows_media.h"
#include "platform/windows/windows_midi_in.h"
#include "platform/windows/windows_midi_out.h"

/// The system's multimedia calls.
class WindowsSound : public Sound {
public:
    WindowsSound(const Folders& folders, Runtime* runtime) : media_(folders), midiIn_(runtime) {}

    MidiOut& midiOut() override { return midiOut_; }
    Media& media() override { return media_; }
    MidiIn& midiIn() override { return midiIn_; }

private:
    TimerResolution resolution_;
    WindowsMidiOut midiOut_;
    WindowsMedia media_;
    WindowsMidiIn midiIn_;
};
