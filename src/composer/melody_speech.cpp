#include "composer/melody_speech.h"

#include "composer/melody/composition.h"
#include "composer/notation/staff_entry.h"
#include "platform/user_text.h"
#include "widgets/piano_key_name.h"

#include <QLocale>
#include <QStringList>

#include <utility>

namespace {

constexpr QLatin1String kSeparator(", ");

QString nameOf(note_values::Duration duration) {
    return UserText::tr(note_values::rowOf(duration).name).toLower();
}

/// "minima col punto", "minima legata a croma", "terzina di croma".
QString durationInWords(double quarters) {
    const staff_entry::Figure figure = staff_entry::figureOf(quarters);
    if (!figure.exact)
        return UserText::tr("durata %1").arg(QLocale().toString(quarters));
    QStringList parts;
    for (const staff_entry::Value& value : figure.values) {
        const QString name = nameOf(value.duration);
        parts += value.dots > 0 ? UserText::tr("%1 col punto").arg(name) : name;
    }
    const QString values = parts.join(UserText::tr(" legata a "));
    return figure.triplet ? UserText::tr("terzina di %1").arg(values) : values;
}

}  // namespace

QString MelodySpeech::entryInWords(int index) const {
    const MelodyEntry& entry = composition_.melody.entry(index);
    const int note = entry.noteNumber();
    const bool rest = !pitch::isPlayable(note);
    QString words = rest ? UserText::tr("pausa") : noteInWords(note);
    words += kSeparator + durationInWords(entry.quarters());
    const letter::EntryLetter* letter = letter::find(entry.attribute);
    if (letter && letter->sign && !rest)
        words += kSeparator + UserText::tr(letter->name);
    return words;
}

QString MelodySpeech::entry(int index) const {
    if (!composition_.melody.has(index))
        return {};
    return QStringLiteral("%1: %2").arg(index + 1).arg(entryInWords(index));
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

void MelodySpeech::remember() {
    count_ = composition_.melody.EntryCount();
    active_ = activeEntry();
}

QString MelodySpeech::change() {
    const int before = count_;
    const QString gone = active_;
    remember();
    if (count_ == 0 || count_ >= before)
        return active_;
    return before - count_ == 1 ? UserText::tr("Tolta %1").arg(gone)
                                : UserText::tr("Tolte %1 voci").arg(before - count_);
}

QString MelodySpeech::opened() {
    remember();
    const QString count =
        count_ == 1 ? UserText::tr("1 voce") : UserText::tr("%1 voci").arg(count_);
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
    QString words = nameOf(static_cast<note_values::Duration>(settings.symbol()));
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
