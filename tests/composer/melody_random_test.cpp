#include "composer/melody_editor.h"
#include "composer/rhythm.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <utility>
#include <vector>

namespace {

const QChar kEnd(u';');

QString textOf(double value) {
    return QString::number(value, 'g', 15).replace(u'.', u',');
}

double valueOf(QString text) {
    return text.replace(u',', u'.').toDouble();
}

/// The composer in its plainest form: it cuts and joins the three texts themselves, as slowly as it
/// likes. The editor must always hold the same.
struct Reference {
    std::array<QString, 3> texts;  ///< notes, durations, attributes
    QStringList bookmarks;
    int start = 0;
    int end = 0;
    int stepIndex = 0;
    bool stepping = false;
    int attribute = 6;
    int triplets = 0;
    bool keeps = false;
    double base = 1;

    int count() const { return texts[0].count(kEnd); }

    void refreshBookmarks() {
        if (!bookmarks.isEmpty())
            bookmarks[0] = Bookmarks::wholeMelody(count());
    }

    void reset() {
        texts = {};
        bookmarks.clear();
        start = end = 0;
        stepping = false;
    }

    void cutLast() {
        for (QString& text : texts) {
            text.chop(1);
            text.truncate(text.lastIndexOf(kEnd) + 1);
        }
    }

    void insert(const QString& note, bool rest);
    void deleteLast();
    void modify(const std::array<QString, 3>& tokens, double value);
    void insertAfter(const std::array<QString, 3>& tokens, double value);
    void deleteAtStep();
    void transpose(int semitones);
};

void Reference::insert(const QString& note, bool rest) {
    double duration = attribute == 0 ? base * 1.5 : attribute == 3 ? base * 2 / 3 : base;
    if (attribute == 2 && !rest && !texts[0].isEmpty()) {
        duration += valueOf(texts[1].section(kEnd, -2, -2));
        cutLast();
    }
    const QString letter = rest ? "p" : QStringLiteral("nsnntan").mid(attribute, 1);
    texts[0] += note + kEnd;
    texts[1] += textOf(duration) + kEnd;
    texts[2] += letter + kEnd;
    end = count() - 1;
    refreshBookmarks();
    if (attribute == 3 && ++triplets < 3)
        return;
    if (triplets == 3 || !keeps)
        attribute = 6;
    if (triplets == 3)
        triplets = 0;
}

void Reference::deleteLast() {
    if (count() == 1)
        return reset();
    if (texts[0].isEmpty())
        return;
    cutLast();
    start = 0;
    end = count() - 1;
    refreshBookmarks();
}

void Reference::modify(const std::array<QString, 3>& tokens, double value) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        QStringList parts = texts[i].split(kEnd);
        if (i != 1) {
            parts[stepIndex] = tokens[i];
        } else if (valueOf(parts[stepIndex]) != value) {
            parts[stepIndex] = textOf(attribute == 3 ? value * 2 / 3 : value);
            attribute = attribute == 3 ? 6 : attribute;
        }
        texts[i] = parts.join(kEnd);
    }
}

void Reference::insertAfter(const std::array<QString, 3>& tokens, double value) {
    ++stepIndex;
    ++end;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        QStringList parts = texts[i].split(kEnd);
        parts.insert(stepIndex, i == 1 ? textOf(attribute == 3 ? 2 * base / 3 : value) : tokens[i]);
        texts[i] = parts.join(kEnd);
    }
    refreshBookmarks();
}

void Reference::deleteAtStep() {
    if (count() == 1)
        return reset();
    for (QString& text : texts) {
        QStringList parts = text.split(kEnd);
        parts.removeAt(stepIndex);
        text = parts.join(kEnd);
    }
    Bookmarks adjusted(bookmarks);
    adjusted.afterDeletion(stepIndex, count());
    bookmarks = adjusted.items();
    end = std::min(end, count() - 1);
    --stepIndex;
    if (stepIndex < start)
        start = std::max(stepIndex, 0);
}

void Reference::transpose(int semitones) {
    QString transposed;
    for (const QString& token : texts[0].split(kEnd, Qt::SkipEmptyParts)) {
        const int note = token.toInt();
        if (note != 0 && (note + semitones <= 35 || note + semitones >= 96))
            return;
        transposed += (note == 0 ? token : QString::number(note + semitones)) + kEnd;
    }
    texts[0] = transposed;
}

/// Does the same random operations to the editor and to the reference, and goes back and forth
/// through their histories.
class RandomEditing : public ::testing::TestWithParam<unsigned> {
protected:
    struct Change {
        Reference before;
        Reference after;
    };

