#pragma once

#include "composer/melody/rhythm.h"
#include "composer/plain_undo.h"

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

/// The editor's operations and the settings' in their plainest form: lists of tokens.
struct PlainEditor : PlainUndo {
    using Entries = std::vector<MelodyEntry>;

    bool keeps = false;

    QString names() const {
        QString all;
        for (const MelodyEntry& entry : c.melody.entries())
            all += pitch::NoteName(entry.noteNumber()) + u';';
        return all;
    }

    bool chooseActiveNote(pitch::NoteNumber note) {
        const bool takes = attribute() != 2 && note >= 36 && note <= 95;
        c.activeNote = takes ? note : c.activeNote;
        return takes;
    }
    void clickAttribute(int button) {
        const bool endsTriplet = attribute() == 3 && button == 3;
        setMode(attribute() == button ? 6 : button, endsTriplet ? 0 : triplets());
    }
    void chooseSymbol(int symbol) { c.settings.chooseSymbol(static_cast<std::uint8_t>(symbol)); }
    void setKeepsAttributes(bool on) { keeps = on; }
    bool moveRange(int arrow) {
        const int start = c.range.start() + (arrow == 1 ? 1 : 0) - (arrow == 0 ? 1 : 0);
        const int end = c.range.end() + (arrow == 3 ? 1 : 0) - (arrow == 2 ? 1 : 0);
        const bool fits = start >= 0 && start < end && end < count();
        if (fits)
            c.range.select(start, end, count());
        return fits;
    }
    void changeTransposition(int semitones) {
        if (count() > 0)
            c.transposition = std::clamp(c.transposition + semitones, -12, 12);
    }
    void stepTo(int entry) {
        c.step.active = true;
        setStep(entry);
        c.step.outside = isBeside();
    }
    void step(bool forward) {
        const int start = c.range.start();
        const int end = c.range.end();
        const int from = std::exchange(c.step.active, true) ? c.step.index : start - 1;
        const bool comesBack = std::exchange(c.step.outside, false) && (from < start || from > end);
        if (forward)
            setStep(from == end || comesBack ? start : from + 1);
        else
            setStep(from > start && !comesBack ? from - 1 : end);
    }
    QString validateStart(const QString& box) { return validate(box, true); }
    QString validateEnd(const QString& box) { return validate(box, false); }

