#pragma once

#include <QString>

#include <vector>

class MidiOut;

/// The outputs that the MIDI test offers, and which of them it opens at once.
namespace midi_test {

constexpr int kTestNote = 69;  ///< the "La" above middle C
constexpr int kTestVelocity = 100;

struct Device {
    int id = 0;  ///< -1 = the default output, else 0..n-1
    QString name;
};

struct DeviceList {
    std::vector<Device> devices;  ///< outputs that do not tell their name are left out
    /// Whether the first of them is to be opened at once. A single entry is not, unless other
    /// outputs were counted that do not tell their name.
    bool opensFirst = false;
};

DeviceList listDevices(MidiOut& midiOut);

/// A key of a MIDI keyboard: the name of its note, as far as it has one, and its number, as "Do
/// (60)".
QString keyName(int note);

}  // namespace midi_test
