#include "composer/library/melody_file.h"

#include "composer/melody/rhythm.h"
#include "core/code_page.h"
#include "core/pitch.h"

#include <QList>

#include <algorithm>
#include <array>
#include <utility>

namespace melody_file {
namespace {

constexpr QLatin1Char kEnd(';');
constexpr QLatin1Char kBlank(' ');
const QLatin1String kLineEnd("\r\n");

constexpr qsizetype kMelodyLines = 3;
constexpr qsizetype kTempoLine = 3;
constexpr qsizetype kInstrumentLine = 4;
constexpr qsizetype kBookmarkLine = 5;

/// How the sixth line begins in files of other origin, where it holds no bookmarks.
constexpr std::array<QLatin1String, 3> kForeignLines{QLatin1String("con"), QLatin1String("ten"),
                                                     QLatin1String("bas")};

/// No tempo and no program is so large; the digits that follow are not read.
constexpr int kLargeNumber = 100'000;
/// A decimal number of at most this many digits fits a double.
constexpr qsizetype kPlainDigits = 300;

bool isLineEnd(QChar c) {
    return c == u'\r' || c == u'\n';
}

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Whether a character belongs to no text.
bool isControl(QChar c) {
    return (c < u' ' && c != u'\t' && !isLineEnd(c)) || c == u'\x7F';
}

QList<QStringView> linesOf(QStringView text) {
    QList<QStringView> lines;
    while (!text.isEmpty()) {
        const auto* const end = std::find_if(text.begin(), text.end(), isLineEnd);
        const qsizetype length = end - text.begin();
        lines << text.first(length);
        text = text.sliced(length);
        text = text.sliced(text.startsWith(kLineEnd) ? 2 : std::min<qsizetype>(text.size(), 1));
    }
    return lines;
}

bool isNote(QStringView token) {
    // Nearly every token is this plain, and melodies are long.
    if (token.size() == 2 && isDigit(token[0]) && isDigit(token[1])) {
        const int note = token[0].digitValue() * 10 + token[1].digitValue();
        return note == pitch::kRest || pitch::isPlayable(note);
    }
    bool isNumber = false;
    const short note = token.toShort(&isNumber);
    return isNumber && (note == pitch::kRest || pitch::isPlayable(note));
}

bool isDuration(QStringView token) {
    qsizetype digits = 0;
    qsizetype points = 0;
    for (const QChar c : token) {
        digits += isDigit(c) ? 1 : 0;
        points += c == u',' || c == u'.' ? 1 : 0;
    }
    const bool plain =
        digits > 0 && digits <= kPlainDigits && points <= 1 && digits + points == token.size();
    return plain || rhythm::numberFromText(token).has_value();
}

/// Whether every field is as it must be. An empty text behind the last ";" is no field.
template <typename IsField>
bool allFields(QStringView line, IsField isField) {
    qsizetype from = 0;
    while (from < line.size()) {
        const qsizetype found = line.indexOf(kEnd, from);
        const qsizetype to = found < 0 ? line.size() : found;
        if (!isField(line.sliced(from, to - from)))
            return false;
        from = to + 1;
    }
    return true;
}

/// The whole number that a line begins with; without one, `otherwise`.
int numberOf(QStringView line, int otherwise) {
    line = line.trimmed();
    const bool negative = line.startsWith(u'-');
    const QStringView digits = line.sliced(negative || line.startsWith(u'+') ? 1 : 0);
    const auto* const end = std::find_if_not(digits.begin(), digits.end(), isDigit);
    if (end == digits.begin())
        return otherwise;
    int number = 0;
    for (const auto* digit = digits.begin(); digit != end && number < kLargeNumber; ++digit)
        number = number * 10 + digit->digitValue();
    return negative ? -number : number;
}

QStringList bookmarksOf(QStringView line) {
    const bool foreign =
        std::any_of(kForeignLines.begin(), kForeignLines.end(),
                    [line](QLatin1String beginning) { return line.startsWith(beginning); });
    if (foreign)
        return {};
    QStringList items = line.toString().split(kEnd);
    items.removeLast();
    return items;
}

QString numberLine(int number) {
    return kBlank + QString::number(number) + kBlank + kLineEnd;
}

/// The first character that would end or spoil a line; empty if there is none.
QString firstControl(QStringView line) {
    const auto* const control = std::find_if(line.begin(), line.end(),
                                             [](QChar c) { return isControl(c) || isLineEnd(c); });
    return control == line.end() ? QString() : QString(*control);
}

}  // namespace

std::optional<MelodyFile> read(const QByteArray& bytes) {
    if (bytes.size() > kLargestFile)
        return std::nullopt;
    const std::optional<QString> text = code_page::decode(bytes);
    if (!text || std::any_of(text->begin(), text->end(), isControl))
        return std::nullopt;
    const QList<QStringView> lines = linesOf(*text);
    if (lines.size() < kMelodyLines || !allFields(lines[0], isNote) ||
        !allFields(lines[1], isDuration)) {
        return std::nullopt;
    }
    MelodyFile file;
    file.texts = {lines[0].toString(), lines[1].toString(), lines[2].toString()};
    file.tempo = numberOf(lines.value(kTempoLine), Composition::kDefaultTempo);
    file.instrument = numberOf(lines.value(kInstrumentLine), Composition::kDefaultInstrument);
    if (lines.size() > kBookmarkLine)
        file.bookmarks = bookmarksOf(lines[kBookmarkLine]);
    return file;
}

Written write(const MelodyFile& file) {
    QString lastLine;
    for (const QString& item : file.bookmarks)
        lastLine += item + kEnd;
    for (const QString& line :
         {file.texts.notes, file.texts.durations, file.texts.attributes, lastLine}) {
        if (const QString control = firstControl(line); !control.isEmpty())
            return {{}, control};
    }
    QString text = file.texts.notes + kLineEnd + file.texts.durations + kLineEnd +
                   file.texts.attributes + kLineEnd + numberLine(file.tempo) +
                   numberLine(file.instrument);
    if (!lastLine.isEmpty())
        text += lastLine + kLineEnd;
    code_page::Encoded encoded = code_page::encode(text);
    return {std::move(encoded.bytes), std::move(encoded.refused)};
}

bool canCarry(QStringView line) {
    return firstControl(line).isEmpty() && code_page::encode(line).refused.isEmpty();
}

}  // namespace melody_file
