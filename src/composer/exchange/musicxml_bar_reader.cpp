#include "composer/exchange/musicxml_bar_reader.h"

#include "composer/exchange/melody_builder.h"
#include "composer/exchange/musicxml_names.h"
#include "composer/exchange/musicxml_note.h"
#include "composer/exchange/xml_cursor.h"
#include "platform/user_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace musicxml {

using imported::kTicksPerQuarter;
using imported::LeftOut;

namespace {

constexpr int kMostStaves = 2;  ///< a grand staff
constexpr int kMostEndings = 30;
constexpr double kLargestDivisions = 1e6;
constexpr int kUsualRepeat = 2;
/// Nobody reads more of them.
constexpr qsizetype kMostFaults = 100;
/// No place in a bar is further from its beginning.
constexpr std::int64_t kLongestBar = 16 * imported::kLongestDuration;

const QString kYes = QStringLiteral("yes");

}  // namespace

void BarReader::readBar() {
    bar_ = {};
    bar_.number = xml_.attribute("number").left(8);
    bar_.signs.endings = endings_;
    position_ = 0;
    while (xml_.enterNext())
        readChild();
    score_.bars.push_back(std::move(bar_));
}

void BarReader::readChild() {
    const QStringView name = xml_.name();
    if (name == u"note")
        readNote();
    else if (name == u"backup")
        move(-1);
    else if (name == u"forward")
        move(1);
    else if (name == u"attributes")
        readAttributes();
    else if (name == u"barline")
        readBarline();
    else if (name == u"direction")
        readDirection();
    else if (name == u"sound")
        readSound();
    else {
        if (name == u"harmony" || name == u"figured-bass")
            score_.leaveOut(LeftOut::Others);
        xml_.leave();
    }
}

double BarReader::number(double otherwise) {
    bool isNumber = false;
    const double number = xml_.takeText().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? number : otherwise;
}

void BarReader::fault(const QString& reason) {
    const QString fault = imported::faultIn(bar_, reason);
    const bool isNew = score_.faults.isEmpty() || score_.faults.back() != fault;
    if (isNew && score_.faults.size() < kMostFaults)
        score_.faults += fault;
}

void BarReader::readAttributes() {
    while (xml_.enterNext()) {
        const QStringView name = xml_.name();
        if (name == u"divisions") {
            divisions_ = number(0);
            if (!(divisions_ > 0 && divisions_ <= kLargestDivisions)) {
                fault(UserText::tr("suddivisione del quarto non valida"));
                divisions_ = 1;
            }
        } else if (name == u"staves") {
            if (number(1) > kMostStaves)
                fault(UserText::tr("più di due pentagrammi"));
        } else if (name == u"transpose") {
            readTransposition();
        } else {
            if (name == u"measure-style")
                score_.leaveOut(LeftOut::Others);
            xml_.leave();
        }
    }
}

void BarReader::readTransposition() {
    constexpr double kFarthest = 100;
    double semitones = 0;
    while (xml_.enterNext()) {
        if (xml_.name() == u"chromatic")
            semitones += number(0);
        else if (xml_.name() == u"octave-change")
            semitones += number(0) * pitch::kSemitones;
        else
            xml_.leave();
    }
    transposition_ = static_cast<int>(std::clamp(semitones, -kFarthest, kFarthest));
}

/// Nothing for a duration that is no whole number of ticks, not above 0 or too long.
std::optional<std::int64_t> BarReader::ticksOf(double duration) const {
    constexpr double kRounding = 1e-6;
    const double ticks = duration * static_cast<double>(kTicksPerQuarter) / divisions_;
    const double whole = std::round(ticks);
    if (std::abs(ticks - whole) > kRounding * std::max(1.0, whole) || !(whole > 0) ||
        whole > static_cast<double>(imported::kLongestDuration))
        return std::nullopt;
    return static_cast<std::int64_t>(whole);
}

/// A program may have to round the duration of a tuplet to its divisions; type and tuplet then tell
/// what it stands for.
std::optional<std::int64_t> BarReader::durationOf(const NoteElement& element) const {
    const double division = static_cast<double>(kTicksPerQuarter) / divisions_;
    if (element.typeTicks) {
        const double difference =
            element.duration * division - static_cast<double>(*element.typeTicks);
        if (std::abs(difference) < division)
            return element.typeTicks;
    }
    return ticksOf(element.duration);
}

void BarReader::readNote() {
    const NoteElement element = musicxml::readNote(xml_);
    for (const LeftOut what : element.leftOut)
        score_.leaveOut(what);
    if (element.grace) {
        score_.leaveOut(LeftOut::Ornaments);
        return;
    }
    if (element.chord) {
        fault(UserText::tr("accordo"));
        return;
    }
    if (const auto ticks = durationOf(element))
        addNote(element, *ticks);
    else
        fault(UserText::tr("una durata che il programma non conosce"));
}

