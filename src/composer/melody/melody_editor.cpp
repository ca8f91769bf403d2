#include "composer/melody/melody_editor.h"

#include "composer/melody/rhythm.h"
#include "core/instruments.h"
#include "platform/user_text.h"

#include <algorithm>
#include <utility>

namespace {

QString fullMessage() {
    return UserText::tr("La melodia è completa: non può avere più di %1 note !!!")
        .arg(Melody::kMaxEntries);
}

EditOutcome changed() {
    EditOutcome outcome;
    outcome.changed = true;
    return outcome;
}

EditOutcome refused(const QString& message) {
    EditOutcome outcome;
    outcome.message = message;
    return outcome;
}

}  // namespace

bool MelodyEditor::chooseActiveNote(pitch::NoteNumber note) {
    if (composition_.settings.attribute() == EntrySettings::Legato || !pitch::isPlayable(note))
        return false;
    composition_.activeNote = note;
    return true;
}

EditOutcome MelodyEditor::insertNote() {
    if (!pitch::isPlayable(composition_.activeNote))
        return {};
    return append(EntrySettings::Kind::Note, composition_.activeNote);
}

EditOutcome MelodyEditor::insertRest() {
    return append(EntrySettings::Kind::Rest, pitch::kRest);
}

EditOutcome MelodyEditor::append(EntrySettings::Kind kind, pitch::NoteNumber note) {
    const Melody& melody = composition_.melody;
    if (!melody.consistent())
        return refused(damagedMelodyText());
    EntrySettings settings = composition_.settings;
    const EntrySettings::Computed computed = settings.ComputeEntry(kind, melody);
    if (melody.full() && !computed.replacesLast)
        return refused(fullMessage());
    Recorder recorder(history_, composition_);
    const int replaced = computed.replacesLast ? 1 : 0;
    recorder.replace(melody.EntryCount() - replaced, replaced,
                     {MelodyEntry::make(note, computed.duration, computed.letter,
                                        composition_.decimalSeparator)});
    composition_.range.afterAppend(melody.EntryCount());
    composition_.bookmarks.refresh(melody.EntryCount());
    settings.resetAfterInsertion();
    composition_.settings = settings;
    recorder.commit();
    return changed();
}

EditOutcome MelodyEditor::deleteLast() {
    const Melody& melody = composition_.melody;
    if (melody.empty())
        return {};
    if (melody.EntryCount() == 1)
        return reset();
    Recorder recorder(history_, composition_);
    const int last = melody.EntryCount() - 1;
    recorder.replace(last, 1, {});
    composition_.range.coverAll(melody.EntryCount());
    composition_.bookmarks.refresh(melody.EntryCount());
    EditOutcome outcome = changed();
    StepMode& step = composition_.step;
    outcome.stepEntryGone = step.frameOpen && !step.follow(last, 1, 0);
    recorder.commit();
    return outcome;
}

EditOutcome MelodyEditor::reset() {
    Recorder recorder(history_, composition_);
    recorder.replaceAll({});
    composition_.range.coverAll(0);
    composition_.bookmarks = {};
    composition_.name.clear();
    composition_.source.emptied = true;
    composition_.step.leave();
    recorder.commit();
    EditOutcome outcome = changed();
    outcome.emptied = true;
    return outcome;
}

pitch::NoteNumber MelodyEditor::chosenNote(const EditChoice& choice) const {
    return choice.letter == letter::kPausa ? pitch::kRest : composition_.activeNote;
}

EditOutcome MelodyEditor::modify(const EditChoice& choice) {
    const int index = composition_.step.index;
    if (!composition_.melody.has(index) || choice.valueName == UserText::tr(rhythm::kNoValueName))
        return {};
    Recorder recorder(history_, composition_);
    const MelodyEntry& old = composition_.melody.entry(index);
    MelodyEntry entry = old;
    const pitch::NoteNumber note = chosenNote(choice);
    if (note != old.noteNumber())
        entry.note = MelodyEntry::noteToken(note);
    takeDuration(choice, entry);
    if (!choice.letter.isEmpty())
        entry.attribute = choice.letter;
    if (entry == old)
        return {};
    recorder.replace(index, 1, {std::move(entry)});
    recorder.commit();
    return changed();
}

/// A chosen triplet turns another duration into its triplet and is given up.
void MelodyEditor::takeDuration(const EditChoice& choice, MelodyEntry& entry) {
    double duration = rhythm::ValueNameToDuration(choice.valueName, choice.multiplier);
    if (duration == entry.quarters())
        return;
    EntrySettings& settings = composition_.settings;
    if (settings.attribute() == EntrySettings::Terzina) {
        duration = rhythm::tripletOf(duration);
        settings.clearAttribute();
    }
    entry.duration = rhythm::durationText(duration, composition_.decimalSeparator);
}

EditOutcome MelodyEditor::insertAfter(const EditChoice& choice) {
    const Melody& melody = composition_.melody;
    StepMode& step = composition_.step;
    const bool atFront = step.index == -1 && !melody.empty();
    if (!melody.has(step.index) && !atFront)
        return {};
    if (melody.full())
        return refused(fullMessage());
    const EntrySettings& settings = composition_.settings;
    const double duration = settings.attribute() == EntrySettings::Terzina
                                ? rhythm::tripletOf(settings.baseDuration())
                                : rhythm::ValueNameToDuration(choice.valueName, choice.multiplier);
    const QString attribute = choice.letter.isEmpty() ? QString(letter::kNormale) : choice.letter;
    PlayRange& range = composition_.range;
    step.outside = step.isOutside(range);
    Recorder recorder(history_, composition_);
    const int index = step.index++;
    recorder.replace(step.index, 0,
                     {MelodyEntry::make(chosenNote(choice), duration, attribute,
                                        composition_.decimalSeparator)});
    if (step.outside)
        range.afterInsertionOutside(index);
    else
        range.afterInsertion(melody.EntryCount());
    composition_.bookmarks.refresh(melody.EntryCount());
    recorder.commit();
    return changed();
}

