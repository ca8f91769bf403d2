#pragma once

#include "core/funzioni_mm.h"
#include "platform/desktop/qt_runtime.h"
#include "platform/dialogs.h"
#include "platform/folders.h"
#include "platform/help_viewer.h"
#include "platform/media.h"
#include "platform/midi_out.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

/// An output that takes everything and makes no sound, so that a figure is the program's own.
class SilentOutput : public MidiOut {
public:
    int deviceCount() override { return 0; }
    std::optional<QString> deviceName(int) override { return QStringLiteral("recorder"); }
    MidiOpenResult open(int) override { return {0, 1}; }
    int send(MidiHandle, std::uint32_t) override { return 0; }
    int reset(MidiHandle) override { return 0; }
    int close(MidiHandle) override { return 0; }
    bool gone(MidiHandle) const override { return false; }
    MidiOpenResult reopen(MidiHandle) override { return {0, 1}; }
    QString errorText(int) const override { return {}; }
};

class ArrivalRecorder : public SilentOutput {
public:
    struct Arrival {
        std::chrono::steady_clock::time_point when;
        std::uint32_t message;
    };
    std::vector<Arrival> arrivals;
    std::function<void(const Arrival&)> onArrival = [](const Arrival&) {};

    int send(MidiHandle, std::uint32_t message) override {
        arrivals.push_back({std::chrono::steady_clock::now(), message});
        onArrival(arrivals.back());
        return 0;
    }
};

inline bool isNoteOn(std::uint32_t message) {
    return (message & 0xF0) == 0x90 && message >> 16 != 0;
}

class NoMedia : public Media {
public:
    int command(const QString&) override { return 1; }
    QString errorText(int) const override { return {}; }
    bool playSound(const QString&, std::uint32_t) override { return false; }
};

class NoDialogs : public Dialogs {
public:
    void message(const QString& text) override { std::fprintf(stderr, "%s\n", qPrintable(text)); }
    bool confirm(const QString&) override { return false; }
    QString input(const QString&, const QString&, const QString&) override { return {}; }
};

class NoFolders : public Folders {
public:
    QString programFolder() const override { return {}; }
    bool fileExists(const QString&) const override { return false; }
    QString nativePath(const QString& path) const override { return path; }
};

class NoHelp : public HelpViewer {
public:
    void show(const QString&) override {}
};

/// The sound module over the real clock and an output that makes no sound.
template <typename RuntimeType = QtRuntime, typename Output = ArrivalRecorder>
struct SilentMachine {
    RuntimeType runtime;
    Output midi;
    NoMedia media;
    NoDialogs dialogs;
    FunzioniMM funzioniMM;

    explicit SilentMachine(Random random = [] { return 0.0F; })
        : funzioniMM(runtime, midi, media, dialogs, std::move(random)) {}
};
