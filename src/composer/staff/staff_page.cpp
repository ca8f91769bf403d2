#include "composer/staff/staff_page.h"

#include "widgets/engraving.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using notation::Symbol;
using notation::System;

/// In staff spaces.
constexpr double kNarrowest = 24;
constexpr double kEndRoom = 7;  ///< of the note that would be inserted
constexpr double kHitRoom = 0.5;

/// Whether a place is on a symbol, heights counted as positions on its staff.
bool isOn(const Symbol& symbol, double x, double position) {
    const double width = symbol.rest ? engraving::restWidth(symbol.value.duration)
                                     : engraving::headWidth(symbol.value.duration);
    if (x < symbol.x - kHitRoom || x > symbol.x + width + kHitRoom)
        return false;
    if (symbol.rest) {
        const engraving::Reach reach = engraving::restReach(symbol.value.duration);
        return position > reach.low - 2 * kHitRoom && position < reach.high + 2 * kHitRoom;
    }
    if (std::abs(position - symbol.note.position) < 1 + 2 * kHitRoom)
        return true;
    const bool up = engraving::stemGoesUp(symbol.note);
    const double stem = symbol.x + (up ? width : 0);
    const double low = std::min<double>(symbol.note.position, symbol.stemEnd);
    const double high = std::max<double>(symbol.note.position, symbol.stemEnd);
    return note_values::rowOf(symbol.value.duration).stem && std::abs(x - stem) < kHitRoom &&
           position > low && position < high;
}

}  // namespace

void StaffPage::setSource(const notation::Source& source) {
    const int first = score_.systems().empty() ? 0 : system(view().first).start.entry;
    source_ = source;
    score_.setSource(source);
    scrollTo(score_.topOf(score_.systemOf(first)) * space_ / 2);
}

void StaffPage::resize(const QSizeF& size, qreal space, qreal devicePixelRatio) {
    size_ = size;
    const qreal room = size.width() - 2 * kPadding;
    space_ = engraving::wholePixelSpace(
        std::min(space, room / (kNarrowest + score_painter::kBraceRoom)), devicePixelRatio);
    score_.setPage({std::max(kNarrowest, room / space_ - score_painter::kBraceRoom), kEndRoom, true,
                    (size.height() - 2 * kPadding) * 2 / space_});
    scrollTo(offset_);
}

void StaffPage::changedFrom(int entry) {
    score_.changedFrom(entry);
    scrollTo(offset_);
}

qreal StaffPage::largestOffset() const {
    return std::max<qreal>(0, score_.height() * space_ / 2 + 2 * kPadding - size_.height());
}

void StaffPage::scrollTo(qreal offset) {
    offset_ = std::max<qreal>(0, offset);
    score_.layOutTo((offset_ + size_.height()) * 2 / space_);
    offset_ = std::min(offset_, largestOffset());
}

void StaffPage::showEntry(int entry) {
    showSystem(score_.systemOf(entry));
}

void StaffPage::showEnd() {
    score_.layOutAll();
    showSystem(score_.systems().size() - 1);
}

/// Where the page is too low for a system with the room around it, its staves stand in the middle.
void StaffPage::showSystem(std::size_t index) {
    const System& shown = system(index);
    const qreal top = score_.topOf(index) * space_ / 2;
    const qreal bottom = top + shown.height() * space_ / 2 + 2 * kPadding;
    const qreal staves = top + kPadding + shown.middle() * space_ / 2;
    if (bottom - top > size_.height())
        scrollTo(staves - size_.height() / 2);
    else if (top < offset_ || bottom > offset_ + size_.height())
        scrollTo(top);
}

StaffPage::View StaffPage::view() const {
    const std::size_t count = score_.systems().size();
    View view;
    view.first = score_.systemAt((offset_ - kPadding) * 2 / space_);
    view.end = view.first;
    while (view.end < count && placeOf(view.end).top < size_.height())
        ++view.end;
    return view;
}

score_painter::Place StaffPage::placeOf(std::size_t system) const {
    return {kPadding + score_painter::kBraceRoom * space_,
            kPadding + score_.topOf(system) * space_ / 2 - offset_, score_.page().width * space_,
            space_};
}

std::optional<std::size_t> StaffPage::systemOf(int entry) const {
    const std::size_t at = score_.find(entry);
    if (at == score_.systems().size() || !system(at).has(entry))
        return std::nullopt;
    return at;
}

QRectF StaffPage::rectOf(std::size_t index, int entry) const {
    const auto stretch = system(index).stretchOf(entry);
    const auto place = placeOf(index);
    return {QPointF(place.x(stretch.left), place.top),
            QPointF(place.x(stretch.right), place.top + system(index).height() * space_ / 2)};
}

std::optional<std::size_t> StaffPage::systemAt(qreal y) const {
    std::optional<std::size_t> nearest;
    qreal least = std::numeric_limits<qreal>::max();
    const View inView = view();
    for (std::size_t i = inView.first; i < inView.end; ++i) {
        const qreal top = placeOf(i).top;
        const qreal bottom = top + system(i).height() * space_ / 2;
        const qreal distance = std::max({top - y, y - bottom, 0.0});
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    return nearest;
}

notation::Staff StaffPage::staffOfNext(const staff_entry::Entry& entry) const {
    const int count = source_.count();
    const notation::Source longer{
        [count] { return count + 1; },
        [&](int index) { return index < count ? source_.entryAt(index) : entry; },
        source_.notation};
    const System next =
        notation::layOutSystem(longer, score_.systems().back().start, score_.page());
    return next.symbols.empty() ? notation::Staff::Treble : next.symbols.back().staff;
}

std::optional<int> StaffPage::entryAt(QPointF point) const {
    const auto index = systemAt(point.y());
    if (!index)
        return std::nullopt;
    const auto place = placeOf(*index);
    const double x = (point.x() - place.left) / space_;
    for (const Symbol& symbol : system(*index).symbols) {
        const auto stave = score_painter::staveOf(system(*index), symbol.staff, place);
        if (isOn(symbol, x, (stave.bottomLine - point.y()) * 2 / space_))
            return symbol.entry;
    }
    return std::nullopt;
}

std::optional<StaffPage::Pointed> StaffPage::noteAt(QPointF point) const {
    const auto index = systemAt(point.y());
    if (!index)
        return std::nullopt;
    const auto place = placeOf(*index);
    const auto treble = score_painter::staveOf(system(*index), notation::Staff::Treble, place);
    const auto bass = score_painter::staveOf(system(*index), notation::Staff::Bass, place);
    const qreal middle = (treble.bottomLine + bass.y(engraving::kTopLine)) / 2;
    const bool upper = point.y() < middle;
    const notation::Staff staff = upper ? notation::Staff::Treble : notation::Staff::Bass;
    const qreal bottom = upper ? treble.bottomLine : bass.bottomLine;
    return Pointed{*index, staff, notation::noteAt(staff, (bottom - point.y()) * 2 / space_)};
}
