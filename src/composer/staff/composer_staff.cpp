#include "composer/staff/composer_staff.h"

#include "composer/notation/entry_in_words.h"
#include "core/note_words.h"
#include "core/pitch.h"
#include "platform/user_text.h"
#include "widgets/appearance.h"
#include "widgets/music_font.h"
#include "widgets/parts_accessible.h"

#include <QEvent>
#include <QFontInfo>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace {

/// A staff space for reading, by the size of the text around the staff and in pixels.
constexpr double kSpaceOfText = 0.85;
constexpr double kSmallestSpace = 8;

constexpr double kPointedInk = 0.5;
constexpr double kWheelStep = 6;    ///< staff spaces a notch
constexpr double kPageShare = 0.9;  ///< of what is in view

/// The card's edge is not painted over.
constexpr int kEdge = 1;

}  // namespace

ComposerStaff::ComposerStaff(QWidget* parent)
    : QWidget(parent),
      font_(MusicFont::shared()),
      bar_(new QScrollBar(Qt::Vertical, this)),
      cursor_(new ActiveNotePicture(font_, this)),
      accidental_(new ActiveSharpPicture(font_, this)) {
    installPartsAccessible<ComposerStaff, QAccessible::Graphic>();
    // The reading drill's ruler has the same given name: they are never in one window.
    setObjectName(QStringLiteral("Regolo"));
    setAccessibleName(UserText::tr("Pentagramma della melodia"));
    setToolTip(UserText::tr("Clicca per scegliere la nota"));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    bar_->setAccessibleName(UserText::tr("Scorri il pentagramma"));
    bar_->setFocusPolicy(Qt::NoFocus);
    bar_->setCursor(Qt::ArrowCursor);
    bar_->hide();
    connect(bar_, &QScrollBar::valueChanged, this, [this](int value) { scrollTo(value); });
    setSource({[] { return 0; }, [](int) { return staff_entry::Entry(); }});
}

void ComposerStaff::setSource(const notation::Source& source) {
    source_ = source;
    page_.setSource(source);
    updatePage();
}

void ComposerStaff::changedFrom(int entry) {
    page_.changedFrom(entry);
    const int count = source_.count();
    if (entry < count - 1)
        page_.showEntry(entry);
    else
        page_.showEnd();
    updatePage();
}

void ComposerStaff::setCurrentEntry(std::optional<int> entry) {
    if (entry == current_)
        return;
    current_ = entry;
    if (current_)
        page_.showEntry(*current_);
    updatePage();
}

void ComposerStaff::setPlayRange(int first, int last) {
    const staff_marks::PlayRange range{first, last};
    if (range == range_)
        return;
    range_ = range;
    update();
}

void ComposerStaff::setPreview(const Preview& preview) {
    const bool another = preview.entry.noteNumber != preview_.entry.noteNumber;
    preview_ = preview;
    // While something plays, its entry stays in view.
    if (another && pitch::isPlayable(preview_.entry.noteNumber) && !current_)
        page_.showEnd();
    updatePage();
}

void ComposerStaff::scrollPage(bool forward) {
    const qreal step = kPageShare * page_.height();
    scrollTo(page_.offset() + (forward ? step : -step));
}

bool ComposerStaff::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked)
        letGo();
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::FontChange)
        arrange();
    return handled;
}

void ComposerStaff::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void ComposerStaff::hideEvent(QHideEvent* event) {
    letGo();
    QWidget::hideEvent(event);
}

void ComposerStaff::wheelEvent(QWheelEvent* event) {
    const QPoint pixels = event->pixelDelta();
    const qreal step =
        pixels.isNull() ? event->angleDelta().y() / 120.0 * kWheelStep * page_.space() : pixels.y();
    scrollTo(page_.offset() - step);
    event->accept();
}

/// The second press of a double click comes here too: every press sounds a note. Beside the staves
/// and with the middle button, the page is dragged.
void ComposerStaff::mousePressEvent(QMouseEvent* event) {
    const bool left = event->button() == Qt::LeftButton;
    const QPointF at = event->position();
    const bool beside = at.x() < page_.placeOf(0).x(notation::kClefRoom);
    if (event->button() == Qt::MiddleButton || (left && beside && bar_->isVisible())) {
        drag_ = Drag{at.y(), page_.offset()};
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (!left) {
        QWidget::mousePressEvent(event);
        return;
    }
    release();
    if (const auto entry = page_.entryAt(at)) {
        Q_EMIT entryChosen(*entry);
        return;
    }
    const auto pointed = page_.noteAt(at);
    if (!pointed)
        return;
    pressed_ = pointed->noteNumber;
    Q_EMIT noteChosen(*pressed_);
}

void ComposerStaff::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    if (pressed_)
        Q_EMIT noteDoubleClicked();
}

void ComposerStaff::mouseReleaseEvent(QMouseEvent* event) {
    if (!(event->buttons() & (Qt::LeftButton | Qt::MiddleButton)))
        endDrag();
    if (event->button() == Qt::LeftButton)
        release();
    else
        QWidget::mouseReleaseEvent(event);
}

