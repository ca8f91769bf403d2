#pragma once

#include "composer/melody/composition.h"
#include "composer/notation/staff_entry.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <vector>

/// What is said of a melody, in its plainest form: it compares the whole melody with the one before
/// and knows which entry is which.
struct PlainSpeech {
    PlainSpeech(const Composition& composition, const std::vector<int>& entryIds)
        : c(composition), ids(entryIds) {}

    QString change() {
        const auto [gone, added, first] = difference();
        const QString goneWords = gone > 0 ? said.value(first) : "";
        remember();
        if (said.empty())
            return "Melodia vuota";
        if (gone == 0 && added == 0)
            return said.value(c.step.frameOpen ? c.step.index : said.size() - 1);
        if (added == 1 && gone < 2)
            return said[first];
        if (gone == 1 && added == 0)
            return "Tolta " + goneWords;
        return QString(added == 0  ? "Tolte %1 voci"
                       : gone == 0 ? "Aggiunte %1 voci"
                                   : "Cambiate %1 voci")
            .arg(std::max(gone, added));
    }
    QString opened() {
        remember();
        return (c.name == "" ? "" : c.name + ", ") + QString::number(said.size()) +
               (said.size() == 1 ? " voce" : " voci");
    }
    QString whole() const {
        if (c.melody.empty())
            return "Melodia vuota";
        QString all = (c.name == "" ? "" : c.name + ". ") + QString("Tempo %1").arg(c.tempo);
        for (int i = c.range.start(); i <= c.range.end(); ++i)
            all += ". " + said.value(i);
        return all;
    }
    QString activeNote() const {
        return c.activeNote == 0 ? "Nessuna nota attiva" : note(c.activeNote);
    }
    QString settings() const {
        const char* attributes[] = {", punto",   ", staccato", ", legato con la nota precedente",
                                    ", terzina", ", tenuto",   ", accentato",
                                    ""};
        return QString(kValues[c.settings.symbol()]) + attributes[c.settings.attribute()];
    }
    QString transposition() const {
        return QString::number(c.transposition) +
               (std::abs(c.transposition) == 1 ? " semitono" : " semitoni");
    }

private:
    static constexpr const char* kValues[] = {"semibreve", "minima",   "semiminima",  "croma",
                                              "semicroma", "biscroma", "semibiscroma"};

    struct Difference {
        int gone, added, first;
    };

    Difference difference() const {
        const auto& now = c.melody.entries();
        const bool asMany = now.size() == before.size();
        std::size_t first = 0, end = now.size(), endBefore = before.size();
        while (first < std::min(end, endBefore) && now[first] == before[first] &&
               (asMany || ids[first] == idsBefore[first]))
            ++first;
        while (end > first && endBefore > first && now[end - 1] == before[endBefore - 1])
            --end, --endBefore;
        return {int(endBefore - first), int(end - first), int(first)};
    }
    void remember() {
        before = c.melody.entries();
        idsBefore = ids;
        said.clear();
        for (const MelodyEntry& entry : before)
            said << QString("%1: %2").arg(said.size() + 1).arg(words(entry));
    }
    static QString note(int number) {
        const QStringList names{"Do",  "Do diesis",  "Re", "Re diesis", "Mi", "Fa", "Fa diesis",
                                "Sol", "Sol diesis", "La", "La diesis", "Si"};
        return number == 60 ? "Do centrale"
                            : QString("%1 %2").arg(names[number % 12]).arg(number / 12 - 1);
    }
    static QString words(const MelodyEntry& entry) {
        const bool plays = entry.noteNumber() >= 36 && entry.noteNumber() <= 95;
        const auto figure = staff_entry::figureOf(entry.quarters());
        QStringList values;
        for (const auto& value : figure.values)
            values << QString(kValues[int(value.duration)]) + (value.dots ? " col punto" : "");
        const QString duration = (figure.triplet ? "terzina di " : "") + values.join(" legata a ");
        const QString letter = entry.attribute.left(1);
        return (plays ? note(entry.noteNumber()) : "pausa") + ", " +
               (figure.exact ? duration : "durata " + QLocale().toString(entry.quarters())) +
               (!plays          ? ""
                : letter == "s" ? ", staccato"
                : letter == "t" ? ", tenuto"
                : letter == "a" ? ", accentato"
                                : "");
    }

    const Composition& c;
    const std::vector<int>& ids;
    std::vector<MelodyEntry> before;
    std::vector<int> idsBefore;
    QStringList said;
};
