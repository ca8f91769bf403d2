#pragma once

#include "core/pitch.h"

#include <QString>

struct Composition;

/// What is said of a melody while it is written, to those who do not see it. Entries are counted
/// from 1, as in the window.
class MelodySpeech {
public:
    explicit MelodySpeech(const Composition& composition) : composition_(composition) {}

    /// "5: Sol 4, croma, staccato"; nothing where there is no such entry.
    QString entry(int index) const;
    /// The entry that was stepped to, or else the last one.
    QString activeEntry() const;
    /// Name, tempo and every entry of the range.
    QString whole() const;

    /// What became of the entries since the last call: the one that was entered or changed, or the
    /// one that went.
    QString change();
    /// Another melody took the place of this one: its name and length.
    QString opened();
    QString saved() const;

    QString activeNote() const;
    /// The chosen note value with its attribute, as "croma, staccato".
    QString settings() const;
    QString range() const;
    QString transposition() const;

private:
    int activeIndex() const;
    QString entryInWords(int index) const;
    void remember();

    const Composition& composition_;
    int count_ = 0;   ///< of the entries at the last call
    QString active_;  ///< the active entry then
};
