#pragma once

#include "composer/notation/score_layout.h"
#include "composer/staff/score_painter.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

/// The melody's systems on a widget: where each stands as the page is scrolled, and what is at a
/// point. Lengths are in the widget's pixels.
class StaffPage {
public:
    static constexpr double kPadding = 9;

    /// The first entry in view stays there.
    void setSource(const notation::Source& source);

    /// Lays out the systems for a widget of this size and staff lines of this distance at most.
    void resize(const QSizeF& size, qreal space, qreal devicePixelRatio);
    void changedFrom(int entry);

    const score::Notation& notation() const { return source_.notation; }
    qreal space() const { return space_; }
    qreal offset() const { return offset_; }
    qreal largestOffset() const;
    qreal height() const { return size_.height(); }

    /// The offset is kept within the page.
    void scrollTo(qreal offset);

    /// Scrolls as far as needed for an entry's system to be in view, or for the end of the melody.
    /// Going on, the system comes to the top, so that what follows it is seen.
    void showEntry(int entry);
    void showEnd();

    /// The systems in view, from `first` to before `end`.
    struct View {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    View view() const;

    const notation::System& system(std::size_t index) const { return score_.systems()[index]; }
    score_painter::Place placeOf(std::size_t system) const;

    /// The last system, which is laid out once `showEnd` was called.
    std::size_t lastSystem() const { return score_.systems().size() - 1; }
    bool knowsEnd() const { return score_.complete(); }

    /// The staff that an entry would stand on behind the last one; the end must be known.
    notation::Staff staffOfNext(const staff_entry::Entry& entry) const;

    /// Nothing if the entry's system is not laid out, and so not in view.
    std::optional<std::size_t> systemOf(int entry) const;

    /// The entry's stretch of its system, over the system's height.
    QRectF rectOf(std::size_t system, int entry) const;

    /// The written entry whose head, stem or rest is at a point.
    std::optional<int> entryAt(QPointF point) const;

    /// The natural note at a point's height, and where its head stands.
    struct Pointed {
        std::size_t system = 0;
        notation::Staff staff = notation::Staff::Treble;
        int noteNumber = 0;

        bool operator==(const Pointed&) const = default;
    };
    std::optional<Pointed> noteAt(QPointF point) const;

private:
    std::optional<std::size_t> systemAt(qreal y) const;
    void showSystem(std::size_t index);

    notation::Source source_;
    notation::ScoreLayout score_;
    QSizeF size_;
    qreal space_ = 1;
    qreal offset_ = 0;
};
