#pragma once

#include "platform/dialogs.h"
#include "platform/media.h"
#include "platform/midi_out.h"

#include <chrono>
#include <vector>

/// Outputs that make no sound, so that a figure is the program's own.

class ArrivalRecorder : public MidiOut {
public:
    struct Arrival {
        std::chrono::steady_clock::time_point when;
        std::uint32_t message;
    };
    std::vector<Arrival> arrivals;

    int deviceCount() override { return 0; }
    std::optional<QString> deviceName(int) override { return QStringLiteral("recorder"); }
    MidiOpenResult open(int) override { return {0, 1}; }
    int send(MidiHandle, std::uint32_t message) override {
        arrivals.push_back({std::chrono::steady_clock::now(), message});
        return 0;
    }
    int reset(MidiHandle) override { return 0; }
    int close(MidiHandle) override { return 0; }
    QString errorText(int) const override { return {}; }
};

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
