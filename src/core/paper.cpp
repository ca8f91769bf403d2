#include "core/paper.h"

#include <QByteArray>
#include <QLocale>

#include <algorithm>
#include <array>

namespace {

/// The countries that use Letter, after the Unicode locale data.
constexpr std::array kLetter{QLocale::Belize,       QLocale::Canada,      QLocale::Chile,
                             QLocale::Colombia,     QLocale::CostaRica,   QLocale::ElSalvador,
                             QLocale::Guatemala,    QLocale::Mexico,      QLocale::Nicaragua,
                             QLocale::Panama,       QLocale::Philippines, QLocale::PuertoRico,
                             QLocale::UnitedStates, QLocale::Venezuela};

/// The system's locale, or the one that is set for paper alone.
QLocale localeOfPaper() {
    for (const char* name : {"LC_ALL", "LC_PAPER", "LANG"}) {
        if (const QByteArray locale = qgetenv(name); !locale.isEmpty())
            return QLocale(QString::fromUtf8(locale));
    }
    return QLocale::system();
}

}  // namespace

Paper usualPaper() {
    const QLocale::Territory country = localeOfPaper().territory();
    const bool letter = std::find(kLetter.begin(), kLetter.end(), country) != kLetter.end();
    return letter ? Paper::Letter : Paper::A4;
}
