#pragma once

#include "composer/melody/change_log.h"
#include "core/letter.h"
#include "core/pitch.h"

#include <QChar>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <memory>
#include <vector>

/// A melody as its file holds it: three texts in which every token is followed by ";".
struct MelodyTexts {
    QString notes;
    QString durations;
    QString attributes;

    bool operator==(const MelodyTexts&) const = default;
};

/// A note or a rest. The tokens are the master copy: what was read from a file stays as it was
/// written there, and a duration is worth what its text says.
struct MelodyEntry {
    QString note;
    QString duration;
    QString attribute;

    /// `decimalSeparator` is for the duration's text.
    static MelodyEntry make(pitch::NoteNumber note, double duration, const QString& attribute,
                            QChar decimalSeparator);

    /// The token of a note number: "00" for a rest.
    static QString noteToken(pitch::NoteNumber note);

    /// The note number, 0 for a rest, -1 if the token is no 16-bit number.
    pitch::NoteNumber noteNumber() const;

    /// In quarter notes; 0 if the token is no number.
    double quarters() const;

    bool operator==(const MelodyEntry&) const = default;
};

/// A stretch of a melody and what stands in its place after the next `Melody::exchange`.
struct MelodyDelta {
    int position = 0;
    int count = 0;  ///< entries of the stretch
    std::vector<MelodyEntry> others;

    bool whole = false;  ///< the stretch is the whole melody, its damage included
    std::shared_ptr<const MelodyTexts> otherDamaged;
};

/// The message about a melody or a melody's file that is damaged.
QString damagedMelodyText();

/// The melody: an ordered list of at most 32,767 entries.
///
/// A file whose texts have different numbers of fields leaves a damaged melody: its texts are kept
/// as they were read, but it has no entries until it is replaced.
class Melody {
public:
    static constexpr int kMaxEntries = 32767;

    enum class ReadResult { Read, Damaged, TooLong };

    struct Reading;

    /// Splits three texts into entries. When all three lack the last ";", the last fields count as
    /// an entry; when only some do, what follows their last ";" is dropped.
    static Reading read(const MelodyTexts& texts);

    std::int16_t EntryCount() const { return static_cast<std::int16_t>(entries_.size()); }
    bool empty() const { return entries_.empty(); }
    bool full() const { return EntryCount() == kMaxEntries; }
    bool consistent() const { return !damaged_; }
    bool has(int index) const { return index >= 0 && index < EntryCount(); }

    /// `index` 0..EntryCount - 1.
    const MelodyEntry& entry(int index) const { return entries_[static_cast<std::size_t>(index)]; }
    const std::vector<MelodyEntry>& entries() const { return entries_; }

    MelodyTexts texts() const;

    /// The rightmost characters of all note names, each followed by ";". Its cost does not depend
    /// on the melody's length.
    QString lastNames(int characters) const;

    /// Swaps a stretch of the melody with the delta's entries; a second call with the same delta
    /// takes the change back. The stretch must lie in the melody and the result must fit.
    void exchange(MelodyDelta& delta);

    /// What `exchange` changed.
    const ChangeLog& changes() const { return changes_; }

private:
    std::vector<MelodyEntry> entries_;
    std::shared_ptr<const MelodyTexts> damaged_;
    ChangeLog changes_;
};

/// What `Melody::read` found: the delta that puts it in place of an empty, undamaged melody.
struct Melody::Reading {
    ReadResult result = ReadResult::Read;
    std::vector<MelodyEntry> entries;
    std::shared_ptr<const MelodyTexts> damaged;
};
