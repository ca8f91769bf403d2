#pragma once

#include <QString>

#include <cstdint>

/// The stretch of the melody that is played: entries counted from 0, both ends included. The boxes
/// show them counted from 1. Always 0 <= start <= end; an empty melody has 0 and 0.
class PlayRange {
public:
    enum class Arrow { StartDown, StartUp, EndDown, EndUp };

    std::int16_t start() const { return start_; }
    std::int16_t end() const { return end_; }
    QString startBox() const { return QString::number(start_ + 1); }
    QString endBox() const { return QString::number(end_ + 1); }

    /// The whole of a melody of `count` entries.
    void coverAll(int count);

    /// A stretch of a melody of `count` entries, each end kept within it.
    void select(int start, int end, int count);

    /// After an entry was appended: the range reaches to the end.
    void afterAppend(int count);

    /// After an entry was inserted: the end moves with it.
    void afterInsertion(int count);

    /// After the entry behind `stepIndex` was deleted: an end beyond the melody is pulled back, and
    /// a start beyond the step index follows it, though not below 0.
    void afterDeletion(int stepIndex, int count);

    /// After an entry outside of the range, or behind the one at `index` outside of it, came or
    /// went: the range stays with its entries.
    void afterInsertionOutside(int index);
    void afterDeletionOutside(int index);

    /// Takes what the box of the start holds and answers what it shows then. A text that is no
    /// number is read as the start counted from 0: it takes a start above 0 one entry back.
    QString validateStart(const QString& box);

    /// Takes what the box of the end holds and answers what it shows then. A text that is no number
    /// changes nothing.
    QString validateEnd(const QString& box, int count);

    /// One step of an arrow; whether it moved. Arrows leave at least two entries in the range.
    bool move(Arrow arrow, int count);

    bool operator==(const PlayRange&) const = default;

private:
    void moveBy(int entries);

    std::int16_t start_ = 0;
    std::int16_t end_ = 0;
};
