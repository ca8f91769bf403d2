#include "composer/staff/composer_staff_cursor.h"

#include "platform/user_text.h"

#include <QPainter>

#include <algorithm>

namespace {

/// In staff spaces.
constexpr double kNoteRoom = 0.6;
constexpr double kSharpRoom = 1.35;
constexpr double kSharpReach = 1.6;

}  // namespace

CursorPicture::CursorPicture(const QString& name, const MusicFont& font, QWidget* parent)
    : QWidget(parent), font_(font) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void CursorPicture::setPlace(const engraving::Stave& stave, qreal x, int position) {
    place_ = {stave, x, position};
    setGeometry(extent(place_).toAlignedRect());
    update();
}

void CursorPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.translate(-pos());
    painter.setPen(palette().color(QPalette::Highlight));
    draw(painter, font_, {engraving::onPixels(painter, place_.stave), place_.x, place_.position});
}

ActiveNotePicture::ActiveNotePicture(const MusicFont& font, QWidget* parent)
    : CursorPicture(QStringLiteral("lblCursore"), font, parent) {}

QRectF ActiveNotePicture::extent(const Place& place) const {
    const engraving::Stave& stave = place.stave;
    const qreal room = kNoteRoom * stave.space;
    const qreal end = stave.y(engraving::stemEnd(place.position));
    const qreal y = stave.y(place.position);
    const qreal width = engraving::headWidth(engraving::Note().duration) * stave.space;
    return {QPointF(place.x - room, std::min(y, end) - room),
            QPointF(place.x + width + room, std::max(y, end) + room)};
}

void ActiveNotePicture::draw(QPainter& painter, const MusicFont& font, const Place& place) const {
    engraving::drawNote(painter, font, place.stave, place.x, {.position = place.position});
}

ActiveSharpPicture::ActiveSharpPicture(const MusicFont& font, QWidget* parent)
    : CursorPicture(QStringLiteral("lblAccidente"), font, parent) {
    setAccessibleName(UserText::tr("Diesis"));
}

QRectF ActiveSharpPicture::extent(const Place& place) const {
    const qreal width = kSharpRoom * place.stave.space;
    const qreal reach = kSharpReach * place.stave.space;
    return {place.x - width, place.stave.y(place.position) - reach, width, 2 * reach};
}

void ActiveSharpPicture::draw(QPainter& painter, const MusicFont& font, const Place& place) const {
    engraving::drawAccidental(painter, font, place.stave, place.x, place.position,
                              engraving::Accidental::Sharp);
}
