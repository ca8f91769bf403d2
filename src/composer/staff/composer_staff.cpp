#include "composer/staff/composer_staff.h"

#include "composer/staff/composer_staff_cursor.h"
#include "core/pitch.h"
#include "platform/user_text.h"
#include "widgets/appearance.h"
#include "widgets/music_font.h"
#include "widgets/parts_accessible.h"
#include "widgets/piano_key_name.h"

#include <QAccessible>
#include <QEvent>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <map>

namespace {

using composer_staff_layout::Head;
using composer_staff_layout::System;
using composer_staff_painter::Staves;

/// In staff spaces.
constexpr double kBraceRoom = 2.2;
constexpr double kColumnWidth = 5.5;
constexpr double kColumnNote = 2.6;  ///< the head's left edge in the column
constexpr double kNarrowest = 24;    ///< the width that the fixed parts and one long note need

/// In pixels.
constexpr double kPadding = 9;
constexpr double kMarkSize = 6;

constexpr int kNumbersEvery = 5;
constexpr double kNumberSize = 0.72;  ///< of the widget's font
constexpr int kSystemLookBack = 8;

constexpr double kColumnTint = 0.14;
constexpr double kCurrentTint = 0.24;
constexpr double kPointedInk = 0.5;
constexpr double kNumberInk = 0.6;

QFont numberFont(const QWidget& widget) {
    QFont font = widget.font();
    font.setPixelSize(std::max(8, qRound(kNumberSize * widget.fontInfo().pixelSize())));
    return font;
}

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != QLatin1String("QWidget"))
        return nullptr;
    auto* staff = dynamic_cast<ComposerStaff*>(object);
    return staff ? new PartsAccessible(staff, QAccessible::Graphic) : nullptr;
}

}  // namespace

ComposerStaff::ComposerStaff(QWidget* parent)
    : QWidget(parent),
      font_(MusicFont::shared()),
      cursor_(new ActiveNotePicture(font_, this)),
      accidental_(new ActiveSharpPicture(font_, this)) {
    QAccessible::installFactory(makeInterface);
    setObjectName(QStringLiteral("Regolo"));
    setAccessibleName(UserText::tr("Pentagramma della melodia"));
    setToolTip(UserText::tr("Clicca per scegliere la nota"));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    describe();
}

void ComposerStaff::setSource(Source source) {
    source_ = std::move(source);
    refresh();
}

void ComposerStaff::refresh() {
    layOutEntries();
    describe();
    update();
}

void ComposerStaff::setCurrentEntry(std::optional<int> entry) {
    if (entry == current_)
        return;
    const Shown* before = current_ ? shown(*current_) : nullptr;
    const Shown* after = entry ? shown(*entry) : nullptr;
    current_ = entry;
    if (!after) {
        refresh();
        return;
    }
    if (before)
        update(cellRect(*before).toAlignedRect());
    update(cellRect(*after).toAlignedRect());
    describe();
}

void ComposerStaff::setPlayRange(int first, int last) {
    if (first == rangeFirst_ && last == rangeLast_)
        return;
    rangeFirst_ = first;
    rangeLast_ = last;
    update();
}

void ComposerStaff::setActiveNote(int noteNumber) {
    activeNote_ = pitch::isPlayable(noteNumber) ? noteNumber : 0;
    placeActiveNote();
    describe();
}

bool ComposerStaff::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked)
        release();
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::FontChange)
        arrange();
    return handled;
}

void ComposerStaff::resizeEvent(QResizeEvent* /*event*/) {
    arrange();
}

void ComposerStaff::hideEvent(QHideEvent* event) {
    release();
    QWidget::hideEvent(event);
}

/// The second press of a double click comes here too: every press sounds a note.
void ComposerStaff::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    release();
    pressed_ = noteAt(event->position().y());
    if (chosen_)
        chosen_(*pressed_);
}

void ComposerStaff::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        release();
    else
        QWidget::mouseReleaseEvent(event);
}

void ComposerStaff::mouseMoveEvent(QMouseEvent* event) {
    setPointed(noteAt(event->position().y()));
}

void ComposerStaff::leaveEvent(QEvent* /*event*/) {
    setPointed(std::nullopt);
}