    EditOutcome insertNote() {
        return c.activeNote == 0 ? EditOutcome{} : edit([this] { append(false); });
    }
    EditOutcome insertRest() {
        return edit([this] { append(true); });
    }
    EditOutcome deleteLast() {
        return edit([this] {
            if (count() == 0)
                return;
            if (count() == 1)
                return empty();
            const auto oldIds = ids;
            splice(count() - 1, 1, {});
            outcome.stepEntryGone = c.step.frameOpen && !follow(oldIds);
            countAgain(0, count() - 1);
        });
    }
    EditOutcome deleteAtStep() {
        return edit([this] {
            const int index = c.step.index;
            if (!c.melody.has(index))
                return;
            if (count() == 1)
                return empty();
            const auto kept = keptRange();
            splice(index, 1, {});
            QStringList items = c.bookmarks.items();
            for (QString& item : items)
                item = without(item, index + 1, count());
            c.bookmarks = Bookmarks(items);
            setStep(index - 1);
            if (!countKept(kept))
                countAgain(std::min<int>(c.range.start(), std::max(index - 1, 0)), c.range.end());
        });
    }
    EditOutcome modify(const EditChoice& choice) {
        return edit([&] {
            const int index = c.step.index;
            if (!c.melody.has(index) || choice.valueName == QStringLiteral("na"))
                return;
            MelodyEntry entry = c.melody.entry(index);
            if (entry.noteNumber() != noteOf(choice))
                entry.note = token(noteOf(choice));
            if (entry.quarters() != valueOf(choice)) {
                entry.duration = durationText(valueOf(choice));
                if (attribute() == 3)
                    setMode(6, triplets());
            }
            entry.attribute = choice.letter.isEmpty() ? entry.attribute : choice.letter;
            if (entry != c.melody.entry(index))
                splice(index, 1, {entry});
        });
    }
    EditOutcome insertAfter(const EditChoice& choice) {
        return edit([&] {
            const int index = c.step.index;
            if (count() == 0 || (!c.melody.has(index) && index != -1))
                return;
            const auto kept = keptRange();
            splice(index + 1, 0,
                   {{token(noteOf(choice)),
                     durationText(attribute() == 3 ? baseDuration() : valueOf(choice)),
                     choice.letter.isEmpty() ? "n" : choice.letter}});
            setStep(index + 1);
            if (!countKept(kept))
                countAgain(c.range.start(), c.range.end() + 1);
        });
    }
    EditOutcome repeatFromStep() {
        return edit([this] {
            const int from = c.step.index;
            if (!c.step.frameOpen || !c.melody.has(from))
                return;
            const int to = from > c.range.end() ? count() - 1 : c.range.end();
            for (int i = from; i <= to; ++i)
                splice(count(), 0, {c.melody.entry(i)});
            countAgain(c.range.start(), count() - 1);
        });
    }
    EditOutcome transpose() {
        return edit([this] {
            const int semitones = std::exchange(c.transposition, 0);
            Entries entries = c.melody.entries();
            for (MelodyEntry& entry : entries) {
                const int note = entry.noteNumber() + semitones;
                if (entry.noteNumber() == 0)
                    continue;
                entry.note = QString::number(note);
                if (note < 36 || note > 95)
                    outcome.message =
                        "Trasposizione non riuscita !!!\n"
                        "Una o piu note andrebbero oltre le 5 ottave";
            }
            if (outcome.message.isEmpty() && semitones != 0 && entries != c.melody.entries())
                put(entries);
        });
    }
    EditOutcome reset() {
        return edit([this] { empty(); });
    }
    EditOutcome setBookmarks(const QStringList& items) {
        return edit([&] {
            outcome.changed = edits = c.bookmarks.items() != items;
            c.bookmarks = Bookmarks(items);
        });
    }
    EditOutcome recover(const MelodyFile& file) {
        return edit([&] { read(file); });
    }
    EditOutcome open(const MelodyFile& file) {
        const EditOutcome opened = recover(file);
        markSaved();
        return opened;
    }

private:
    int attribute() const { return c.settings.attribute(); }
    int triplets() const { return c.settings.mode().tripletCounter; }
    double baseDuration() const { return std::ldexp(4, -c.settings.symbol()); }
    static QString token(int note) { return note == 0 ? "00" : QString::number(note); }
    int noteOf(const EditChoice& choice) const { return choice.letter == "p" ? 0 : c.activeNote; }
    static double valueOf(const EditChoice& choice) {
        return rhythm::ValueNameToDuration(choice.valueName, choice.multiplier);
    }
    QString durationText(double value) const {
        return rhythm::durationText(attribute() == 3 ? 2 * value / 3 : value, c.decimalSeparator);
    }
    bool isBeside() const { return c.step.index < c.range.start() || c.step.index > c.range.end(); }
    /// The ends of a range that keeps its entries, for what changes is not among them.
    std::optional<std::pair<int, int>> keptRange() {
        c.step.outside = c.step.outside && isBeside();
        if (!c.step.outside)
            return {};
        const auto idAt = [this](int entry) { return ids[static_cast<std::size_t>(entry)]; };
        return std::pair(idAt(c.range.start()), idAt(c.range.end()));
    }
    bool countKept(const std::optional<std::pair<int, int>>& kept) {
        const auto at = [this](int id) {
            return static_cast<int>(std::ranges::find(ids, id) - ids.begin());
        };
        if (kept)
            countAgain(at(kept->first), at(kept->second));
        return kept.has_value();
    }
    void setMode(int attribute, int counter) {
        c.settings.setMode(
            {static_cast<std::uint8_t>(attribute), static_cast<std::uint8_t>(counter)});
    }

