#include "composer/playback/playback.h"

#include "composer/melody/composition.h"
#include "composer/melody/rhythm.h"
#include "platform/runtime.h"
#include "platform/user_text.h"

namespace {

constexpr std::chrono::milliseconds kDelay(3000);

}  // namespace

StepEntry StepEntry::of(const MelodyEntry& entry) {
    const QString valueName = rhythm::DurationToValueName(entry.quarters());
    return {pitch::NoteName(entry.noteNumber()), entry.attribute, valueName,
            valueName != UserText::tr(rhythm::kNoValueName)};
}

Playback::Playback(Runtime& runtime, FunzioniMM& funzioniMM, Composition& composition,
                   PlaybackView& view)
    : runtime_(runtime),
      composition_(composition),
      player_(runtime, funzioniMM, composition, view),
      view_(view) {}

void Playback::clickPlay() {
    leaveStep();
    player_.play(composition_.range.start(), composition_.range.end());
}

void Playback::clickDelayedPlay() {
    runtime_.blockUntil(runtime_.now() + kDelay);
    clickPlay();
}

void Playback::stop() {
    if (player_.playing())
        clickPlay();
}

void Playback::leaveStep() {
    composition_.step.leave();
    view_.hideEditFrame();
    view_.enableCanc(true);
}

QString Playback::step(StepMode::Direction direction) {
    if (composition_.melody.empty() || player_.playing())
        return {};
    composition_.step.step(direction, composition_.range);
    return showStep();
}

void Playback::stepTo(int entry) {
    if (!composition_.melody.has(entry) || player_.playing())
        return;
    composition_.step.goTo(entry, composition_.range);
    showStep();
}

/// Opens the edit frame and plays the entry; the message where there is none.
QString Playback::showStep() {
    StepMode& step = composition_.step;
    step.frameOpen = true;
    view_.openEditFrame();
    if (!composition_.melody.has(step.index))
        return describeAnomaly();
    takeStepEntry();
    view_.announceStep();
    view_.enableCanc(false);
    player_.setLoops(false);
    view_.untickLoop();
    player_.play(step.index, step.index);
    // A stop or a reset meanwhile ended step mode.
    if (step.active)
        view_.showEntryNumber(QString::number(step.index + 1));
    return {};
}

void Playback::takeStepEntry() {
    const MelodyEntry& entry = composition_.melody.entry(composition_.step.index);
    const pitch::NoteNumber note = entry.noteNumber();
    composition_.activeNote = pitch::isPlayable(note) ? note : pitch::kRest;
    view_.showStepEntry(StepEntry::of(entry));
}

void Playback::followStep(bool entryGone) {
    if (composition_.melody.empty()) {
        view_.hideEditFrame();
        view_.enableCanc(true);
    } else if (composition_.step.frameOpen) {
        view_.openEditFrame();
        takeStepEntry();
        if (entryGone)
            view_.enableCanc(true);
    }
    showStepPlace();
}

void Playback::showStepPlace() {
    const StepMode& step = composition_.step;
    if (!step.frameOpen) {
        view_.showEntryNumber({});
        view_.showEntryName({});
        return;
    }
    const bool onEntry = composition_.melody.has(step.index);
    view_.showEntryNumber(QString::number(step.index + 1));
    view_.showEntryName(
        onEntry ? pitch::NoteName(composition_.melody.entry(step.index).noteNumber()) : QString());
}

void Playback::playStepEntry() {
    player_.play(composition_.step.index, composition_.step.index);
}

QString Playback::describeAnomaly() const {
    return UserText::tr("Nini= %1\nNfine= %2\nIndiceNotaPP= %3\nCondizione anomala !!!")
        .arg(composition_.range.start())
        .arg(composition_.range.end())
        .arg(composition_.step.index);
}
