#include "core/funzioni_mm.h"

#include "core/blocking_wait.h"
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
    const std::int64_t packed = (std::int64_t{data2} * 256 + data1) * 256 + status;
    if (packed < 0 || packed > std::numeric_limits<std::uint32_t>::max())
        return;
    lastMessage_ = static_cast<std::uint32_t>(packed);
    lastSendResult_ = static_cast<std::int16_t>(output_.send(lastMessage_));
    if (lastSendResult_ != 0)
        ReportMidiError(UserText::tr("ShortMsg"), lastSendResult_);
}

void FunzioniMM::NoteOn(int channel, int note, int velocity) {
    SendShortMsg(static_cast<std::int16_t>(kNoteOnStatus + channel - 1),
                 static_cast<std::int16_t>(note), static_cast<std::int16_t>(velocity));
}

void FunzioniMM::NoteOff(int channel, int note) {
    NoteOn(channel, note, 0);
}

void FunzioniMM::ProgramChange(std::int32_t program) {
    output_.send(static_cast<std::uint32_t>(program * 256 + kProgramChangeStatus));
}

void FunzioniMM::ResetOutput() {
    output_.reset();
}

void FunzioniMM::PlayNoteIndex(std::int16_t index) {
    if (index == kSilence) {
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
    drawnIndex_ = random_.between(rangeLower_, rangeUpper_);
    if (lastNoteIndex_ > -1)
        silenceLastNote();
    NoteOn(kMelodyChannel, drawnIndex_ + pitch::kLowestNote, kPlayerVelocity);
    noteDrawn_ = true;
    lastNoteIndex_ = drawnIndex_;
    if (autoSilence_) {
        WaitSeconds(kDrawnNoteSeconds);
        silenceLastNote();
    }
}

std::int16_t FunzioniMM::RandomNoteIndex(std::int16_t lower, std::int16_t upper) {
    return lower == upper ? lower : random_.between(lower, upper);
}

void FunzioniMM::WaitSeconds(double seconds) {
    blocking_wait::wait(runtime_, seconds);
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