    void put(Entries entries, std::shared_ptr<const MelodyTexts> damaged = {}) {
        MelodyDelta delta{0, 0, std::move(entries), true, std::move(damaged)};
        c.melody.exchange(delta);
        edits = outcome.changed = true;
    }
    /// Other entries in the place of some; one for one it stays the same entry.
    void splice(int position, int removed, const Entries& added) {
        Entries entries = c.melody.entries();
        const auto first = entries.begin() + position;
        entries.insert(entries.erase(first, first + removed), added.begin(), added.end());
        put(entries);
        if (removed < static_cast<int>(added.size()))
            ids.insert(ids.begin() + position, ++lastId);
        if (removed > static_cast<int>(added.size()))
            ids.erase(ids.begin() + position);
    }
    void countAgain(int start, int end) {
        c.range.select(start, end, count());
        QStringList items = c.bookmarks.items();
        if (!items.isEmpty())
            items.front() = QStringLiteral("1 ÷ %1 ÷ Tutto").arg(count());
        c.bookmarks = Bookmarks(items);
    }
    void append(bool isRest) {
        const int tripletsNow = triplets() + (attribute() == 3 ? 1 : 0);
        const bool tie = attribute() == 2 && !isRest && count() > 0;
        if (!c.melody.consistent()) {
            outcome.message = "File corrotto !!!";
            return;
        }
        const double duration = tie ? c.melody.entries().back().quarters() + baseDuration()
                                    : baseDuration() * (attribute() == 0 ? 1.5 : 1);
        splice(count() - (tie ? 1 : 0), tie ? 1 : 0,
               {{isRest ? "00" : token(c.activeNote), durationText(duration),
                 isRest ? "p" : QString("nsnntan"[attribute()])}});
        const bool third = tripletsNow == 3;
        const bool unfinished = attribute() == 3 && !third;
        setMode(unfinished || (keeps && !third) ? attribute() : 6, third ? 0 : tripletsNow);
        countAgain(c.range.start(), count() - 1);
    }
    void empty() {
        put({});
        ids.clear();
        c.range = {};
        c.bookmarks = {};
        c.name.clear();
        c.source.emptied = true;
        c.step.active = c.step.frameOpen = false;
        whole = outcome.emptied = true;
    }
    /// A bookmark names a list of entries, of which one goes.
    static QString without(const QString& item, int deleted, int left) {
        auto bookmark = Bookmark::fromText(item);
        if (!bookmark)
            return item;
        QList<int> entries;
        for (int i = bookmark->start; i <= bookmark->end; ++i) {
            if (i != deleted)
                entries << std::min(i > deleted ? i - 1 : i, left);
        }
        bookmark->start = entries.value(0, std::min(deleted, left));
        bookmark->end = entries.isEmpty() ? bookmark->start : entries.back();
        return bookmark->text();
    }
    void read(const MelodyFile& file) {
        const std::vector<QStringList> lines{file.texts.notes.split(u';'),
                                             file.texts.durations.split(u';'),
                                             file.texts.attributes.split(u';')};
        const bool damaged =
            lines[0].size() != lines[1].size() || lines[0].size() != lines[2].size();
        const bool ended = std::ranges::any_of(lines, [](auto& line) { return line.back() == ""; });
        Entries entries;
        ids.clear();
        for (int i = 0; !damaged && i < lines[0].size() - (ended ? 1 : 0); ++i) {
            entries.push_back({lines[0][i], lines[1][i], lines[2][i]});
            ids.push_back(++lastId);
        }
        put(entries, damaged ? std::make_shared<const MelodyTexts>(file.texts) : nullptr);
        c.range.select(0, count() - 1, count());
        c.bookmarks = Bookmarks(file.bookmarks);
        c.name = file.name;
        c.source = file.source;
        c.document = ++lastDocument;
        c.instrument = std::clamp(file.instrument, 0, 127);
        c.tempo = damaged ? c.tempo : std::clamp(file.tempo, 20, 250);
        c.step.active = c.step.frameOpen = false;
        whole = true;
        outcome.message = damaged ? "File corrotto !!!" : "";
    }
    QString validate(const QString& box, bool ofStart) {
        const int start = c.range.start();
        const int end = c.range.end();
        const double number = rhythm::numberFromText(box).value_or(ofStart ? start : end + 1);
        // A half goes to the even number.
        const int index = static_cast<int>(number - 1 - std::remainder(number - 1, 1));
        if (ofStart && number >= 1 && number <= end + 1)
            c.range.select(index, end, count());
        if (!ofStart && number <= count() && number > start)
            c.range.select(start, index, count());
        if (std::exchange(c.step.active, false) && ofStart)
            setStep(c.range.start());
        return ofStart ? c.range.startBox() : c.range.endBox();
    }

    int lastId = 0;
    int lastDocument = 0;
};
