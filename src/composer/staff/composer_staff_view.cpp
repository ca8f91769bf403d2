#include "composer/staff/composer_staff_view.h"

#include <algorithm>
#include <map>

namespace {

using composer_staff_layout::System;

/// In staff spaces.
constexpr double kBraceRoom = 2.2;
constexpr double kColumnWidth = 5.5;
constexpr double kColumnNote = 2.6;  ///< the head's left edge in the column
constexpr double kNarrowest = 24;    ///< the width that the fixed parts and one long note need

constexpr int kSystemLookBack = 8;

}  // namespace

void ComposerStaffView::resize(const QSizeF& size, qreal numberHeight, qreal devicePixelRatio) {
    size_ = size;
    const double room = size.height() - 2 * kPadding - numberHeight;
    const double wanted = std::min(room * 2 / composer_staff_layout::kHeight,
                                   (size.width() - 2 * kPadding) / kNarrowest);
    const qreal space = engraving::wholePixelSpace(wanted, devicePixelRatio);
    top_ = kPadding + (room - composer_staff_layout::kHeight * space / 2) / 2;

    staves_.treble.left = kPadding + kBraceRoom * space;
    staves_.treble.right = size.width() - kPadding;
    staves_.treble.space = space;
    staves_.bass = staves_.treble;
    staves_.treble.bottomLine = top_ + composer_staff_layout::kTrebleBottomLine * space / 2;
    staves_.bass.bottomLine = top_ + composer_staff_layout::kBassBottomLine * space / 2;
    entriesLeft_ = staves_.treble.left + composer_staff_painter::kClefRoom * space;
    entriesRight_ = column().left() - space / 2;
}

void ComposerStaffView::layOutEntries(std::optional<int> current) {
    const int count = source_.count ? source_.count() : 0;
    const bool follows = current && *current >= 0 && *current < count;
    if (!follows)
        view_ = {count - 1, true};
    fetch(view_, count);
    if (follows && !find(current)) {
        std::vector<composer_staff_layout::Placed> places;
        for (const Shown& entry : shown_)
            places.push_back(entry.place);
        view_ = composer_staff_layout::following(view_, places, *current);
        fetch(view_, count);
    }
}

/// Asks for the entries of a view and engraves them.
void ComposerStaffView::fetch(const composer_staff_layout::View& view, int count) {
    std::map<int, composer_staff_painter::Engraved> engraved;
    const auto widthOf = [&](int index) {
        auto& entry = engraved[index];
        entry.entry = source_.entryAt(index);
        entry.figure = staff_entry::figureOf(entry.entry.duration);
        entry.cell = composer_staff_layout::cellOf(entry.entry, entry.figure);
        return entry.cell.width;
    };
    const qreal space = std::max<qreal>(staves_.space(), 1);
    const double room = std::max<qreal>(0, entriesRight_ - entriesLeft_) / space;

    shown_.clear();
    for (const auto& place : composer_staff_layout::arrange(view, count, room, widthOf)) {
        shown_.push_back({place, std::move(engraved[place.entry])});
        auto& entry = shown_.back().engraved;
        entry.system = systemOf(place.entry, entry.entry);
    }
}

/// A rest stands in the stave of the note before it. Only a few entries are looked at for it,
/// on show or not, so that a rest does not change its stave as the staff scrolls.
System ComposerStaffView::systemOf(int index, const staff_entry::Entry& entry) const {
    staff_entry::Entry note = entry;
    for (int i = index - 1; staff_entry::isRest(note); --i) {
        if (i < 0 || index - i > kSystemLookBack)
            return System::Treble;
        note = source_.entryAt(i);
    }
    return composer_staff_layout::headOf(note.noteNumber).system;
}

const ComposerStaffView::Shown* ComposerStaffView::find(std::optional<int> entry) const {
    if (!entry || shown_.empty() || *entry < shown_.front().place.entry ||
        *entry > shown_.back().place.entry) {
        return nullptr;
    }
    return &shown_[static_cast<std::size_t>(*entry - shown_.front().place.entry)];
}

qreal ComposerStaffView::leftOf(const Shown& entry) const {
    return entriesLeft_ + entry.place.left * staves_.space();
}

QRectF ComposerStaffView::cellRect(const Shown& entry) const {
    return {leftOf(entry), 2, entry.place.width * staves_.space(), size_.height() - 4.0};
}

QRectF ComposerStaffView::column() const {
    const qreal width = kColumnWidth * staves_.space();
    return {staves_.treble.right - width, 1, width, size_.height() - 2.0};
}

qreal ComposerStaffView::columnNoteLeft() const {
    return column().left() + kColumnNote * staves_.space();
}

int ComposerStaffView::noteAt(qreal y) const {
    return composer_staff_layout::noteAt((y - top_) * 2 / std::max<qreal>(staves_.space(), 1));
}
