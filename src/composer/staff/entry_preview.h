#pragma once

#include "composer/staff/staff_page.h"

#include <optional>

/// An entry that is not written yet, where it would stand on the page.
struct EntryPreview {
    notation::System entry;
    score_painter::Place place;
    bool tied = false;  ///< to the entry before it

    const notation::Symbol& note() const { return entry.symbols.front(); }
};

/// Behind the last entry. Nothing while the end of the melody is not laid out, and so not in view.
std::optional<EntryPreview> previewAtEnd(const StaffPage& page, const staff_entry::Entry& entry,
                                         bool tied);

/// A note of the same value over the first note of a written entry. Nothing if that is not laid
/// out.
std::optional<EntryPreview> previewOver(const StaffPage& page, int entry, int noteNumber);
