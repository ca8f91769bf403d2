#include "composer/exchange/braille_cells.h"

#include <algorithm>

namespace braille {
namespace {

struct Character {
    char16_t character;
    char16_t cell;
};

/// The letters and signs of Italian literary braille.
constexpr auto kCharacters = std::to_array<Character>({
    {u'a', cell({1})},
    {u'b', cell({1, 2})},
    {u'c', cell({1, 4})},
    {u'd', cell({1, 4, 5})},
    {u'e', cell({1, 5})},
    {u'f', cell({1, 2, 4})},
    {u'g', cell({1, 2, 4, 5})},
    {u'h', cell({1, 2, 5})},
    {u'i', cell({2, 4})},
    {u'j', cell({2, 4, 5})},
    {u'k', cell({1, 3})},
    {u'l', cell({1, 2, 3})},
    {u'm', cell({1, 3, 4})},
    {u'n', cell({1, 3, 4, 5})},
    {u'o', cell({1, 3, 5})},
    {u'p', cell({1, 2, 3, 4})},
    {u'q', cell({1, 2, 3, 4, 5})},
    {u'r', cell({1, 2, 3, 5})},
    {u's', cell({2, 3, 4})},
    {u't', cell({2, 3, 4, 5})},
    {u'u', cell({1, 3, 6})},
    {u'v', cell({1, 2, 3, 6})},
    {u'w', cell({2, 4, 5, 6})},
    {u'x', cell({1, 3, 4, 6})},
    {u'y', cell({1, 3, 4, 5, 6})},
    {u'z', cell({1, 3, 5, 6})},
    {u'à', cell({1, 2, 3, 5, 6})},
    {u'è', cell({2, 3, 4, 6})},
    {u'é', cell({1, 2, 3, 4, 5, 6})},
    {u'ì', cell({3, 4})},
    {u'ò', cell({3, 4, 6})},
    {u'ù', cell({2, 3, 4, 5, 6})},
    {u'.', cell({2, 5, 6})},
    {u',', cell({2})},
    {u';', cell({2, 3})},
    {u':', cell({2, 5})},
    {u'?', cell({2, 6})},
    {u'!', cell({2, 3, 5})},
    {u'\'', cell({3})},
    {u'-', cell({3, 6})},
    {u'(', cell({2, 3, 5, 6})},
    {u')', cell({2, 3, 5, 6})},
});

constexpr char16_t kCapital = cell({4, 6});

/// The digits 0 to 9 are the letters j and a to i; the lower ones stand a row of dots deeper.
constexpr std::array<char16_t, 10> kDigits{
    cell({2, 4, 5}), cell({1}),       cell({1, 2}),       cell({1, 4}),    cell({1, 4, 5}),
    cell({1, 5}),    cell({1, 2, 4}), cell({1, 2, 4, 5}), cell({1, 2, 5}), cell({2, 4})};
constexpr std::array<char16_t, 10> kLowerDigits{
    cell({3, 5, 6}), cell({2}),       cell({2, 3}),       cell({2, 5}),    cell({2, 5, 6}),
    cell({2, 6}),    cell({2, 3, 5}), cell({2, 3, 5, 6}), cell({2, 3, 6}), cell({3, 5})};

/// By the pattern of the dots, dot 1 being the lowest bit.
constexpr char kAscii[] = " A1B'K2L@CIF/MSP\"E3H9O6R^DJG>NTQ,*5<-U8V.%[$+X!&;:4\\0Z7(_?W]#Y)=";
static_assert(sizeof kAscii == 64 + 1);

QString digits(int number, const std::array<char16_t, 10>& cells) {
    QString text = QString::number(number);
    for (QChar& c : text)
        c = cells[static_cast<std::size_t>(c.digitValue())];
    return text;
}

char16_t signOf(QChar character) {
    const auto* const found =
        std::find_if(kCharacters.begin(), kCharacters.end(),
                     [character](const Character& row) { return row.character == character; });
    return found == kCharacters.end() ? kBlank : found->cell;
}

}  // namespace

QString upperDigits(int number) {
    return digits(number, kDigits);
}

QString lowerDigits(int number) {
    return digits(number, kLowerDigits);
}

QString literary(const QString& text) {
    QString cells;
    bool inNumber = false;
    for (const QChar c : text.normalized(QString::NormalizationForm_C)) {
        const bool isDigit = c >= u'0' && c <= u'9';
        if (isDigit && !inNumber)
            cells += QChar(kNumber);
        inNumber = isDigit;
        if (isDigit) {
            cells += upperDigits(c.digitValue());
            continue;
        }
        char16_t sign = signOf(c.toLower());
        // A letter with an accent that Italian does not have is written without it.
        if (sign == kBlank && !c.decomposition().isEmpty())
            sign = signOf(c.decomposition().front().toLower());
        if (c.isUpper() && sign != kBlank)
            cells += QChar(kCapital);
        cells += QChar(sign);
    }
    return cells;
}

QByteArray ascii(const QString& cells) {
    QByteArray bytes;
    for (const QChar c : cells) {
        const int pattern = c.unicode() - kBlank;
        bytes += pattern >= 0 && pattern < 64 ? kAscii[pattern] : c.toLatin1();
    }
    return bytes;
}

}  // namespace braille
