#include "composer/melody/melody.h"

#include "composer/melody/rhythm.h"
#include "platform/user_text.h"

#include <QList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr QLatin1Char kEnd(';');
const QLatin1String kRestToken("00");

QList<QStringView> fieldsOf(const QString& text) {
    return QStringView(text).split(kEnd);
}

}  // namespace

QString damagedMelodyText() {
    return UserText::tr("File corrotto !!!");
}

MelodyEntry MelodyEntry::make(pitch::NoteNumber note, double duration, const QString& attribute,
                              QChar decimalSeparator) {
    return {noteToken(note), rhythm::durationText(duration, decimalSeparator), attribute};
}

QString MelodyEntry::noteToken(pitch::NoteNumber note) {
    return note == pitch::kRest ? QString(kRestToken) : QString::number(note);
}

pitch::NoteNumber MelodyEntry::noteNumber() const {
    bool isNumber = false;
    const short number = note.toShort(&isNumber);
    return isNumber ? number : pitch::NoteNumber{-1};
}

double MelodyEntry::quarters() const {
    return rhythm::numberFromText(duration).value_or(0);
}

Melody::Reading Melody::read(const MelodyTexts& texts) {
    const auto notes = fieldsOf(texts.notes);
    const auto durations = fieldsOf(texts.durations);
    const auto attributes = fieldsOf(texts.attributes);
    Reading reading;
    if (notes.size() != durations.size() || notes.size() != attributes.size()) {
        reading.result = ReadResult::Damaged;
        reading.damaged = std::make_shared<const MelodyTexts>(texts);
        return reading;
    }
    const bool unterminated =
        !notes.back().isEmpty() && !durations.back().isEmpty() && !attributes.back().isEmpty();
    const auto count = notes.size() - (unterminated ? 0 : 1);
    if (count > kMaxEntries) {
        reading.result = ReadResult::TooLong;
        return reading;
    }
    reading.entries.reserve(static_cast<std::size_t>(count));
    for (qsizetype i = 0; i < count; ++i) {
        reading.entries.push_back(
            {notes[i].toString(), durations[i].toString(), attributes[i].toString()});
    }
    return reading;
}

MelodyTexts Melody::texts() const {
    if (damaged_)
        return *damaged_;
    MelodyTexts texts;
    for (const MelodyEntry& entry : entries_) {
        texts.notes += entry.note + kEnd;
        texts.durations += entry.duration + kEnd;
        texts.attributes += entry.attribute + kEnd;
    }
    return texts;
}

QString Melody::lastNames(int characters) const {
    QString names;
    for (int i = EntryCount(); i > 0 && names.size() < characters; --i)
        names.prepend(pitch::NoteName(entry(i - 1).noteNumber()) + kEnd);
    return names.right(characters);
}

void Melody::exchange(MelodyDelta& delta) {
    changes_.record(delta.whole ? 0 : delta.position);
    if (delta.whole) {
        std::swap(entries_, delta.others);
        std::swap(damaged_, delta.otherDamaged);
        return;
    }
    const int newCount = static_cast<int>(delta.others.size());
    const auto first = entries_.begin() + delta.position;
    if (delta.count == newCount) {
        std::swap_ranges(delta.others.begin(), delta.others.end(), first);
    } else {
        const auto last = first + delta.count;
        std::vector<MelodyEntry> removed(std::make_move_iterator(first),
                                         std::make_move_iterator(last));
        const auto place = entries_.erase(first, last);
        entries_.insert(place, std::make_move_iterator(delta.others.begin()),
                        std::make_move_iterator(delta.others.end()));
        delta.others = std::move(removed);
    }
    delta.count = newCount;
}
