#include "support/test_world.h"

#include <QStringView>

#include <gtest/gtest.h>

#include <cstdio>
#include <utility>

namespace {

constexpr int kGoneCode = 6;

std::string format(const char* pattern, long a, long b = 0, long c = 0) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), pattern, a, b, c);
    return text.data();
}

std::string lineOf(std::uint32_t message) {
    const long status = message & 0xFF;
    const long data1 = message >> 8 & 0xFF;
    const long data2 = message >> 16;
    if ((status & 0xF0) == 0x90)
        return format("on %ld %ld %ld", status - 0x90 + 1, data1, data2);
    if (status == 0xC0)
        return format("program %ld", data1);
    return format("message %lx", static_cast<long>(message));
}

}  // namespace

void MidiRecorder::note(const std::string& what) {
    writePlanned(runtime_.now());
    write(runtime_.now(), what);
}

void MidiRecorder::write(Instant when, const std::string& what) const {
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%.3f ", std::chrono::duration<double>(when).count());
    lines_.push_back(time.data() + what);
}

/// Writes down what is due before an instant, unless the device went.
void MidiRecorder::writePlanned(Instant before) const {
    const auto end = planned_.lower_bound(before);
    for (auto planned = planned_.begin(); planned != end; ++planned)
        if (!deviceGone)
            write(planned->first, planned->second);
    planned_.erase(planned_.begin(), end);
}

bool MidiRecorder::take(MidiHandle handle, const std::string& line, Instant at) {
    if (!takesPlans || handle == 0 || handle != lastHandle_ || deviceGone || sendCode != 0)
        return false;
    planned_.emplace(at, line);
    return true;
}

void MidiRecorder::replug() {
    cancelPlanned(lastHandle_);
    ++lastHandle_;
}

bool MidiRecorder::plan(MidiHandle handle, std::uint32_t message, Instant at) {
    return take(handle, lineOf(message), at);
}

bool MidiRecorder::planReset(MidiHandle handle, Instant at) {
    return take(handle, "reset", at);
}

void MidiRecorder::cancelPlanned(MidiHandle) {
    writePlanned(runtime_.now() + Instant{1});
    planned_.clear();
}

bool MidiRecorder::gone(MidiHandle handle) const {
    writePlanned(runtime_.now() + Instant{1});
    return deviceGone || handle != lastHandle_;
}

std::vector<std::string> MidiRecorder::take() {
    writePlanned(runtime_.now() + Instant{1});
    return std::exchange(lines_, {});
}

std::vector<std::string> MidiRecorder::takeUntimed() {
    auto lines = take();
    for (std::string& line : lines)
        line.erase(0, line.find(' ') + 1);
    return lines;
}

std::optional<QString> MidiRecorder::deviceName(int deviceId) {
    if (silentDevices.count(deviceId) || deviceId >= deviceCount())
        return std::nullopt;
    return deviceId == kMidiMapper ? mapperName : devices[static_cast<std::size_t>(deviceId)];
}

MidiOpenResult MidiRecorder::open(int deviceId) {
    note(format("open %ld", deviceId));
    if (openCode != 0)
        return {openCode, 0};
    return {0, ++lastHandle_};
}

MidiOpenResult MidiRecorder::reopen(MidiHandle) {
    if (deviceGone)
        return {kGoneCode, 0};
    note("reopen");
    return {0, ++lastHandle_};
}

int MidiRecorder::send(MidiHandle handle, std::uint32_t message) {
    if (handle == 0)
        return 0;
    if (deviceGone || handle != lastHandle_)
        return kGoneCode;
    note(lineOf(message));
    return sendCode;
}

int MidiRecorder::reset(MidiHandle handle) {
    if (handle != 0)
        note("reset");
    return 0;
}

int MidiRecorder::close(MidiHandle handle) {
    cancelPlanned(handle);
    note("close");
    return closeCode;
}

QString MidiRecorder::errorText(int code) const {
    return QStringLiteral("Errore di sistema %1").arg(code);
}

int MediaRecorder::command(const QString& text) {
    lines.push_back(text.toStdString());
    const auto code = codes.find(text.section(QLatin1Char(' '), 0, 0));
    return code == codes.end() ? 0 : code->second;
}

QString MediaRecorder::errorText(int code) const {
    return QStringLiteral("Errore multimediale %1").arg(code);
}

bool MediaRecorder::playSound(const QString& path, std::uint32_t flags) {
    const QString file = path.section(QLatin1Char('\\'), -1);
    lines.push_back("sound " + file.toStdString() + format(" %lx", static_cast<long>(flags)));
    return true;
}

void ScriptedDialogs::message(const QString& text) {
    lines.push_back("message: " + text.toStdString());
    if (duringMessage)
        duringMessage();
}

bool ScriptedDialogs::confirm(const QString& text) {
    lines.push_back("confirm: " + text.toStdString());
    if (confirmations.empty()) {
        ADD_FAILURE() << "unexpected question: " << text.toStdString();
        return false;
    }
    const bool answer = confirmations.front();
    confirmations.pop_front();
    return answer;
}

QString ScriptedDialogs::input(const QString& prompt, const QString& title,
                               const QString& proposed) {
    lines.push_back("input: " + prompt.toStdString() + " | " + title.toStdString() + " | " +
                    proposed.toStdString());
    return nextInput(prompt);
}

QString ScriptedDialogs::saveFile(const QString& title, const QString& proposed,
                                  const FileKind& kind) {
    lines.push_back("save: " + title.toStdString() + " | " + proposed.toStdString() + "." +
                    kind.suffix.toStdString());
    return nextInput(title);
}

QString ScriptedDialogs::openFile(const QString& title, const QString&, const QStringList&) {
    lines.push_back("open: " + title.toStdString());
    return nextInput(title);
}

QString ScriptedDialogs::nextInput(const QString& question) {
    if (inputs.empty()) {
        ADD_FAILURE() << "unexpected input box: " << question.toStdString();
        return {};
    }
    QString answer = inputs.front();
    inputs.pop_front();
    return answer;
}

Random ScriptedRandom::source() {
    return [this] {
        ++drawn;
        const float number = numbers.front();
        if (numbers.size() > 1)
            numbers.pop_front();
        return number;
    };
}

void MidiInFake::plug(std::vector<MidiInput> inputs) {
    inputs_ = std::move(inputs);
    if (listener_)
        listener_->inputsChanged(inputs_);
}

void MidiInFake::send(int input, std::uint32_t message, Instant at) const {
    if (listener_)
        listener_->received({at, input, message});
}

std::vector<QString> MidiInFake::inputNames() {
    std::vector<QString> names;
    for (const MidiInput& input : inputs_)
        names.push_back(input.name);
    return names;
}

void MidiInFake::listen(MidiInListener& listener) {
    listener_ = &listener;
    listener.inputsChanged(inputs_);
}

void TestWorld::plugKeyboard() {
    midiKeyboard.listen();
    midiIn.plug({{1, QStringLiteral("Tastiera di prova")}});
}

void TestWorld::openOutput() {
    funzioniMM.MidiOpen(kMidiMapper);
    midi.take();
}
