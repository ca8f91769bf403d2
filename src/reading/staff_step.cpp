#include "reading/staff_step.h"

namespace staff_step {
namespace {

using grand_staff::kTopLine;

constexpr std::array<const char*, 5> kLineNames{"prima", "seconda", "terza", "quarta", "quinta"};
constexpr std::array<const char*, 5> kOrdinals{"primo", "secondo", "terzo", "quarto", "quinto"};

QString word(const std::array<const char*, 5>& words, int index) {
    return QString::fromUtf8(words[static_cast<std::size_t>(index)]);
}

/// A place outside the five lines, `distance` steps from the nearest line: odd distances hang on
/// the line or ledger line before them, even ones are cut by a ledger line.
QString outsideInWords(int distance, const QString& side, const QString& firstSpace) {
    if (distance == 1)
        return firstSpace;
    const QString ledger =
        QStringLiteral("%1 taglio addizionale").arg(word(kOrdinals, distance / 2 - 1));
    if (distance % 2 == 0)
        return QStringLiteral("%1 %2").arg(ledger, side);
    const QString beyond =
        side == QLatin1String("in alto") ? QStringLiteral("sopra") : QStringLiteral("sotto");
    return QStringLiteral("%1 il %2 %3").arg(beyond, ledger, side);
}

QString placeOnSystem(int aboveBottomLine) {
    if (aboveBottomLine < 0) {
        return outsideInWords(-aboveBottomLine, QStringLiteral("in basso"),
                              QStringLiteral("sotto la prima linea"));
    }
    if (aboveBottomLine > kTopLine) {
        return outsideInWords(aboveBottomLine - kTopLine, QStringLiteral("in alto"),
                              QStringLiteral("sopra la quinta linea"));
    }
    if (aboveBottomLine % 2 == 0)
        return QStringLiteral("%1 linea").arg(word(kLineNames, aboveBottomLine / 2));
    return QStringLiteral("%1 spazio").arg(word(kOrdinals, aboveBottomLine / 2));
}

}  // namespace

pitch::NoteIndex soundingNote(int step) {
    return pitch::StepToNoteIndex(diatonicPosition(step)).value_or(0);
}

QString placeInWords(int step) {
    if (!carriesNote(step))
        return {};
    if (isTreble(step))
        return QStringLiteral("Chiave di Sol, ") + placeOnSystem(step - kTrebleBottomLine);
    return QStringLiteral("Chiave di Fa, ") + placeOnSystem(step - kBassBottomLine);
}

}  // namespace staff_step
