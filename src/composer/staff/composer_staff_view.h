#pragma once

#include "composer/staff/composer_staff_painter.h"

#include <QRectF>
#include <QSizeF>

#include <functional>
#include <optional>
#include <vector>

/// The part of the melody that is in view on the composer's staff, and where everything stands on
/// the widget: staves, entries, the column of the active note.
///
/// It asks for the entries in view only, so that its cost does not grow with the melody.
class ComposerStaffView {
public:
    struct Source {
        std::function<int()> count;
        std::function<staff_entry::Entry(int)> entryAt;  ///< 0..count - 1
    };

    struct Shown {
        composer_staff_layout::Placed place;
        composer_staff_painter::Engraved engraved;
    };

    /// In pixels.
    static constexpr double kPadding = 9;

    void setSource(Source source) { source_ = std::move(source); }

    /// Places the staves on a widget of this size, above the numbers of the entries.
    void resize(const QSizeF& size, qreal numberHeight, qreal devicePixelRatio);

    /// Reads the entries afresh; `current` comes into view, without one the last entry does.
    void layOutEntries(std::optional<int> current);

    const std::vector<Shown>& entries() const { return shown_; }

    /// Null if the entry is not in view.
    const Shown* find(std::optional<int> entry) const;

    const composer_staff_painter::Staves& staves() const { return staves_; }
    qreal entriesRight() const { return entriesRight_; }
    qreal leftOf(const Shown& entry) const;
    QRectF cellRect(const Shown& entry) const;

    /// The column of the active note, and the left edge of its head there.
    QRectF column() const;
    qreal columnNoteLeft() const;

    /// The natural note nearest to a height.
    int noteAt(qreal y) const;

private:
    void fetch(const composer_staff_layout::View& view, int count);
    composer_staff_layout::System systemOf(int index, const staff_entry::Entry& entry) const;

    Source source_;
    QSizeF size_;
    composer_staff_painter::Staves staves_;
    qreal top_ = 0;  ///< y of place 0
    qreal entriesLeft_ = 0;
    qreal entriesRight_ = 0;
    composer_staff_layout::View view_;
    std::vector<Shown> shown_;
};