EditOutcome MelodyEditor::deleteAtStep() {
    const Melody& melody = composition_.melody;
    StepMode& step = composition_.step;
    const int index = step.index;
    if (!melody.has(index))
        return {};
    if (melody.EntryCount() == 1)
        return reset();
    PlayRange& range = composition_.range;
    step.outside = step.isOutside(range);
    Recorder recorder(history_, composition_);
    recorder.replace(index, 1, {});
    --step.index;
    if (step.outside)
        range.afterDeletionOutside(index);
    else
        range.afterDeletion(step.index, melody.EntryCount());
    composition_.bookmarks.afterDeletion(index, melody.EntryCount());
    recorder.commit();
    return changed();
}

EditOutcome MelodyEditor::repeatFromStep() {
    const Melody& melody = composition_.melody;
    const StepMode& step = composition_.step;
    if (!step.frameOpen || !melody.has(step.index))
        return {};
    const int rangeEnd = composition_.range.end();
    const int end = step.index > rangeEnd ? melody.EntryCount() : rangeEnd + 1;
    const int count = end - step.index;
    if (melody.EntryCount() > Melody::kMaxEntries - count)
        return refused(fullMessage());
    const auto first = melody.entries().begin() + step.index;
    Recorder recorder(history_, composition_);
    recorder.replace(melody.EntryCount(), 0, {first, first + count});
    composition_.range.afterAppend(melody.EntryCount());
    composition_.bookmarks.refresh(melody.EntryCount());
    recorder.commit();
    return changed();
}

void MelodyEditor::changeTransposition(int semitones) {
    if (composition_.melody.empty())
        return;
    composition_.transposition =
        std::clamp(composition_.transposition + semitones, -Composition::kLargestTransposition,
                   Composition::kLargestTransposition);
}

QString MelodyEditor::transpositionHint() const {
    if (composition_.melody.empty())
        return {};
    return composition_.transposition == 0 ? UserText::tr("Scegli i semitoni")
                                           : UserText::tr("Ora clicca il numero");
}

EditOutcome MelodyEditor::transpose() {
    const int semitones = std::exchange(composition_.transposition, 0);
    std::vector<MelodyEntry> entries = composition_.melody.entries();
    bool anyNote = false;
    for (MelodyEntry& entry : entries) {
        const pitch::NoteNumber note = entry.noteNumber();
        if (note == pitch::kRest)
            continue;
        if (!pitch::isPlayable(note + semitones)) {
            return refused(
                UserText::tr("Trasposizione non riuscita !!!\n"
                             "Una o piu note andrebbero oltre le 5 ottave"));
        }
        anyNote = true;
        entry.note = QString::number(note + semitones);
    }
    if (!anyNote || semitones == 0)
        return {};
    Recorder recorder(history_, composition_);
    recorder.replace(0, composition_.melody.EntryCount(), std::move(entries));
    recorder.commit();
    return changed();
}

QString MelodyEditor::validateStart(const QString& box) {
    QString shown = composition_.range.validateStart(box);
    StepMode& step = composition_.step;
    if (std::exchange(step.active, false))
        step.index = composition_.range.start();
    return shown;
}

QString MelodyEditor::validateEnd(const QString& box) {
    QString shown = composition_.range.validateEnd(box, composition_.melody.EntryCount());
    composition_.step.active = false;
    return shown;
}

EditOutcome MelodyEditor::open(const MelodyFile& file) {
    EditOutcome outcome = recover(file);
    if (outcome.changed)
        markSaved();
    return outcome;
}

EditOutcome MelodyEditor::recover(const MelodyFile& file) {
    Melody::Reading reading = Melody::read(file.texts);
    if (reading.result == Melody::ReadResult::TooLong)
        return refused(fullMessage());
    const bool damaged = reading.result == Melody::ReadResult::Damaged;
    Recorder recorder(history_, composition_);
    recorder.replaceAll(std::move(reading.entries), std::move(reading.damaged));
    composition_.range.coverAll(composition_.melody.EntryCount());
    composition_.bookmarks = Bookmarks(file.bookmarks);
    composition_.name = file.name;
    composition_.source = file.source;
    composition_.document = ++lastDocument_;
    composition_.instrument = std::clamp(file.instrument, 0, instruments::kCount - 1);
    if (!damaged) {
        composition_.tempo =
            std::clamp(file.tempo, Composition::kLowestTempo, Composition::kHighestTempo);
    }
    composition_.step.leave();
    recorder.commit();
    EditOutcome outcome = changed();
    if (damaged)
        outcome.message = damagedMelodyText();
    return outcome;
}

EditOutcome MelodyEditor::setBookmarks(const QStringList& items) {
    if (items == composition_.bookmarks.items())
        return {};
    Recorder recorder(history_, composition_);
    composition_.bookmarks = Bookmarks(items);
    recorder.commit();
    return changed();
}
