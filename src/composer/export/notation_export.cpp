#include "composer/export/notation_export.h"

#include "composer/exchange/braille_cells.h"
#include "composer/exchange/braille_writer.h"
#include "composer/exchange/musicxml_writer.h"
#include "composer/exchange/score_heading.h"
#include "platform/user_text.h"

#include <QStringList>

namespace notation_export {
namespace {

constexpr std::size_t kNumbersShown = 20;

}  // namespace

Format musicXmlFormat(const QString& fileName) {
    return fileName.endsWith(QLatin1String(".mxl"), Qt::CaseInsensitive)
               ? Format::CompressedMusicXml
               : Format::MusicXml;
}

Format brailleFormat(const QString& fileName) {
    return fileName.endsWith(QLatin1String(".brf"), Qt::CaseInsensitive) ? Format::AsciiBraille
                                                                         : Format::Braille;
}

QByteArray bytesOf(const score::BarView& view, const ScoreHeading& heading, Format format) {
    switch (format) {
        case Format::MusicXml:
            return musicxml::write(view, heading);
        case Format::CompressedMusicXml:
            return musicxml::writeCompressed(view, heading);
        case Format::Braille:
            return braille::write(view, heading).toUtf8();
        case Format::AsciiBraille:
            return braille::ascii(braille::write(view, heading)).replace('\n', "\r\n");
    }
    return {};
}

QString faultOf(const score::BarView& view) {
    if (view.unwritable.empty())
        return {};
    QStringList numbers;
    for (const int entry : view.unwritable) {
        if (static_cast<std::size_t>(numbers.size()) == kNumbersShown) {
            numbers += QStringLiteral("…");
            break;
        }
        numbers += QString::number(entry + 1);
    }
    return UserText::tr("Nessun valore di nota scrive esattamente la durata delle note: %1 !!!")
        .arg(numbers.join(QStringLiteral(", ")));
}

QString sheetFault(const Melody& melody, const score::Notation& notation) {
    return notation.metre ? faultOf(score::barsOf(melody, notation)) : QString();
}

}  // namespace notation_export
