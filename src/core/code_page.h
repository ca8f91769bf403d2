#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

/// The code page Windows-1252, which the melody files are written in. A character that it does not
/// have is reported and never replaced.
namespace code_page {

struct Encoded {
    QByteArray bytes;
    QString refused;  ///< the first character without a code; empty if every one has one
};
Encoded encode(QStringView text);

/// Nothing if one of the bytes is no character: 81, 8D, 8F, 90 or 9D in hexadecimal.
std::optional<QString> decode(QByteArrayView bytes);

}  // namespace code_page
