#include "composer/playback/melody_player.h"

#include "composer/melody/composition.h"
#include "composer/playback/play_schedule.h"
#include "core/funzioni_mm.h"

void MelodyPlayer::play(std::int16_t start, std::int16_t end) {
    if (composition_.melody.empty())
        return;
    playing_ = !playing_;
    view_->showPlaying(playing_);
    if (playing_)
        view_->enableCanc(false);
    view_->showEntryNumber(QStringLiteral("0"));
    if (playPasses(start, end))
        finish();
}

/// False if an entry was too short to be played.
bool MelodyPlayer::playPasses(std::int16_t start, std::int16_t end) {
    Articulation articulation;
    PlaySchedule schedule(runtime_);
    int index = start;
    Instant passStart = schedule.due();
    while (true) {
        runtime_.yield();
        if (runtime_.ending())
            playing_ = false;
        if (!playing_ || !composition_.melody.has(index))
            return true;
        if (!playEntry(index, articulation, schedule))
            return false;
        if (++index <= end) {
            schedule.pause(Articulation::kGapMs);
            continue;
        }
        if (!keepsLastNumber_)
            view_->showEntryNumber(QStringLiteral("0"));
        if (!loops_ || !playing_)
            return true;
        // A range that takes no time at all would keep the processor busy for nothing.
        if (schedule.due() == passStart)
            schedule.pause(Articulation::kGapMs);
        passStart = schedule.due();
        index = start;
    }
}

bool MelodyPlayer::playEntry(int index, Articulation& articulation, PlaySchedule& schedule) {
    schedule.beginEntry();
    const MelodyEntry& entry = composition_.melody.entry(index);
    const pitch::NoteNumber note = entry.noteNumber();
    view_->showEntryNumber(QString::number(index + 1));
    articulation.articulate(entry.attribute, entry.quarters(), composition_.tempo);
    view_->showEntryName(pitch::NoteName(note));
    if (entry.attribute != letter::kPausa) {
        if (articulation.soundingMs < 1)
            return false;
        soundNote(note, articulation, schedule);
    }
    schedule.pause(articulation.silenceMs);
    return true;
}

/// A note that is not on the keyboard takes its time in silence.
void MelodyPlayer::soundNote(pitch::NoteNumber note, const Articulation& articulation,
                             PlaySchedule& schedule) {
    const bool playable = pitch::isPlayable(note);
    if (playable) {
        view_->markKey(pitch::noteIndexOf(note), true);
        funzioniMM_.NoteOn(FunzioniMM::kMelodyChannel, note, articulation.velocity);
    }
    schedule.sound(articulation.soundingMs);
    if (playable) {
        funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
        view_->markKey(pitch::noteIndexOf(note), false);
    }
}

void MelodyPlayer::finish() {
    playing_ = false;
    view_->showPlaying(false);
    view_->enableCanc(false);
    view_->focusPlay();
    if (composition_.step.active)
        return;
    view_->showEntryNumber({});
    view_->showEntryName({});
    view_->enableCanc(true);
}

void MelodyPlayer::silenceAll() {
    for (pitch::NoteNumber note = pitch::kLowestNote; note <= pitch::kHighestNote; ++note) {
        funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
        view_->markKey(pitch::noteIndexOf(note), false);
    }
}