void BarReader::addNote(const NoteElement& element, std::int64_t ticks) {
    imported::Note note;
    note.onset = position_;
    note.duration = ticks;
    note.voice = element.voice;
    note.letter = element.letter;
    note.tieStarts = element.tieStarts;
    note.tieStops = element.tieStops;
    position_ = std::min(position_ + ticks, kLongestBar);
    bar_.length = std::max(bar_.length, position_);
    if (element.cue) {
        score_.leaveOut(LeftOut::Others);
        return;
    }
    if (!element.rest) {
        const int sounding = element.pitch.value_or(0) + transposition_;
        if (element.unpitched)
            fault(UserText::tr("una nota senza altezza"));
        else if (!element.pitch)
            fault(UserText::tr("una nota che non è un semitono"));
        else if (!pitch::isPlayable(sounding))
            fault(UserText::tr("una nota fuori dalle 5 ottave"));
        note.note = static_cast<pitch::NoteNumber>(sounding);
    }
    bar_.notes.push_back(note);
}

void BarReader::move(int sign) {
    std::int64_t ticks = 0;
    while (xml_.enterNext()) {
        if (xml_.name() == u"duration")
            ticks = ticksOf(number(0)).value_or(0);
        else
            xml_.leave();
    }
    position_ = std::clamp<std::int64_t>(position_ + sign * ticks, 0, kLongestBar);
    bar_.length = std::max(bar_.length, position_);
}

void BarReader::readBarline() {
    const bool isRight = xml_.attribute("location") != QLatin1String("left");
    while (xml_.enterNext()) {
        const QStringView name = xml_.name();
        if (name == u"repeat") {
            const bool forward = xml_.attribute("direction") == QLatin1String("forward");
            const int times = xml_.attribute("times").toInt();
            if (forward)
                bar_.signs.startsRepeat = true;
            else
                bar_.signs.timesRepeated = times > 0 ? times : kUsualRepeat;
        } else if (name == u"ending") {
            readEnding();
        } else if (name == u"segno" && !isRight) {
            bar_.signs.segno = true;
        } else if (name == u"coda" && !isRight) {
            bar_.signs.coda = true;
        }
        xml_.leave();
    }
}

void BarReader::readEnding() {
    if (xml_.attribute("type") != QLatin1String("start")) {
        endings_ = 0;
        return;
    }
    const QStringList numbers = xml_.attribute("number").split(QLatin1Char(','));
    for (const QString& text : numbers) {
        const int ending = text.trimmed().toInt();
        if (ending >= 1 && ending <= kMostEndings)
            endings_ |= 1U << ending;
    }
    bar_.signs.endings = endings_;
}

void BarReader::readDirection() {
    while (xml_.enterNext()) {
        if (xml_.name() == u"sound") {
            readSound();
            continue;
        }
        if (xml_.name() != u"direction-type") {
            xml_.leave();
            continue;
        }
        while (xml_.enterNext()) {
            const QStringView name = xml_.name();
            if (name == u"metronome") {
                readMetronome();
                continue;
            }
            if (name == u"words" || name == u"rehearsal")
                score_.leaveOut(LeftOut::Words);
            else if (name == u"dynamics" || name == u"wedge")
                score_.leaveOut(LeftOut::Dynamics);
            else if (name != u"segno" && name != u"coda")
                score_.leaveOut(LeftOut::Others);
            xml_.leave();
        }
    }
}

void BarReader::readMetronome() {
    double quarters = 0;
    double perMinute = 0;
    while (xml_.enterNext()) {
        if (xml_.name() == u"beat-unit") {
            const QString unit = xml_.takeText();
            for (std::size_t i = 0; i < kTypes.size(); ++i) {
                if (unit == QString::fromUtf8(kTypes[i]))
                    quarters = note_values::kWritten[i].quarters;
            }
        } else if (xml_.name() == u"beat-unit-dot") {
            quarters = note_values::dotted(quarters);
            xml_.leave();
        } else if (xml_.name() == u"per-minute") {
            perMinute = number(0);
        } else {
            xml_.leave();
        }
    }
    takeTempo(quarters * perMinute);
}

void BarReader::readSound() {
    imported::BarSigns& signs = bar_.signs;
    takeTempo(xml_.attribute("tempo").toDouble());
    signs.daCapo |= xml_.attribute("dacapo") == kYes;
    signs.dalSegno |= !xml_.attribute("dalsegno").isEmpty();
    signs.segno |= !xml_.attribute("segno").isEmpty();
    signs.coda |= !xml_.attribute("coda").isEmpty();
    signs.toCoda |= !xml_.attribute("tocoda").isEmpty();
    signs.fine |= !xml_.attribute("fine").isEmpty();
    xml_.leave();
}

/// A melody has one tempo: the first.
void BarReader::takeTempo(double tempo) {
    if (!(tempo > 0) || !std::isfinite(tempo))
        return;
    const double before = score_.tempo.value_or(tempo);
    if (std::abs(before - tempo) >= 1)
        score_.leaveOut(LeftOut::TempoChanges);
    score_.tempo = before;
}

}  // namespace musicxml