void ComposerStaff::arrange() {
    const double numbers = QFontMetricsF(numberFont(*this)).height();
    const double room = height() - 2 * kPadding - numbers;
    const double wanted =
        std::min(room * 2 / composer_staff_layout::kHeight, (width() - 2 * kPadding) / kNarrowest);
    const qreal space = engraving::wholePixelSpace(wanted, devicePixelRatioF());
    top_ = kPadding + (room - composer_staff_layout::kHeight * space / 2) / 2;

    staves_.treble.left = kPadding + kBraceRoom * space;
    staves_.treble.right = width() - kPadding;
    staves_.treble.space = space;
    staves_.bass = staves_.treble;
    staves_.treble.bottomLine = top_ + composer_staff_layout::kTrebleBottomLine * space / 2;
    staves_.bass.bottomLine = top_ + composer_staff_layout::kBassBottomLine * space / 2;
    entriesLeft_ = staves_.treble.left + composer_staff_painter::kClefRoom * space;
    entriesRight_ = column().left() - space / 2;

    placeActiveNote();
    refresh();
}

void ComposerStaff::placeActiveNote() {
    const bool any = activeNote_ != 0;
    const Head head = any ? composer_staff_layout::headOf(activeNote_) : Head{};
    if (any) {
        const qreal x = column().left() + kColumnNote * staves_.space();
        cursor_->setPlace(staves_.of(head.system), x, head.position);
        accidental_->setPlace(staves_.of(head.system), x, head.position);
        cursor_->setAccessibleName(noteInWords(activeNote_));
    }
    cursor_->setVisible(any);
    accidental_->setVisible(any && head.sharp);
}

void ComposerStaff::layOutEntries() {
    const int count = source_.count ? source_.count() : 0;
    const bool follows = current_ && *current_ >= 0 && *current_ < count;
    if (!follows)
        view_ = {count - 1, true};
    fetch(view_, count);
    if (follows && !shown(*current_)) {
        std::vector<composer_staff_layout::Placed> places;
        for (const Shown& entry : shown_)
            places.push_back(entry.place);
        view_ = composer_staff_layout::following(view_, places, *current_);
        fetch(view_, count);
    }
}

/// Asks for the entries of a view and engraves them.
void ComposerStaff::fetch(const composer_staff_layout::View& view, int count) {
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
System ComposerStaff::systemOf(int index, const staff_entry::Entry& entry) const {
    staff_entry::Entry note = entry;
    for (int i = index - 1; staff_entry::isRest(note); --i) {
        if (i < 0 || index - i > kSystemLookBack)
            return System::Treble;
        note = source_.entryAt(i);
    }
    return composer_staff_layout::headOf(note.noteNumber).system;
}

const ComposerStaff::Shown* ComposerStaff::shown(int entry) const {
    if (shown_.empty() || entry < shown_.front().place.entry || entry > shown_.back().place.entry)
        return nullptr;
    return &shown_[static_cast<std::size_t>(entry - shown_.front().place.entry)];
}

qreal ComposerStaff::leftOf(const Shown& entry) const {
    return entriesLeft_ + entry.place.left * staves_.space();
}

QRectF ComposerStaff::cellRect(const Shown& entry) const {
    return {leftOf(entry), 2, entry.place.width * staves_.space(), height() - 4.0};
}

QRectF ComposerStaff::column() const {
    const qreal width = kColumnWidth * staves_.space();
    return {staves_.treble.right - width, 1, width, height() - 2.0};
}

int ComposerStaff::noteAt(qreal y) const {
    return composer_staff_layout::noteAt((y - top_) * 2 / std::max<qreal>(staves_.space(), 1));
}

void ComposerStaff::setPointed(std::optional<int> noteNumber) {
    if (noteNumber == pointed_)
        return;
    pointed_ = noteNumber;
    update(column().toAlignedRect());
}

void ComposerStaff::release() {
    if (!pressed_)
        return;
    const int note = *pressed_;
    pressed_.reset();
    if (released_)
        released_(note);
}

void ComposerStaff::describe() {
    QString words = activeNote_ == 0 ? UserText::tr("Nessuna nota attiva")
                                     : UserText::tr("Nota attiva %1").arg(noteInWords(activeNote_));
    const Shown* entry = current_ ? shown(*current_) : nullptr;
    if (!entry && !shown_.empty())
        entry = &shown_.back();
    words += entry ? UserText::tr("; voce %1: %2")
                         .arg(entry->place.entry + 1)
                         .arg(staff_entry::inWords(entry->engraved.entry))
                   : UserText::tr("; melodia vuota");
    if (words != accessibleDescription())
        setAccessibleDescription(words);
}

void ComposerStaff::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintCard(painter);
    if (const Shown* entry = current_ ? shown(*current_) : nullptr) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(appearance::mixed(palette().color(QPalette::Highlight),
                                           palette().color(QPalette::Base), kCurrentTint));
        painter.drawRoundedRect(cellRect(*entry), 4, 4);
    }
    const Staves staves = composer_staff_painter::onPixels(painter, staves_);
    paintPointed(painter, staves);
    painter.setPen(palette().color(QPalette::Text));
    composer_staff_painter::drawSystem(painter, font_, staves);
    for (const Shown& entry : shown_) {
        if (!event->rect().intersects(cellRect(entry).toAlignedRect()))
            continue;
        painter.setPen(palette().color(QPalette::Text));
        composer_staff_painter::drawEntry(painter, font_, staves, leftOf(entry), entry.engraved);
        paintNumber(painter, entry);
        paintRangeMarks(painter, entry);
    }
}

