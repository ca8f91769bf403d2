#include "platform/windows/windows_midi_in.h"

#include <utility>

std::vector<QString> WindowsMidiIn::inputNames() {
    std::vector<QString> names;
    for (const std::wstring& name : MidiInputs::names())
        names.push_back(QString::fromStdWString(name));
    return names;
}

void WindowsMidiIn::listen(MidiInListener& listener) {
    stop();
    delivery_.begin(listener);
    input_ = std::make_unique<MidiInputs>(
        [delivery = delivery_](const std::vector<MidiInputs::Input>& inputs) {
            std::vector<MidiInput> named;
            for (const MidiInputs::Input& input : inputs)
                named.push_back({input.id, QString::fromStdWString(input.name)});
            delivery.inputs(std::move(named));
        },
        [delivery = delivery_](int id, std::uint32_t message) { delivery.message(id, message); });
}

void WindowsMidiIn::stop() {
    delivery_.end();
    input_.reset();
}
