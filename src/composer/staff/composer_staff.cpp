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

namespace {

using composer_staff_layout::Head;
using composer_staff_painter::Staves;

constexpr double kPadding = ComposerStaffView::kPadding;
constexpr double kMarkSize = 6;  ///< in pixels

constexpr int kNumbersEvery = 5;
constexpr double kNumberSize = 0.72;  ///< of the widget's font

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
    if (className != QLatin1String(ComposerStaff::staticMetaObject.className()))
        return nullptr;
    return new PartsAccessible(qobject_cast<ComposerStaff*>(object), QAccessible::Graphic);
}

}  // namespace

ComposerStaff::ComposerStaff(QWidget* parent)
    : QWidget(parent),
      font_(MusicFont::shared()),
      cursor_(new ActiveNotePicture(font_, this)),
      accidental_(new ActiveSharpPicture(font_, this)) {
    QAccessible::installFactory(makeInterface);
    // The reading drill's ruler has the same given name: they are never in one window.
    setObjectName(QStringLiteral("Regolo"));
    setAccessibleName(UserText::tr("Pentagramma della melodia"));
    setToolTip(UserText::tr("Clicca per scegliere la nota"));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    describe();
}

void ComposerStaff::setSource(ComposerStaffView::Source source) {
    view_.setSource(std::move(source));
    refresh();
}

void ComposerStaff::refresh() {
    view_.layOutEntries(current_);
    describe();
    update();
}

void ComposerStaff::setCurrentEntry(std::optional<int> entry) {
    if (entry == current_)
        return;
    const ComposerStaffView::Shown* before = view_.find(current_);
    const ComposerStaffView::Shown* after = view_.find(entry);
    current_ = entry;
    if (!after) {
        refresh();
        return;
    }
    if (before)
        update(view_.cellRect(*before).toAlignedRect());
    update(view_.cellRect(*after).toAlignedRect());
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
    pressed_ = view_.noteAt(event->position().y());
    Q_EMIT noteChosen(*pressed_);
}

void ComposerStaff::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        release();
    else
        QWidget::mouseReleaseEvent(event);
}

void ComposerStaff::mouseMoveEvent(QMouseEvent* event) {
    setPointed(view_.noteAt(event->position().y()));
}

void ComposerStaff::leaveEvent(QEvent* /*event*/) {
    setPointed(std::nullopt);
}

void ComposerStaff::arrange() {
    view_.resize(size(), QFontMetricsF(numberFont(*this)).height(), devicePixelRatioF());
    placeActiveNote();
    refresh();
}

void ComposerStaff::placeActiveNote() {
    const bool any = activeNote_ != 0;
    const Head head = any ? composer_staff_layout::headOf(activeNote_) : Head{};
    if (any) {
        const qreal x = view_.columnNoteLeft();
        cursor_->setPlace(view_.staves().of(head.system), x, head.position);
        accidental_->setPlace(view_.staves().of(head.system), x, head.position);
        cursor_->setAccessibleName(noteInWords(activeNote_));
    }
    cursor_->setVisible(any);
    accidental_->setVisible(any && head.sharp);
}

void ComposerStaff::setPointed(std::optional<int> noteNumber) {
    if (noteNumber == pointed_)
        return;
    pointed_ = noteNumber;
    update(view_.column().toAlignedRect());
}

void ComposerStaff::release() {
    if (!pressed_)
        return;
    const int note = *pressed_;
    pressed_.reset();
    Q_EMIT noteReleased(note);
}

void ComposerStaff::describe() {
    QString words = activeNote_ == 0 ? UserText::tr("Nessuna nota attiva")
                                     : UserText::tr("Nota attiva %1").arg(noteInWords(activeNote_));
    const ComposerStaffView::Shown* entry = view_.find(current_);
    if (!entry && !view_.entries().empty())
        entry = &view_.entries().back();
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
    if (const ComposerStaffView::Shown* entry = view_.find(current_)) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(appearance::mixed(palette().color(QPalette::Highlight),
                                           palette().color(QPalette::Base), kCurrentTint));
        painter.drawRoundedRect(view_.cellRect(*entry), 4, 4);
    }
    const Staves staves = composer_staff_painter::onPixels(painter, view_.staves());
    paintPointed(painter, staves);
    painter.setPen(palette().color(QPalette::Text));
    composer_staff_painter::drawSystem(painter, font_, staves);
    for (const ComposerStaffView::Shown& entry : view_.entries()) {
        if (!event->rect().intersects(view_.cellRect(entry).toAlignedRect()))
            continue;
        painter.setPen(palette().color(QPalette::Text));
        composer_staff_painter::drawEntry(painter, font_, staves, view_.leftOf(entry),
                                          entry.engraved);
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
    painter.fillRect(view_.column().adjusted(0, 0, kPadding, 0),
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
    engraving::drawNote(painter, font_, staves.of(head.system), view_.columnNoteLeft(),
                        {.position = head.position});
}

void ComposerStaff::paintNumber(QPainter& painter, const ComposerStaffView::Shown& entry) const {
    const int number = entry.place.entry + 1;
    if (number != 1 && number % kNumbersEvery != 0)
        return;
    painter.setFont(numberFont(*this));
    painter.setPen(appearance::mixed(palette().color(QPalette::Text),
                                     palette().color(QPalette::Base), kNumberInk));
    const QString text = QString::number(number);
    const QFontMetricsF metrics(painter.font());
    const qreal head = engraving::headWidth(entry.engraved.figure.values.front().duration) *
                       view_.staves().space();
    const qreal middle =
        view_.leftOf(entry) + entry.engraved.cell.heads.front() * view_.staves().space() + head / 2;
    const qreal left = std::clamp(middle - metrics.horizontalAdvance(text) / 2, kPadding,
                                  view_.entriesRight() - metrics.horizontalAdvance(text));
    painter.drawText(QPointF(left, height() - kPadding / 2 - metrics.descent()), text);
}

/// A small triangle at the upper edge, which points into the range.
void ComposerStaff::paintRangeMarks(QPainter& painter,
                                    const ComposerStaffView::Shown& entry) const {
    const QRectF cell = view_.cellRect(entry);
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