    int draw(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    void prepare();
    void choosePalette();
    void moveRange();
    void edit(int kind);
    void editAtStep();
    void addBookmark();
    void goThroughHistory(bool back);
    void compare() const;

    std::mt19937 random{GetParam()};
    Composition composition;
    MelodyEditor editor{composition};
    Reference reference;
    std::vector<Change> done;
    std::vector<Change> undone;
};

/// What the user does between two changes of the melody.
void RandomEditing::prepare() {
    composition.activeNote = static_cast<pitch::NoteNumber>(40 + draw(50));
    if (draw(2) == 0)
        choosePalette();
    if (draw(10) == 0 && reference.count() > 0)
        moveRange();
    if (draw(4) == 0 && reference.count() > 0) {
        composition.step.active = reference.stepping = true;
        reference.stepIndex = draw(reference.count());
        composition.step.index = static_cast<std::int16_t>(reference.stepIndex);
    }
}

void RandomEditing::choosePalette() {
    const auto symbol = static_cast<std::uint8_t>(draw(7));
    composition.settings.chooseSymbol(symbol);
    reference.base = rhythm::kSymbols[symbol].duration;
    reference.keeps = draw(4) == 0;
    composition.settings.setKeepsAttributes(reference.keeps);
    const int attribute = draw(6);
    composition.settings.clickAttribute(static_cast<std::uint8_t>(attribute));
    if (reference.attribute == attribute && attribute == 3)
        reference.triplets = 0;
    reference.attribute = reference.attribute == attribute ? 6 : attribute;
}

void RandomEditing::moveRange() {
    reference.start = draw(reference.count());
    reference.end = reference.start + draw(reference.count() - reference.start);
    editor.validateStart(QStringLiteral("1"));
    editor.validateEnd(QString::number(reference.end + 1));
    editor.validateStart(QString::number(reference.start + 1));
    if (std::exchange(reference.stepping, false))
        reference.stepIndex = 0;
}

void RandomEditing::edit(int kind) {
    if (kind < 6) {
        editor.insertNote();
        reference.insert(QString::number(composition.activeNote), false);
    } else if (kind < 8) {
        editor.insertRest();
        reference.insert(QStringLiteral("00"), true);
    } else if (kind < 12) {
        editAtStep();
    } else if (kind == 12) {
        editor.deleteLast();
        reference.deleteLast();
    } else if (kind == 13 && reference.count() > 0) {
        addBookmark();
    } else if (kind == 14) {
        const int semitones = draw(25) - 12;
        editor.changeTransposition(semitones);
        editor.transpose();
        reference.transpose(semitones);
    } else if (kind == 15 && draw(12) == 0) {
        editor.reset();
        reference.reset();
    }
}

void RandomEditing::editAtStep() {
    if (!reference.stepping || reference.stepIndex < 0 || reference.stepIndex >= reference.count())
        return;
    const EditChoice choice{QLatin1String(rhythm::kValues[static_cast<std::size_t>(draw(13))].name),
                            QString::number(1 + draw(4)), QStringLiteral("nstap").mid(draw(5), 1)};
    const double value = rhythm::ValueNameToDuration(choice.valueName, choice.multiplier);
    const QString note = choice.letter == "p" ? "00" : QString::number(composition.activeNote);
    const int operation = draw(3);
    if (operation == 0) {
        editor.modify(choice);
        reference.modify({note, {}, choice.letter}, value);
    } else if (operation == 1) {
        editor.insertAfter(choice);
        reference.insertAfter({note, {}, choice.letter}, value);
    } else {
        editor.deleteAtStep();
        reference.deleteAtStep();
    }
}

void RandomEditing::addBookmark() {
    if (reference.bookmarks.isEmpty())
        reference.bookmarks << Bookmarks::wholeMelody(reference.count());
    const QString name = QStringLiteral("n%1").arg(draw(100));
    reference.bookmarks << Bookmark{reference.start + 1, reference.end + 1, name}.text();
    editor.setBookmarks(reference.bookmarks);
}

void RandomEditing::goThroughHistory(bool back) {
    auto& from = back ? done : undone;
    EXPECT_EQ(back ? editor.canUndo() : editor.canRedo(), !from.empty());
    back ? editor.undo() : editor.redo();
    if (from.empty())
        return;
    const Reference now = reference;
    const Change change = from.back();
    from.pop_back();
    (back ? undone : done).push_back(change);
    reference = back ? change.before : change.after;
    // The palette and the step mode are the user's, except for what the change itself did.
    reference.base = now.base;
    reference.keeps = now.keeps;
    if (change.before.attribute == change.after.attribute &&
        change.before.triplets == change.after.triplets) {
        reference.attribute = now.attribute;
        reference.triplets = now.triplets;
    }
    if (!now.stepping)
        reference.stepIndex = now.stepIndex;
    reference.stepping =
        now.stepping && reference.stepIndex >= 0 && reference.stepIndex < reference.count();
}

void RandomEditing::compare() const {
    const auto& [notes, durations, attributes] = reference.texts;
    ASSERT_EQ(composition.melody.texts(), (MelodyTexts{notes, durations, attributes}));
    ASSERT_EQ(composition.melody.EntryCount(), reference.count());
    ASSERT_EQ(composition.range.start(), reference.start);
    ASSERT_EQ(composition.range.end(), reference.end);
    ASSERT_EQ(composition.bookmarks.items(), reference.bookmarks);
    ASSERT_EQ(composition.settings.attribute(), reference.attribute);
    ASSERT_EQ(composition.settings.tripletCounter(), reference.triplets);
    ASSERT_EQ(composition.step.active, reference.stepping);
    if (reference.stepping) {
        ASSERT_EQ(composition.step.index, reference.stepIndex);
    }
    QString names;
    for (const QString& token : notes.split(kEnd, Qt::SkipEmptyParts))
        names += pitch::NoteName(token.toInt()) + kEnd;
    ASSERT_EQ(composition.melody.lastNames(40), names.right(40));
}

TEST_P(RandomEditing, holdsWhatTheReferenceHolds) {
    for (int i = 0; i < 1000 && !HasFatalFailure(); ++i) {
        const int kind = draw(20);
        if (kind > 15) {
            goThroughHistory(kind < 19);
        } else {
            prepare();
            const Reference before = reference;
            edit(kind);
            if (reference.texts != before.texts || reference.bookmarks != before.bookmarks) {
                done.push_back({before, reference});
                undone.clear();
            }
        }
        compare();
    }
    // Back to the very beginning and forth again.
    while (!done.empty() && !HasFatalFailure()) {
        goThroughHistory(true);
        compare();
    }
    while (!undone.empty() && !HasFatalFailure()) {
        goThroughHistory(false);
        compare();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEditing, ::testing::Range(1U, 9U));

}  // namespace
