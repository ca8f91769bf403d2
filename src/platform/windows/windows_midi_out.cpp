#include "platform/windows/windows_midi_out.h"

#include "platform/user_text.h"

int WindowsMidiOut::deviceCount() {
    return MidiOutput::count();
}

std::optional<QString> WindowsMidiOut::deviceName(int deviceId) {
    const auto name = MidiOutput::name(deviceId);
    return name ? std::optional(QString::fromStdWString(*name)) : std::nullopt;
}

MidiOpenResult WindowsMidiOut::open(int deviceId) {
    const MidiOutput::Opened opened = output_.open(deviceId);
    return {opened.code, opened.handle};
}

int WindowsMidiOut::send(MidiHandle handle, std::uint32_t message) {
    return handle == 0 ? 0 : output_.send(handle, message);
}

int WindowsMidiOut::reset(MidiHandle handle) {
    return handle == 0 ? 0 : output_.reset(handle);
}

bool WindowsMidiOut::plan(MidiHandle handle, std::uint32_t message, Instant at) {
    return output_.plan(handle, message, at);
}

bool WindowsMidiOut::planReset(MidiHandle handle, Instant at) {
    return output_.plan(handle, std::nullopt, at);
}

int WindowsMidiOut::close(MidiHandle handle) {
    return output_.close(handle);
}

MidiOpenResult WindowsMidiOut::reopen(MidiHandle handle) {
    const MidiOutput::Opened opened = output_.reopen(handle);
    return {opened.code, opened.handle};
}

QString WindowsMidiOut::errorText(int code) const {
    const QString text = QString::fromStdWString(MidiOutput::errorText(code));
    return text.isEmpty() ? UserText::tr("Errore sconosciuto (codice %1).").arg(code) : text;
}
