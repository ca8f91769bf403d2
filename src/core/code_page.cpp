#include "core/code_page.h"

#include <algorithm>
#include <array>
#include <utility>

namespace code_page {
namespace {

struct Row {
    unsigned char code;
    char16_t character;
};

/// The codes that differ from the number of their character; five codes from 80 to 9F have none.
constexpr std::array<Row, 27> kRows{
    {{0x80, 0x20AC}, {0x82, 0x201A}, {0x83, 0x0192}, {0x84, 0x201E}, {0x85, 0x2026}, {0x86, 0x2020},
     {0x87, 0x2021}, {0x88, 0x02C6}, {0x89, 0x2030}, {0x8A, 0x0160}, {0x8B, 0x2039}, {0x8C, 0x0152},
     {0x8E, 0x017D}, {0x91, 0x2018}, {0x92, 0x2019}, {0x93, 0x201C}, {0x94, 0x201D}, {0x95, 0x2022},
     {0x96, 0x2013}, {0x97, 0x2014}, {0x98, 0x02DC}, {0x99, 0x2122}, {0x9A, 0x0161}, {0x9B, 0x203A},
     {0x9C, 0x0153}, {0x9E, 0x017E}, {0x9F, 0x0178}}};

constexpr bool isPlain(char16_t code) {
    return code < 0x80 || (code >= 0xA0 && code <= 0xFF);
}

const Row* rowOf(char16_t character) {
    const auto* const row = std::find_if(
        kRows.begin(), kRows.end(), [character](const Row& r) { return r.character == character; });
    return row == kRows.end() ? nullptr : row;
}

const Row* rowOfCode(unsigned char code) {
    const auto* const row = std::lower_bound(
        kRows.begin(), kRows.end(), code, [](const Row& r, int wanted) { return r.code < wanted; });
    return row == kRows.end() || row->code != code ? nullptr : row;
}

/// A character beyond the first plane is two units of the text.
QString wholeCharacter(QStringView text, qsizetype at) {
    return text.mid(at, text[at].isHighSurrogate() ? 2 : 1).toString();
}

}  // namespace

Encoded encode(QStringView text) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char* out = bytes.data();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t character = text[i].unicode();
        const Row* const row = isPlain(character) ? nullptr : rowOf(character);
        if (!isPlain(character) && !row)
            return {{}, wholeCharacter(text, i)};
        *out++ = static_cast<char>(row ? row->code : character);
    }
    return {std::move(bytes), {}};
}

std::optional<QString> decode(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (isPlain(code)) {
            *out++ = QChar(char16_t{code});
            continue;
        }
        const Row* const row = rowOfCode(code);
        if (!row)
            return std::nullopt;
        *out++ = QChar(row->character);
    }
    return text;
}

}  // namespace code_page
