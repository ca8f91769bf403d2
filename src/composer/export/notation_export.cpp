#include "composer/export/notation_export.h"

#include "composer/exchange/braille_cells.h"
#include "composer/exchange/braille_writer.h"
#include "composer/exchange/musicxml_writer.h"
#include "composer/exchange/score_heading.h"
#include "platform/user_text.h"

#include <QStringList>

#include <array>

namespace notation_export {
namespace {

using Reason = score::Unwritable::Reason;

constexpr qsizetype kNumbersShown = 20;

/// By `Reason`. The last is said of the first such note.
constexpr std::array kFaults{
    QT_TRANSLATE_NOOP("UserText",
                      "Nessun valore di nota scrive esattamente la durata delle note: %1 !!!"),
    QT_TRANSLATE_NOOP("UserText",
                      "In queste battute nessun valore di nota scrive esattamente le parti in cui "
                      "la stanghetta divide le note: %1 !!!"),
    QT_TRANSLATE_NOOP("UserText", "L'attributo è sconosciuto nelle note: %1 !!!"),
    QT_TRANSLATE_NOOP("UserText", "La melodia è troppo lunga, dalla nota %1 in poi !!!"),
};
static_assert(kFaults.size() == static_cast<std::size_t>(Reason::Length) + 1);

/// The numbers of the entries that a reason concerns, from 1.
QStringList numbersOf(const score::BarView& view, Reason reason) {
    const qsizetype most = reason == Reason::Length ? 1 : kNumbersShown + 1;
    QStringList numbers;
    for (const score::Unwritable& entry : view.unwritable) {
        if (entry.reason == reason && numbers.size() < most)
            numbers += QString::number(entry.entry + 1);
    }
    if (numbers.size() > kNumbersShown)
        numbers.back() = QStringLiteral("…");
    return numbers;
}

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
    QStringList faults;
    for (std::size_t reason = 0; reason < kFaults.size(); ++reason) {
        const QStringList numbers = numbersOf(view, static_cast<Reason>(reason));
        if (!numbers.isEmpty())
            faults += UserText::tr(kFaults[reason]).arg(numbers.join(QStringLiteral(", ")));
    }
    return faults.join(QLatin1Char('\n'));
}

QString sheetFault(const Melody& melody, const score::Notation& notation) {
    return notation.metre ? faultOf(score::barsOf(melody, notation)) : QString();
}

}  // namespace notation_export