void ComposerStaff::paintCard(QPainter& painter) const {
    const QColor card = palette().color(QPalette::Base);
    const QRectF border = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(border, appearance::kCardCorner, appearance::kCardCorner);
    painter.fillPath(outline, card);
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.fillRect(column().adjusted(0, 0, kPadding, 0),
                     appearance::mixed(palette().color(QPalette::Highlight), card, kColumnTint));
    painter.restore();
    painter.setPen(appearance::cardEdge(*this));
    painter.drawPath(outline);
}

void ComposerStaff::paintPointed(QPainter& painter, const Staves& staves) const {
    if (!pointed_)
        return;
    const Head head = composer_staff_layout::headOf(*pointed_);
    painter.setPen(appearance::mixed(palette().color(QPalette::Highlight),
                                     palette().color(QPalette::Base), kPointedInk));
    engraving::drawNote(painter, font_, staves.of(head.system),
                        column().left() + kColumnNote * staves.space(),
                        {.position = head.position});
}

void ComposerStaff::paintNumber(QPainter& painter, const Shown& entry) const {
    const int number = entry.place.entry + 1;
    if (number != 1 && number % kNumbersEvery != 0)
        return;
    painter.setFont(numberFont(*this));
    painter.setPen(appearance::mixed(palette().color(QPalette::Text),
                                     palette().color(QPalette::Base), kNumberInk));
    const QString text = QString::number(number);
    const QFontMetricsF metrics(painter.font());
    const qreal head =
        engraving::headWidth(entry.engraved.figure.values.front().duration) * staves_.space();
    const qreal middle =
        leftOf(entry) + entry.engraved.cell.heads.front() * staves_.space() + head / 2;
    const qreal left = std::clamp(middle - metrics.horizontalAdvance(text) / 2, kPadding,
                                  entriesRight_ - metrics.horizontalAdvance(text));
    painter.drawText(QPointF(left, height() - kPadding / 2 - metrics.descent()), text);
}

/// A small triangle at the upper edge, which points into the range.
void ComposerStaff::paintRangeMarks(QPainter& painter, const Shown& entry) const {
    const QRectF cell = cellRect(entry);
    const auto mark = [&](qreal x, qreal inwards) {
        QPainterPath path(QPointF(x, cell.top()));
        path.lineTo(x + inwards * kMarkSize, cell.top() + kMarkSize / 2);
        path.lineTo(x, cell.top() + kMarkSize);
        path.closeSubpath();
        painter.fillPath(path, palette().color(QPalette::Highlight));
    };
    if (entry.place.entry == rangeFirst_)
        mark(cell.left() + 1, 1);
    if (entry.place.entry == rangeLast_)
        mark(cell.right() - 1, -1);
}
