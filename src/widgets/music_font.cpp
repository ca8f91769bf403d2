#include "widgets/music_font.h"

#include <QRawFont>
#include <QResource>
#include <QTransform>

namespace {

/// The outlines are read at a size where hinting or rounding cannot be seen in them.
constexpr double kPixelsPerEm = 1000;
constexpr double kSpacesPerEm = 4;

}  // namespace

MusicFont::MusicFont() {
    const QResource file(QStringLiteral(":/fonts/bravura.otf"));
    const auto data = QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()),
                                              static_cast<qsizetype>(file.size()));
    const QRawFont font(data, kPixelsPerEm, QFont::PreferNoHinting);
    const double spacesPerPixel = kSpacesPerEm / kPixelsPerEm;
    const QTransform toSpaces = QTransform::fromScale(spacesPerPixel, spacesPerPixel);

    for (const glyph_table::Info& info : glyph_table::kGlyphs) {
        const auto indexes = font.glyphIndexesForString(QString(QChar(info.codePoint)));
        if (!indexes.isEmpty()) {
            outlines_[static_cast<std::size_t>(info.glyph)] =
                toSpaces.map(font.pathForGlyph(indexes.front()));
        }
    }
}

const MusicFont& MusicFont::shared() {
    static const MusicFont font;
    return font;
}
