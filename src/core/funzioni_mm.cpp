#include "core/funzioni_mm.h"

#include "platform/dialogs.h"
#include "platform/media.h"
#include "platform/user_text.h"

#include <limits>
#include <utility>

namespace {

constexpr int kNoteOnStatus = 0x90;
constexpr std::int32_t kProgramChangeStatus = 0xC0;
constexpr int kPlayerVelocity = 100;
constexpr double kDrawnNoteSeconds = 0.9;
constexpr int kMidiErrorTextLength = 127;
constexpr int kMediaErrorTextLength = 254;

/// Nothing for values that do not fit.
std::optional<std::uint32_t> packed(std::int16_t status, std::int16_t data1, std::int16_t data2) {
    const std::int64_t message = (std::int64_t{data2} * 256 + data1) * 256 + status;
    if (message < 0 || message > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(message);
}

std::optional<std::uint32_t> packedNoteOn(int channel, int note, int velocity) {
    return packed(static_cast<std::int16_t>(kNoteOnStatus + channel - 1),
                  static_cast<std::int16_t>(note), static_cast<std::int16_t>(velocity));
}

}  // namespace

FunzioniMM::FunzioniMM(Runtime& runtime, MidiOut& midiOut, Media& media, Dialogs& dialogs,
                       Random random)
    : runtime_(runtime),
      midiOut_(midiOut),
      media_(media),
      dialogs_(dialogs),
      random_(std::move(random)),
      output_(runtime, midiOut) {}

void FunzioniMM::onChange(std::function<void()> handler) {
    output_.onChange(handler);
    changed_ = std::move(handler);
}

bool FunzioniMM::MidiOpen(int deviceId) {
    // A lost output gives way only to one that opens.
    if (output_.isOpen())
        MidiClose();
    const int code = output_.open(deviceId);
    if (code != 0)
        ReportMidiError(UserText::tr("Open"), code);
    return code == 0;
}

void FunzioniMM::MidiClose() {
    if (const int code = output_.close(); code != 0)
        ReportMidiError(UserText::tr("Close midi error: "), code);
}

void FunzioniMM::SendShortMsg(std::int16_t status, std::int16_t data1, std::int16_t data2) {
    if (const auto message = packed(status, data1, data2))
        send(*message);
}

void FunzioniMM::send(std::uint32_t message) {
    lastMessage_ = message;
    lastSendResult_ = static_cast<std::int16_t>(output_.send(lastMessage_));
    if (lastSendResult_ != 0)
        ReportMidiError(UserText::tr("ShortMsg"), lastSendResult_);
}

void FunzioniMM::NoteOn(int channel, int note, int velocity) {
    if (const auto message = packedNoteOn(channel, note, velocity))
        send(*message);
}

void FunzioniMM::NoteOff(int channel, int note) {
    NoteOn(channel, note, 0);
}

void FunzioniMM::planNoteOn(int channel, int note, int velocity, Instant at) {
    if (const auto message = packedNoteOn(channel, note, velocity))
        output_.plan(*message, at);
}

void FunzioniMM::planNoteOff(int channel, int note, Instant at) {
    planNoteOn(channel, note, 0, at);
}

void FunzioniMM::ProgramChange(std::int32_t program) {
    output_.send(static_cast<std::uint32_t>(program * 256 + kProgramChangeStatus));
}

void FunzioniMM::ResetOutput() {
    output_.reset();
}

void FunzioniMM::PlayNoteIndex(std::int16_t index) {
    if (index == kSilence) {
        drawnAhead_.reset();
        silenceLastNote();
        return;
    }
    if (index >= 0) {
        if (lastNoteIndex_ > -1)
            silenceLastNote();
        NoteOn(kMelodyChannel, index + pitch::kLowestNote, kPlayerVelocity);
        lastNoteIndex_ = index;
        return;
    }
    if (!drawnAhead_) {
        WaitChain chain = waits();
        planRandomNote(chain);
    }
    const DrawnAhead drawn = *std::exchange(drawnAhead_, std::nullopt);
    drawnIndex_ = drawn.index;
    if (lastNoteIndex_ > -1)
        silenceLastNote();
    NoteOn(kMelodyChannel, drawnIndex_ + pitch::kLowestNote, kPlayerVelocity);
    noteDrawn_ = true;
    lastNoteIndex_ = drawnIndex_;
    if (autoSilence_) {
        waitUntil(drawn.end);
        silenceLastNote();
    }
}

void FunzioniMM::planRandomNote(WaitChain& chain) {
    planNote(random_.between(rangeLower_, rangeUpper_), chain);
}

void FunzioniMM::planNote(pitch::NoteIndex index, WaitChain& chain) {
    if (lastNoteIndex_ > -1)
        planNoteOff(kMelodyChannel, lastNoteIndex_ + pitch::kLowestNote, chain.reached());
    planNoteOn(kMelodyChannel, index + pitch::kLowestNote, kPlayerVelocity, chain.reached());
    if (autoSilence_)
        planNoteOff(kMelodyChannel, index + pitch::kLowestNote,
                    chain.afterSeconds(kDrawnNoteSeconds));
    drawnAhead_ = {index, chain.reached()};
}

std::int16_t FunzioniMM::RandomNoteIndex(std::int16_t lower, std::int16_t upper) {
    return lower == upper ? lower : random_.between(lower, upper);
}

void FunzioniMM::WaitSeconds(double seconds) {
    waitUntil(waits().afterSeconds(seconds));
}

WaitChain FunzioniMM::waits() {
    return WaitChain(runtime_);
}

void FunzioniMM::waitUntil(Instant end) {
    runtime_.blockUntil(end);
}

bool FunzioniMM::waitUnless(Instant end, const std::function<bool(const QEvent&)>& ends) {
    return runtime_.blockUnless(end, ends);
}

void FunzioniMM::MediaOpen(const QString& path) {
    if (media_.command(QStringLiteral("OPEN ") + path + QStringLiteral(" ALIAS jepa ")) != 0)
        mediaOpenFailed_ = true;
}

void FunzioniMM::MediaPlay() {
    sendMediaCommand(QStringLiteral("PLAY jepa"), UserText::tr("Play file midi error: "));
}

void FunzioniMM::MediaClose() {
    sendMediaCommand(QStringLiteral("CLOSE jepa"), UserText::tr("Close file midi error: "));
}

void FunzioniMM::PlaySoundFile(const QString& path, bool defaultIfMissing) {
    const std::uint32_t flags = kSoundAsync | kSoundFileName;
    media_.playSound(path, defaultIfMissing ? flags : flags | kSoundNoDefault);
}

void FunzioniMM::chooseInstrument(std::int32_t program) {
    setCurrentInstrument(program);
    ProgramChange(program);
}

void FunzioniMM::setCurrentInstrument(std::int32_t program) {
    currentInstrument_ = program;
    if (changed_)
        changed_();
}

void FunzioniMM::ReportMidiError(const QString& operation, int code) {
    dialogs_.message(UserText::tr("Operation:") + operation + QStringLiteral("\r\n") +
                     midiOut_.errorText(code).left(kMidiErrorTextLength));
}

void FunzioniMM::silenceLastNote() {
    NoteOff(kMelodyChannel, lastNoteIndex_ + pitch::kLowestNote);
}

void FunzioniMM::sendMediaCommand(const QString& command, const QString& failure) {
    if (const int code = media_.command(command); code != 0)
        dialogs_.message(failure + media_.errorText(code).left(kMediaErrorTextLength));
}
