#include "composer/exchange/xml_cursor.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

constexpr int kDeepest = 64;
/// The toolkit compares every attribute of a tag with every other.
constexpr int kMostAttributes = 32;
constexpr int kLongestStretch = 64 * 1024;

constexpr std::array<const char*, 4> kDefinitions{"<!ENTITY", "<!ATTLIST", "<!ELEMENT",
                                                  "<!NOTATION"};

/// Encodings in which markup is written as in ASCII.
const QStringList kEncodings{QStringLiteral("utf-8"),       QStringLiteral("utf8"),
                             QStringLiteral("us-ascii"),    QStringLiteral("ascii"),
                             QStringLiteral("iso-8859-1"),  QStringLiteral("latin1"),
                             QStringLiteral("windows-1252")};

bool hasDefinitions(const QByteArray& bytes) {
    return std::any_of(kDefinitions.begin(), kDefinitions.end(),
                       [&bytes](const char* text) { return bytes.contains(text); });
}

/// Whether very much stands between one "<" and the next: a tag, with text behind it.
bool hasLongStretch(const QByteArray& bytes) {
    qsizetype from = 0;
    while (bytes.size() - from > kLongestStretch) {
        const qsizetype next = bytes.indexOf('<', from);
        if (next < 0 || next - from > kLongestStretch)
            return true;
        from = next + 1;
    }
    return false;
}

/// Behind what is no tag though it begins at a "<": a comment, literal text or an instruction to a
/// program. `begin` where it is a tag.
qsizetype endOfNoTag(const QByteArray& bytes, qsizetype begin) {
    struct Kind {
        QByteArrayView begin;
        QByteArrayView end;
    };
    constexpr std::array<Kind, 3> kKinds{{{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};
    const QByteArrayView rest = QByteArrayView(bytes).sliced(begin);
    for (const Kind& kind : kKinds) {
        if (!rest.startsWith(kind.begin))
            continue;
        const qsizetype end = bytes.indexOf(kind.end, begin + kind.begin.size());
        return end < 0 ? bytes.size() : end + kind.end.size();
    }
    return begin;
}

bool hasManyAttributes(const QByteArray& bytes) {
    int attributes = 0;
    bool inTag = false;
    char quote = 0;
    for (qsizetype i = 0; i < bytes.size() && attributes <= kMostAttributes; ++i) {
        const char c = bytes[i];
        if (quote != 0) {
            quote = c == quote ? 0 : quote;
        } else if (c == '<') {
            const qsizetype end = endOfNoTag(bytes, i);
            attributes = 0;
            inTag = end == i;
            i = std::max(i, end - 1);
        } else if (inTag) {
            attributes += c == '=' ? 1 : 0;
            inTag = c != '>';
            quote = c == '"' || c == '\'' ? c : 0;
        }
    }
    return attributes > kMostAttributes;
}

bool isHarmless(const QByteArray& bytes) {
    return !hasDefinitions(bytes) && !hasLongStretch(bytes) && !hasManyAttributes(bytes);
}

/// Two bytes a character: some programs write it so.
bool isUtf16(const QByteArray& bytes) {
    return bytes.left(2).contains('\0') || bytes.startsWith("\xFF\xFE") ||
           bytes.startsWith("\xFE\xFF");
}

}  // namespace

XmlCursor::XmlCursor(const QByteArray& bytes) {
    if (isUtf16(bytes)) {
        const QString text = QStringDecoder(QStringDecoder::Utf16)(bytes);
        failed_ = !isHarmless(text.toUtf8());
        xml_ = std::make_unique<QXmlStreamReader>(failed_ ? QString() : text);
        return;
    }
    failed_ = !isHarmless(bytes);
    device_.setData(bytes);
    device_.open(QIODevice::ReadOnly);
    xml_ = std::make_unique<QXmlStreamReader>(&device_);
}

QXmlStreamReader::TokenType XmlCursor::read() {
    if (failed())
        return QXmlStreamReader::Invalid;
    const QXmlStreamReader::TokenType token = xml_->readNext();
    if (token == QXmlStreamReader::StartDocument && device_.isOpen()) {
        const QString encoding = xml_->documentEncoding().toString().toLower();
        failed_ = !encoding.isEmpty() && !kEncodings.contains(encoding);
    }
    if (token == QXmlStreamReader::StartElement)
        failed_ = ++depth_ > kDeepest;
    if (token == QXmlStreamReader::EndElement)
        --depth_;
    return failed() ? QXmlStreamReader::Invalid : token;
}

bool XmlCursor::enterNext() {
    for (;;) {
        switch (read()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::EndElement:
            case QXmlStreamReader::EndDocument:
            case QXmlStreamReader::Invalid:
                return false;
            default:
                break;
        }
    }
}

void XmlCursor::leave() {
    const int outside = depth_ - 1;
    while (depth_ > outside && read() != QXmlStreamReader::Invalid) {
    }
}

QString XmlCursor::takeText() {
    QString text;
    const int outside = depth_ - 1;
    while (depth_ > outside) {
        const QXmlStreamReader::TokenType token = read();
        if (token == QXmlStreamReader::Invalid)
            break;
        if (token == QXmlStreamReader::Characters)
            text += xml_->text();
    }
    return text.trimmed();
}

QString XmlCursor::attribute(const char* name) const {
    return xml_->attributes().value(QString::fromUtf8(name)).toString();
}
