#include "composer/exchange/braille_writer.h"

#include "composer/exchange/braille_cells.h"
#include "composer/exchange/braille_values.h"
#include "composer/exchange/score_heading.h"
#include "composer/score/bar_view.h"

#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace braille {
namespace {

using score::WrittenNote;

/// From here on a key signature says the number of its signs.
constexpr int kCountedSigns = 4;
constexpr int kTripletMembers = 3;
constexpr int kIndent = 2;  ///< of a line that goes on with a bar

template <std::size_t kCount>
QString cells(const std::array<char16_t, kCount>& sign) {
    return QString(reinterpret_cast<const QChar*>(sign.data()), kCount);
}

QString accidental(int alter) {
    if (alter == 0)
        return QChar(kNatural);
    return QString(std::abs(alter), QChar(alter > 0 ? kSharp : kFlat));
}

QString signature(const score::Notation& notation) {
    const int count = std::abs(notation.key.fifths);
    const QString sign = QChar(notation.key.fifths > 0 ? kSharp : kFlat);
    QString text =
        count < kCountedSigns ? sign.repeated(count) : QChar(kNumber) + upperDigits(count) + sign;
    if (notation.metre) {
        text += QChar(kNumber) + upperDigits(notation.metre->beats) +
                lowerDigits(notation.metre->beatValue);
    }
    return text;
}

/// The quarter note that the tempo counts, and the signature.
QString headingLine(const score::Notation& notation, int tempo) {
    const char16_t quarter =
        static_cast<char16_t>(kNotes[0] | cellsOf(note_values::Duration::Quarter).added);
    return QString(QChar(quarter)) + QChar(kEquals) + QChar(kNumber) + upperDigits(tempo) +
           QChar(kBlank) + signature(notation);
}

QString centred(const QString& line) {
    const qsizetype before = std::max<qsizetype>(0, (kCellsPerLine - line.size()) / 2);
    return QString(before, QChar(kBlank)) + line;
}

/// A title in as many lines as it takes; a word that is longer than a line is divided.
QStringList titleLines(const QString& title) {
    QStringList lines;
    QString line;
    for (QString word : literary(title).split(QChar(kBlank), Qt::SkipEmptyParts)) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > kCellsPerLine)
            lines += centred(std::exchange(line, {}));
        for (; word.size() > kCellsPerLine; word = word.mid(kCellsPerLine))
            lines += word.left(kCellsPerLine);
        line += (line.isEmpty() ? QString() : QString(QChar(kBlank))) + word;
    }
    if (!line.isEmpty())
        lines += centred(line);
    return lines;
}

/// Whether a note needs the mark of its octave: not for a second or a third, for a fourth or fifth
/// in another octave, and always beyond.
bool needsOctave(std::optional<int> before, int step) {
    constexpr int kThird = 2;
    constexpr int kFifth = 4;
    if (!before)
        return true;
    const int distance = std::abs(step - *before);
    const bool sameOctave = step / pitch::kDegrees == *before / pitch::kDegrees;
    return distance > kFifth || (distance > kThird && !sameOctave);
}

/// Writes notes one after the other, and knows which note came before.
class NoteWriter {
public:
    /// The first note of a line needs its octave, whatever came before.
    void startLine() { before_.reset(); }

    QString write(const WrittenNote& note) {
        QString text;
        if (note.letter && !note.isRest())
            text += articulation(note.letter->letter);
        if (note.accidental)
            text += accidental(*note.accidental);
        const ValueCells& value = cellsOf(note.value.value);
        if (note.isRest()) {
            text += QChar(value.rest);
        } else {
            const int step = note.spelling.step();
            if (needsOctave(before_, step))
                text += QChar(kOctaves[static_cast<std::size_t>(note.spelling.octave - 1)]);
            before_ = step;
            const auto degree = static_cast<std::size_t>(note.spelling.degree);
            text += QChar(static_cast<char16_t>(kNotes[degree] | value.added));
        }
        if (note.value.dotted)
            text += QChar(kDot);
        if (note.tiedOn)
            text += cells(kTie);
        return text;
    }

private:
    static QString articulation(char letter) {
        for (const Articulation& row : kArticulations) {
            if (row.letter == letter) {
                const QString sign = QChar(kStaccato);
                return row.prefix == kBlank ? sign : QChar(row.prefix) + sign;
            }
        }
        return {};
    }

