#pragma once

#include <QString>

#include <ostream>

// How failures show texts. Included before anything else in every test, as each of a program's
// files has to know it.

inline void PrintTo(QStringView text, std::ostream* out) {
    *out << '"' << text.toUtf8().constData() << '"';
}

inline void PrintTo(const QString& text, std::ostream* out) {
    PrintTo(QStringView(text), out);
}

inline void PrintTo(QLatin1String text, std::ostream* out) {
    PrintTo(QString(text), out);
}
