#include "composer/composer_staff_cursor.h"

#include <QPainter>

#include <algorithm>

namespace {

/// In staff spaces.
constexpr double kNoteRoom = 0.6;
constexpr double kSharpRoom = 1.35;
constexpr double kSharpReach = 1.6;

}  // namespace

ActiveNotePicture::ActiveNotePicture(const MusicFont& font, QWidget* parent)
    : QWidget(parent), font_(font) {
    setObjectName(QStringLiteral("lblCursore"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void ActiveNotePicture::setPlace(const engraving::Stave& stave, qreal x, int position) {
    stave_ = stave;
    x_ = x;
    note_.position = position;
    const qreal room = kNoteRoom * stave.space;
    const qreal end = stave.y(engraving::stemEnd(position));
    const qreal y = stave.y(position);
    const qreal width = engraving::headWidth(note_.duration) * stave.space;
    setGeometry(QRectF(QPointF(x - room, std::min(y, end) - room),
                       QPointF(x + width + room, std::max(y, end) + room))
                    .toAlignedRect());
    update();
}

void ActiveNotePicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.translate(-pos());
    painter.setPen(palette().color(QPalette::Highlight));
    engraving::drawNote(painter, font_, engraving::onPixels(painter, stave_), x_, note_);
}

ActiveSharpPicture::ActiveSharpPicture(const MusicFont& font, QWidget* parent)
    : QWidget(parent), font_(font) {
    setObjectName(QStringLiteral("lblAccidente"));
    setAccessibleName(QStringLiteral("Diesis"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void ActiveSharpPicture::setPlace(const engraving::Stave& stave, qreal x, int position) {
    stave_ = stave;
    x_ = x;
    position_ = position;
    const qreal width = kSharpRoom * stave.space;
    const qreal reach = kSharpReach * stave.space;
    setGeometry(QRectF(x - width, stave.y(position) - reach, width, 2 * reach).toAlignedRect());
    update();
}

void ActiveSharpPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.translate(-pos());
    painter.setPen(palette().color(QPalette::Highlight));
    engraving::drawAccidental(painter, font_, engraving::onPixels(painter, stave_), x_, position_,
                              engraving::Accidental::Sharp);
}