    std::optional<int> before_;  ///< the step of the note before, on the same line
};

/// Whether the group that starts or ends with a note has three members.
bool hasThree(const std::vector<WrittenNote>& notes, std::size_t first) {
    const std::size_t last = first + kTripletMembers - 1;
    return last < notes.size() && notes[last].groupEnds && !notes[first].groupEnds &&
           !notes[last - 1].groupEnds;
}

bool endsThree(const std::vector<WrittenNote>& notes, std::size_t last) {
    const std::size_t before = kTripletMembers - 1;
    return last >= before && notes[last - before].groupStarts && hasThree(notes, last - before);
}

/// The signs of groups and values that stand before each note of a bar.
std::vector<QString> signsBefore(const std::vector<WrittenNote>& notes, bool valueSigns) {
    std::vector<QString> signs(notes.size());
    bool inSmall = false;
    bool separates = false;
    for (std::size_t i = 0; i < notes.size(); ++i) {
        if (std::exchange(separates, false))
            signs[i] += cells(kGroupsSeparate);
        const bool isSmall = notes[i].value.value >= kFirstSmall;
        if (valueSigns && isSmall != std::exchange(inSmall, isSmall))
            signs[i] += isSmall ? cells(kSmallerValues) : cells(kLargerValues);
        if (notes[i].groupStarts)
            signs[i] += hasThree(notes, i) ? QString(QChar(kTriplet)) : cells(kOtherTriplet);
        separates = notes[i].groupEnds && !endsThree(notes, i);
    }
    return signs;
}

/// Puts bars on lines and lines on pages.
class Layout {
public:
    explicit Layout(QStringList heading) : lines_(std::move(heading)) {}

    void add(const std::vector<WrittenNote>& notes, bool valueSigns, int number, bool isLast) {
        const std::vector<QString> signs = signsBefore(notes, valueSigns);
        const QString end = isLast ? cells(kDoubleBar) : QString();
        // On the line where it stands, if there is room; otherwise on a new one.
        NoteWriter writer = writer_;
        QString bar;
        for (std::size_t i = 0; i < notes.size(); ++i)
            bar += signs[i] + writer.write(notes[i]);
        if (!line_.isEmpty() && line_.size() + 1 + bar.size() + end.size() <= kCellsPerLine) {
            line_ += QChar(kBlank) + bar + end;
            writer_ = writer;
            return;
        }
        finishLine();
        line_ = QChar(kNumber) + upperDigits(number) + QChar(kBlank);
        for (std::size_t i = 0; i < notes.size(); ++i)
            addNote(notes[i], signs[i], i + 1 == notes.size() ? end : QString(QChar(kHyphen)));
        line_ += end;
    }

    QString text() {
        finishLine();
        QString text;
        for (qsizetype i = 0; i < lines_.size(); ++i) {
            if (i > 0 && i % kLinesPerPage == 0)
                text += QLatin1Char('\f');
            text += lines_[i] + QLatin1Char('\n');
        }
        return text;
    }

private:
    /// `behind` must find room behind the note as well.
    void addNote(const WrittenNote& note, const QString& signs, const QString& behind) {
        NoteWriter writer = writer_;
        QString text = signs + writer.write(note);
        if (line_.size() + text.size() + behind.size() > kCellsPerLine) {
            line_ += QChar(kHyphen);
            finishLine();
            line_ = QString(kIndent, QChar(kBlank));
            writer = writer_;
            text = signs + writer.write(note);
        }
        line_ += text;
        writer_ = writer;
    }

    void finishLine() {
        if (!line_.isEmpty())
            lines_ += std::exchange(line_, {});
        writer_.startLine();
    }

    QStringList lines_;
    QString line_;
    NoteWriter writer_;
};

}  // namespace

QString write(const score::BarView& view, const ScoreHeading& heading) {
    QStringList lines = titleLines(heading.title);
    lines += centred(headingLine(view.notation, heading.tempo));
    Layout layout(std::move(lines));
    for (std::size_t i = 0; i < view.bars.size(); ++i) {
        const std::vector<WrittenNote>& notes = view.bars[i].notes;
        layout.add(notes, needsValueSigns(notes, view.notation.metre), static_cast<int>(i) + 1,
                   i + 1 == view.bars.size());
    }
    return layout.text();
}

}  // namespace braille
