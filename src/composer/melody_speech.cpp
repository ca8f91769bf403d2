#include "composer/melody_speech.h"

#include "composer/engraved_melody.h"
#include "composer/melody/composition.h"
#include "composer/notation/entry_in_words.h"
#include "core/note_words.h"
#include "platform/user_text.h"

#include <QStringList>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr QLatin1String kSeparator(", ");

QString numbered(int index, const MelodyEntry& entry) {
    return QStringLiteral("%1: %2").arg(index + 1).arg(staff_entry::inWords(staffEntryOf(entry)));
}

using Entries = std::vector<MelodyEntry>;

int sizeOf(const Entries& entries) {
    return static_cast<int>(entries.size());
}

/// The stretch of a melody in which two versions of it differ.
struct Difference {
    int first = 0;
    Entries gone;
    Entries added;

    Difference(int from, Entries before, Entries after)
        : first(from), gone(std::move(before)), added(std::move(after)) {
        while (!gone.empty() && !added.empty() && gone.back() == added.back()) {
            gone.pop_back();
            added.pop_back();
        }
        // Among as many entries as before each stays in its place.
        if (gone.size() != added.size())
            return;
        const auto changed = std::mismatch(gone.begin(), gone.end(), added.begin());
        first += static_cast<int>(changed.first - gone.begin());
        gone.erase(gone.begin(), changed.first);
        added.erase(added.begin(), changed.second);
    }
};

}  // namespace

MelodySpeech::MelodySpeech(const Composition& composition) : composition_(composition) {}

MelodySpeech::~MelodySpeech() = default;

QString MelodySpeech::entry(int index) const {
    const Melody& melody = composition_.melody;
    return melody.has(index) ? numbered(index, melody.entry(index)) : QString();
}

int MelodySpeech::activeIndex() const {
    const StepMode& step = composition_.step;
    return step.frameOpen ? step.index : composition_.melody.EntryCount() - 1;
}

QString MelodySpeech::activeEntry() const {
    return composition_.melody.empty() ? UserText::tr("Melodia vuota") : entry(activeIndex());
}

QString MelodySpeech::whole() const {
    if (composition_.melody.empty())
        return activeEntry();
    QStringList words;
    if (!composition_.name.isEmpty())
        words += composition_.name;
    words += UserText::tr("Tempo %1").arg(composition_.tempo);
    for (int index = composition_.range.start(); index <= composition_.range.end(); ++index)
        words += entry(index);
    return words.join(QStringLiteral(". "));
}

Entries MelodySpeech::remember(int first) {
    const Entries& entries = composition_.melody.entries();
    Entries before(known_.begin() + first, known_.end());
    known_.resize(static_cast<std::size_t>(first));
    known_.insert(known_.end(), entries.begin() + first, entries.end());
    seen_ = composition_.melody.changes().revision();
    return before;
}

QString MelodySpeech::change() {
    const std::optional<int> first = composition_.melody.changes().firstSince(seen_);
    if (!first)
        return activeEntry();
    const Entries before = remember(*first);
    const Difference now(*first, before, {known_.begin() + *first, known_.end()});
    const int gone = sizeOf(now.gone);
    const int added = sizeOf(now.added);
    if (known_.empty() || gone + added == 0)
        return activeEntry();
    if (gone == 0 && added > 1)
        return UserText::tr("Aggiunte %1 voci").arg(added);
    if (gone <= 1 && added == 1)
        return entry(now.first);
    if (added > 0)
        return UserText::tr("Cambiate %1 voci").arg(std::max(gone, added));
    return gone == 1 ? UserText::tr("Tolta %1").arg(numbered(now.first, now.gone.front()))
                     : UserText::tr("Tolte %1 voci").arg(gone);
}

QString MelodySpeech::opened() {
    remember(composition_.melody.changes().firstSince(seen_).value_or(sizeOf(known_)));
    const int entries = sizeOf(known_);
    const QString count =
        entries == 1 ? UserText::tr("1 voce") : UserText::tr("%1 voci").arg(entries);
    return composition_.name.isEmpty() ? count : composition_.name + kSeparator + count;
}

QString MelodySpeech::saved() const {
    const MelodySource& source = composition_.source;
    return UserText::tr("Salvata: %1%2").arg(source.folder, source.fileName);
}

QString MelodySpeech::activeNote() const {
    const QString note = noteInWords(composition_.activeNote);
    return note.isEmpty() ? UserText::tr("Nessuna nota attiva") : note;
}

QString MelodySpeech::settings() const {
    const EntrySettings& settings = composition_.settings;
    QString words = note_values::nameInText(note_values::kAll[settings.symbol()]);
    if (settings.attribute() != EntrySettings::NoAttribute) {
        words +=
            kSeparator + UserText::tr(kAttributeButtons[settings.attribute()].toolTip).toLower();
    }
    return words;
}

QString MelodySpeech::range() const {
    return UserText::tr("Da %1 a %2")
        .arg(composition_.range.startBox(), composition_.range.endBox());
}

QString MelodySpeech::transposition() const {
    const int semitones = composition_.transposition;
    return semitones == 1 || semitones == -1 ? UserText::tr("%1 semitono").arg(semitones)
                                             : UserText::tr("%1 semitoni").arg(semitones);
}
