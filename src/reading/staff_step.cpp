#include "reading/staff_step.h"

#include "platform/user_text.h"

namespace staff_step {
namespace {

using grand_staff::kTopLine;

constexpr std::array<const char*, 5> kLineNames{
    QT_TRANSLATE_NOOP("UserText", "prima"), QT_TRANSLATE_NOOP("UserText", "seconda"),
    QT_TRANSLATE_NOOP("UserText", "terza"), QT_TRANSLATE_NOOP("UserText", "quarta"),
    QT_TRANSLATE_NOOP("UserText", "quinta")};
constexpr std::array<const char*, 5> kOrdinals{
    QT_TRANSLATE_NOOP("UserText", "primo"), QT_TRANSLATE_NOOP("UserText", "secondo"),
    QT_TRANSLATE_NOOP("UserText", "terzo"), QT_TRANSLATE_NOOP("UserText", "quarto"),
    QT_TRANSLATE_NOOP("UserText", "quinto")};

QString word(const std::array<const char*, 5>& words, int index) {
    return UserText::tr(words[static_cast<std::size_t>(index)]);
}

/// A place outside the five lines, `distance` steps from the nearest line: odd distances hang on
/// the line or ledger line before them, even ones are cut by a ledger line.
QString outsideInWords(int distance, bool above) {
    if (distance == 1)
        return above ? UserText::tr("sopra la quinta linea") : UserText::tr("sotto la prima linea");
    const QString ledger =
        UserText::tr("%1 taglio addizionale").arg(word(kOrdinals, distance / 2 - 1));
    const QString side = above ? UserText::tr("in alto") : UserText::tr("in basso");
    if (distance % 2 == 0)
        return QStringLiteral("%1 %2").arg(ledger, side);
    const QString beyond = above ? UserText::tr("sopra") : UserText::tr("sotto");
    return UserText::tr("%1 il %2 %3").arg(beyond, ledger, side);
}

QString placeOnSystem(int aboveBottomLine) {
    if (aboveBottomLine < 0)
        return outsideInWords(-aboveBottomLine, false);
    if (aboveBottomLine > kTopLine)
        return outsideInWords(aboveBottomLine - kTopLine, true);
    if (aboveBottomLine % 2 == 0)
        return UserText::tr("%1 linea").arg(word(kLineNames, aboveBottomLine / 2));
    return UserText::tr("%1 spazio").arg(word(kOrdinals, aboveBottomLine / 2));
}

}  // namespace

pitch::NoteIndex soundingNote(int step) {
    return pitch::StepToNoteIndex(diatonicPosition(step)).value_or(0);
}

QString clefInWords(int step) {
    return isTreble(step) ? UserText::tr("Chiave di Sol") : UserText::tr("Chiave di Fa");
}

QString placeOnStaveInWords(int step) {
    return placeOnSystem(step - (isTreble(step) ? kTrebleBottomLine : kBassBottomLine));
}

QString placeInWords(int step) {
    if (!carriesNote(step))
        return {};
    return QStringLiteral("%1, %2").arg(clefInWords(step), placeOnStaveInWords(step));
}

}  // namespace staff_step
