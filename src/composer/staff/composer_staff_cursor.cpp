#include "composer/staff/composer_staff_cursor.h"

#include "platform/user_text.h"
#include "widgets/engraving_spans.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace {

/// In staff spaces.
constexpr double kTieLength = 2.4;
constexpr double kSideRoom = 0.2;

/// As `engraving::Accidental` counts them.
constexpr std::array kAccidentals{
    "", QT_TRANSLATE_NOOP("UserText", "Bemolle"), QT_TRANSLATE_NOOP("UserText", "Bequadro"),
    QT_TRANSLATE_NOOP("UserText", "Diesis"), QT_TRANSLATE_NOOP("UserText", "Doppio diesis")};

const char* nameOf(engraving::Accidental accidental) {
    return kAccidentals[static_cast<std::size_t>(accidental)];
}

/// Above and below the staff that the note stands on, as far as its ink goes.
QRectF roomOf(const EntryPreview& preview) {
    const notation::System& entry = preview.entry;
    const notation::Staff staff = preview.note().staff;
    const engraving::Stave stave = score_painter::staveOf(entry, staff, preview.place);
    const bool treble = staff == notation::Staff::Treble;
    const double above = engraving::kTopLine + (treble ? entry.above : entry.gap);
    const double below = treble ? entry.gap : entry.below;
    return {QPointF(stave.left, stave.y(above)), QPointF(stave.right, stave.y(-below))};
}

}  // namespace

CursorPicture::CursorPicture(const QString& name, const MusicFont& font, QWidget* parent)
    : QWidget(parent), font_(font) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void CursorPicture::show(const EntryPreview& preview) {
    preview_ = preview;
    const auto [left, right] = part(preview);
    QRectF room = roomOf(preview);
    room.setLeft(preview.place.x(left));
    room.setRight(preview.place.x(right));
    setGeometry(room.toAlignedRect());
    setVisible(true);
    update();
}

void CursorPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-pos());
    painter.setPen(palette().color(QPalette::Highlight));
    score_painter::drawSymbols(painter, font_, preview_.entry, preview_.place);
    if (preview_.tied) {
        const notation::Symbol& note = preview_.note();
        const auto stave = score_painter::staveOf(preview_.entry, note.staff, preview_.place);
        engraving::drawTieOfNotes(painter, engraving::onPixels(painter, stave),
                                  preview_.place.x(-kTieLength), preview_.place.x(0), note.note);
    }
}

ActiveNotePicture::ActiveNotePicture(const MusicFont& font, QWidget* parent)
    : CursorPicture(QStringLiteral("lblCursore"), font, parent) {}

CursorPicture::Part ActiveNotePicture::part(const EntryPreview& preview) const {
    const notation::Symbol& note = preview.note();
    const double ledger = glyph_table::kLedgerLineExtension + kSideRoom;
    return {preview.tied ? -kTieLength : -ledger,
            std::max(preview.entry.end, notation::extentOf(note).right) + kSideRoom};
}

ActiveSharpPicture::ActiveSharpPicture(const MusicFont& font, QWidget* parent)
    : CursorPicture(QStringLiteral("lblAccidente"), font, parent) {
    setAccessibleName(UserText::tr(nameOf(engraving::Accidental::Sharp)));
}

void ActiveSharpPicture::show(const EntryPreview& preview) {
    setAccessibleName(UserText::tr(nameOf(preview.note().note.accidental)));
    CursorPicture::show(preview);
}

CursorPicture::Part ActiveSharpPicture::part(const EntryPreview& preview) const {
    const engraving::Note& note = preview.note().note;
    return {-engraving::extentOf(note).left - kSideRoom, -engraving::accidentalGap(note.position)};
}