void ComposerStaff::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (drag_) {
        scrollTo(drag_->offset + drag_->y - at.y());
        return;
    }
    const bool onEntry = page_.entryAt(at).has_value();
    const bool beside = at.x() < page_.placeOf(0).x(notation::kClefRoom);
    if (beside && bar_->isVisible())
        setCursor(Qt::OpenHandCursor);
    else if (onEntry)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    setPointed(onEntry || beside ? std::nullopt : page_.noteAt(at), at.x());
}

void ComposerStaff::leaveEvent(QEvent* /*event*/) {
    setPointed(std::nullopt, 0);
}

void ComposerStaff::arrange() {
    const int barWidth = bar_->sizeHint().width();
    bar_->setGeometry(width() - barWidth - kEdge, kEdge, barWidth, height() - 2 * kEdge);
    const double text = fontInfo().pixelSize();
    page_.resize(QSizeF(width() - barWidth, height()),
                 std::max(kSmallestSpace, kSpaceOfText * text), devicePixelRatioF());
    if (current_)
        page_.showEntry(*current_);
    else if (source_.count() == 0)
        page_.showEnd();
    updatePage();
}

void ComposerStaff::scrollTo(qreal offset) {
    page_.scrollTo(offset);
    updatePage();
}

/// Shows the page as it stands now.
void ComposerStaff::updatePage() {
    const QSignalBlocker blocker(bar_);
    bar_->setRange(0, qRound(page_.largestOffset()));
    bar_->setPageStep(qRound(page_.height()));
    bar_->setSingleStep(qRound(kWheelStep * page_.space()));
    bar_->setValue(qRound(page_.offset()));
    bar_->setVisible(page_.largestOffset() > 0);
    placePreview();
    describe();
    update();
}

void ComposerStaff::placePreview() {
    std::optional<EntryPreview> preview;
    if (pitch::isPlayable(preview_.entry.noteNumber)) {
        if (preview_.overCurrent && current_)
            preview = previewOver(page_, *current_, preview_.entry.noteNumber);
        if (!preview)
            preview = previewAtEnd(page_, preview_.entry, preview_.tied);
    }
    cursor_->setVisible(preview.has_value());
    accidental_->setVisible(preview &&
                            preview->note().note.accidental != engraving::Accidental::None);
    if (!preview)
        return;
    cursor_->setAccessibleName(noteInWords(preview_.entry.noteNumber));
    cursor_->show(*preview);
    if (!accidental_->isHidden())
        accidental_->show(*preview);
}

void ComposerStaff::setPointed(std::optional<StaffPage::Pointed> pointed, qreal x) {
    if (pointed == pointed_ && (!pointed || x == pointedX_))
        return;
    pointed_ = pointed;
    pointedX_ = x;
    update();
}

void ComposerStaff::release() {
    if (!pressed_)
        return;
    const int note = *pressed_;
    pressed_.reset();
    Q_EMIT noteReleased(note);
}

void ComposerStaff::endDrag() {
    if (!drag_)
        return;
    drag_.reset();
    unsetCursor();
}

/// Where the release of what the mouse holds does not come.
void ComposerStaff::letGo() {
    release();
    endDrag();
}

void ComposerStaff::describe() {
    const int active = preview_.entry.noteNumber;
    const int count = source_.count();
    QString words = pitch::isPlayable(active)
                        ? UserText::tr("Nota attiva %1").arg(noteInWords(active))
                        : UserText::tr("Nessuna nota attiva");
    const int entry = current_ && *current_ < count ? *current_ : count - 1;
    words += entry >= 0 ? UserText::tr("; voce %1: %2")
                              .arg(entry + 1)
                              .arg(staff_entry::inWords(source_.entryAt(entry)))
                        : UserText::tr("; melodia vuota");
    if (words != accessibleDescription())
        setAccessibleDescription(words);
}

void ComposerStaff::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    appearance::paintCard(painter, *this);
    painter.setClipRect(rect().adjusted(kEdge, kEdge, -kEdge, -kEdge) & event->rect());
    const QColor ink = palette().color(QPalette::Text);
    const StaffPage::View view = page_.view();
    for (std::size_t i = view.first; i < view.end; ++i) {
        if (current_ && page_.system(i).has(*current_))
            staff_marks::paintCurrent(painter, *this, page_, i, *current_);
        painter.setPen(ink);
        score_painter::drawStaves(painter, font_, page_.system(i), page_.placeOf(i));
        score_painter::drawSymbols(painter, font_, page_.system(i), page_.placeOf(i));
        staff_marks::paintRange(painter, *this, page_, i, range_);
        staff_marks::paintNumbers(painter, *this, page_, i);
        staff_marks::paintBarNumber(painter, *this, page_, i);
    }
    paintPointed(painter);
}

/// The note that a click would choose, at the pointer.
void ComposerStaff::paintPointed(QPainter& painter) const {
    if (!pointed_)
        return;
    const auto place = page_.placeOf(pointed_->system);
    const auto stave =
        score_painter::staveOf(page_.system(pointed_->system), pointed_->staff, place);
    const engraving::Note note{
        .position = notation::headOf(pointed_->noteNumber, pointed_->staff).position};
    painter.setPen(appearance::mixed(palette().color(QPalette::Highlight),
                                     palette().color(QPalette::Base), kPointedInk));
    const qreal x = pointedX_ - engraving::headWidth(note.duration) * place.space / 2;
    engraving::drawNote(painter, font_, engraving::onPixels(painter, stave), x, note);
}
