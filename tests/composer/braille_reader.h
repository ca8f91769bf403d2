#pragma once

#include "composer/score/bar_view.h"

#include <QRegularExpression>
#include <QString>

#include <functional>
#include <map>
#include <vector>

/// Reads braille music back by the rules of the manual, in the ASCII characters in which the manual
/// prints them. Written for the tests alone, and from the signs, not from the writer.
struct BrailleReader {
    struct Sound {
        int note;
        int units;
        char letter;  ///< 'p' for a rest
        bool operator==(const Sound&) const = default;
    };

    std::vector<Sound> sounds;
    QString fault;

    explicit BrailleReader(const score::Notation& theNotation) : notation(theNotation) {}

    /// The music without title and heading, lines and pages as they are.
    void read(const QString& text) {
        QString music;
        for (const QString& line : text.split(QRegularExpression("[\\n\\f]"), Qt::SkipEmptyParts)) {
            if (line.size() > 40)
                fault += "wide line;";
            // A line begins with a bar and its number, or goes on behind a hyphen.
            const bool goesOn = line.startsWith("  ");
            music += goesOn ? "~" : " ~";
            music += goesOn ? line.mid(2) : line.section(' ', 1);
            if (music.endsWith('"'))
                music.chop(1);
        }
        if (!music.endsWith("<K"))
            fault += "no double bar;";
        music.chop(2);
        for (const QString& bar : music.split(' ', Qt::SkipEmptyParts))
            readBar(bar);
    }

private:
    struct Note {
        int degree = -1;  ///< -1 for a rest
        int step = 0;
        int note = 0;
        int shape = 0;  ///< 0 for a whole note or a 16th, to 3 for an eighth note
        bool dotted = false;
        bool triplet = false;
        bool tied = false;
        bool small = false;
        char letter = 'n';

        int units(bool isSmall) const {
            if (shape == 3 && isSmall && dotted)
                return 0;
            const int plain = 384 >> (shape + (isSmall ? 4 : 0));
            return (dotted ? plain * 3 / 2 : plain) * (triplet ? 2 : 3) / 3;
        }
    };

    void readBar(const QString& bar) {
        static const QRegularExpression kNote(
            "(~)?(<1)?(~)?([,^]<1)?(2|_3')?(~)?(_8|\\.8|8)?(%%|%|<<|<|\\*)?([@^_\".;,])?"
            "([YZ&=(!)NOPQRST?:$\\]\\[W\\\\DEFGHIJMUVX])(')?(@C)?");
        std::vector<Note> notes;
        std::map<int, int> altered;
        bool small = false;
        bool hasSigns = false;
        int inTriplet = 0;  ///< notes that are still to come
        qsizetype at = 0;
        while (at < bar.size()) {
            const auto match = kNote.match(bar, at, QRegularExpression::NormalMatch,
                                           QRegularExpression::AnchorAtOffsetMatchOption);
            if (!match.hasMatch()) {
                fault += "unknown sign: " + bar.mid(at) + ";";
                return;
            }
            at = match.capturedEnd();
            if (!match.captured(1).isEmpty() || !match.captured(3).isEmpty() ||
                !match.captured(6).isEmpty())
                lastStep_ = -1;
            if (!match.captured(2).isEmpty())
                inTriplet = 0;
            if (const QString sign = match.captured(4); !sign.isEmpty()) {
                small = sign[0] == ',';
                hasSigns = true;
            }
            if (const QString sign = match.captured(5); !sign.isEmpty())
                inTriplet = sign == "2" ? 3 : 1000;
            Note note = noteOf(match.captured(10)[0]);
            note.dotted = !match.captured(11).isEmpty();
            note.tied = !match.captured(12).isEmpty();
            note.small = small;
            note.triplet = inTriplet-- > 0;
            const QString sign = match.captured(7);
            note.letter = sign.isEmpty() ? 'n' : sign == "8" ? 's' : sign == "_8" ? 't' : 'a';
            if (note.degree >= 0)
                place(note, match.captured(9), match.captured(8), altered);
            notes.push_back(note);
        }
        if (!hasSigns && notation.metre)
            chooseValues(notes);
        for (const Note& note : notes)
            append(note);
    }

    static Note noteOf(QChar c) {
        static const QStringList kShapes{"YZ&=(!)", "NOPQRST", "?:$]\\[W", "DEFGHIJ"};
        Note note;
        for (int shape = 0; shape < 4; ++shape) {
            if (const auto degree = kShapes[shape].indexOf(c); degree >= 0) {
                note.shape = shape;
                note.degree = static_cast<int>(degree);
            }
        }
        if (note.degree < 0)
            note.shape = static_cast<int>(QString("MUVX").indexOf(c));
        return note;
    }

    void place(Note& note, const QString& mark, const QString& sign, std::map<int, int>& altered) {
        if (!mark.isEmpty()) {
            note.step = (static_cast<int>(QString("@^_\".;,").indexOf(mark)) + 1) * 7 + note.degree;
        } else if (lastStep_ < 0) {
            fault += "no octave;";
        } else {
            note.step = lastStep_ / 7 * 7 + note.degree;
            for (const int other : {note.step - 7, note.step + 7}) {
                if (std::abs(other - lastStep_) <= 2)
                    note.step = other;
            }
        }
        lastStep_ = note.step;
        if (!sign.isEmpty())
            altered[note.step] = sign.count('%') - sign.count('<');
        const auto found = altered.find(note.step);
        constexpr int kPlaces[] = {1, 3, 5, 0, 2, 4, 6};
        const int fifths = notation.key.fifths;
        const int usual = fifths > kPlaces[note.degree]        ? 1
                          : -fifths > 6 - kPlaces[note.degree] ? -1
                                                               : 0;
        score::Spelling natural{note.degree, 0, note.step / 7};
        note.note = natural.note() + (found == altered.end() ? usual : found->second);
    }

    /// The one way in which the values fill the bar; if there are more, none is small.
    void chooseValues(std::vector<Note>& notes) const {
        std::vector<std::vector<int>> ways(notes.size() + 1,
                                           std::vector<int>(notation.metre->units() + 1));
        ways.back()[0] = 1;
        const auto from = [&](std::size_t i, bool small, int room) {
            const int units = notes[i].units(small);
            return units > 0 && units <= room ? ways[i + 1][room - units] : 0;
        };
        for (std::size_t i = notes.size(); i-- > 0;) {
            for (int room = 0; room < static_cast<int>(ways[i].size()); ++room)
                ways[i][room] = std::min(2, from(i, false, room) + from(i, true, room));
        }
        int room = notation.metre->units();
        if (ways[0][room] != 1)
            return;
        for (std::size_t i = 0; i < notes.size(); ++i) {
            notes[i].small = from(i, true, room) == 1;
            room -= notes[i].units(notes[i].small);
        }
    }

    void append(const Note& note) {
        const int units = note.units(note.small);
        if (tied_) {
            if (note.degree < 0)
                fault += "a rest is tied;";
            sounds.back().units += units;
        } else {
            sounds.push_back({note.note, units, note.degree < 0 ? 'p' : note.letter});
        }
        tied_ = note.tied;
    }

    score::Notation notation;
    int lastStep_ = -1;
    bool tied_ = false;
};
