#pragma once

#include "platform/sound.h"
#include "platform/windows/timer_resolution.h"
#include "platform/windows/windows_media.h"
#include "platform/windows/windows_midi_out.h"

/// The system's multimedia calls.
class WindowsSound : public Sound {
public:
    explicit WindowsSound(const Folders& folders) : media_(folders) {}

    MidiOut& midiOut() override { return midiOut_; }
    Media& media() override { return media_; }

private:
    TimerResolution resolution_;
    WindowsMidiOut midiOut_;
    WindowsMedia media_;
};
