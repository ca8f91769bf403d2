#pragma once

#include "composer/melody/change_log.h"

#include <QString>

#include <vector>

struct Composition;
struct MelodyEntry;

/// What is said of a melody while it is written, to those who do not see it. Entries are counted
/// from 1, as in the window.
class MelodySpeech {
public:
    explicit MelodySpeech(const Composition& composition);
    ~MelodySpeech();

    /// "5: Sol 4, croma, staccato"; nothing where there is no such entry.
    QString entry(int index) const;
    /// The entry that was stepped to, or else the last one.
    QString activeEntry() const;
    /// Name, tempo and every entry of the range.
    QString whole() const;

    /// What became of the entries since the last call: the one that was entered or changed, the one
    /// that went, or of several how many. Where nothing changed it is the active entry.
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
    /// Answers the entries from `first` on as they were.
    std::vector<MelodyEntry> remember(int first);

    const Composition& composition_;
    std::vector<MelodyEntry> known_;  ///< the entries at the last call
    ChangeLog::Revision seen_ = 0;    ///< of the melody then
};
