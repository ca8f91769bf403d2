#include "shell/midi_test.h"

#include "core/pitch.h"
#include "platform/midi_out.h"

namespace midi_test {

DeviceList listDevices(MidiOut& midiOut) {
    DeviceList list;
    // One number is both the count of outputs and the place of the line added last; what it ends
    // as decides whether the first line is opened.
    int k = 0;
    const auto add = [&](int id) {
        if (const auto name = midiOut.deviceName(id)) {
            k = static_cast<int>(list.devices.size());
            list.devices.push_back({id, *name});
        }
    };
    add(kMidiMapper);
    const int count = midiOut.deviceCount();
    k = count;
    for (int id = 0; id < count; ++id)
        add(id);
    list.opensFirst = k > 0 && !list.devices.empty();
    return list;
}

QString keyName(int note) {
    const QString number = QString::number(note);
    return pitch::isPlayable(note) ? QStringLiteral("%1 (%2)").arg(pitch::NoteName(note), number)
                                   : number;
}

}  // namespace midi_test
