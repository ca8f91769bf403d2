#include "reference/engraved_pictures.h"

#include "widgets/music_font.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

using engraving::Stave;

/// In staff spaces.
constexpr double kValueWidth = 10;
constexpr double kValueHeight = 6.8;
constexpr double kAboveValueStave = 1.6;
constexpr double kSignatureWidth = 17;
constexpr double kSignatureHeight = 15.4;
constexpr double kAboveTreble = 1.9;
constexpr double kTopLineToBass = 8.6;  ///< from the treble's top line to the bass's
constexpr double kBraceRoom = 1.2;
constexpr double kBraceGap = 0.3;
constexpr double kClefIndent = 0.7;
constexpr double kSignsIndent = 4.3;
constexpr double kStaveHeight = 4;

constexpr double kSmallSpaceInLines = 0.54;  ///< a staff space as a share of a line of text
constexpr double kLargeSpaceInLines = 0.8;

/// In the lowest space, so that the stem goes up and only its flags rise above the stave.
constexpr int kNotePosition = 1;

QSize sizeInSpaces(const QWidget& widget, double width, double height, double spaceInLines) {
    const double space = std::max(1.0, std::round(spaceInLines * widget.fontMetrics().height()));
    return {qCeil(width * space), qCeil(height * space)};
}

}  // namespace

ValuePicture::ValuePicture(Kind kind, engraving::Duration duration, QWidget* parent)
    : QWidget(parent), kind_(kind), duration_(duration) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ValuePicture::sizeHint() const {
    return sizeInSpaces(*this, kValueWidth, kValueHeight, kSmallSpaceInLines);
}

void ValuePicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    Stave stave;
    stave.space = engraving::wholePixelSpace(height() / kValueHeight, devicePixelRatioF());
    stave.right = width();
    stave.bottomLine = (kAboveValueStave + kStaveHeight) * stave.space;
    stave = engraving::onPixels(painter, stave);
    engraving::drawLines(painter, stave);

    const MusicFont& font = MusicFont::shared();
    const engraving::Note note{kNotePosition, duration_};
    const bool isNote = kind_ == Kind::Note;
    const qreal inked = isNote ? engraving::headWidth(duration_) : engraving::restWidth(duration_);
    const qreal x = (stave.left + stave.right - inked * stave.space) / 2;
    if (isNote)
        engraving::drawNote(painter, font, stave, x, note);
    else
        engraving::drawRest(painter, font, stave, x, duration_);
}

SignatureStaff::SignatureStaff(const key_signatures::KeySignature& key, QWidget* parent)
    : QWidget(parent), key_(key) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SignatureStaff::sizeHint() const {
    return sizeInSpaces(*this, kSignatureWidth, kSignatureHeight, kLargeSpaceInLines);
}

void SignatureStaff::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    const qreal space = engraving::wholePixelSpace(
        std::min(width() / kSignatureWidth, height() / kSignatureHeight), devicePixelRatioF());
    Stave treble;
    treble.space = space;
    treble.left = (width() - kSignatureWidth * space) / 2 + kBraceRoom * space;
    treble.right = treble.left + (kSignatureWidth - kBraceRoom) * space;
    treble.bottomLine =
        (height() - kSignatureHeight * space) / 2 + (kAboveTreble + kStaveHeight) * space;
    Stave bass = treble;
    bass.bottomLine += kTopLineToBass * space;

    treble = engraving::onPixels(painter, treble);
    bass = engraving::onPixels(painter, bass);
    engraving::drawBarline(painter, treble, bass, treble.left);
    engraving::drawBrace(painter, MusicFont::shared(), treble, bass,
                         treble.left - kBraceGap * space);
    paintStave(painter, treble, engraving::Clef::G);
    paintStave(painter, bass, engraving::Clef::F);
}

void SignatureStaff::paintStave(QPainter& painter, const Stave& stave, engraving::Clef clef) const {
    const MusicFont& font = MusicFont::shared();
    engraving::drawLines(painter, stave);
    engraving::drawClef(painter, font, stave, stave.left + kClefIndent * stave.space, clef);
    engraving::drawKeySignature(painter, font, stave, stave.left + kSignsIndent * stave.space, clef,
                                key_.fifths);
}
