#include "reading/answer_keys.h"

#include "platform/user_text.h"

namespace answer_keys {

QString inWords(int degree, ReadingMode mode) {
    const auto place = static_cast<std::size_t>(degree);
    if (mode == ReadingMode::Normale)
        return QString(QLatin1Char(kCharacters[place]));
    QStringList keys;
    for (const KeyCode key : kPolled[place]) {
        const bool onKeypad = key >= kKeyNumpad0 && key <= kKeyNumpad0 + 9;
        const QString name = onKeypad ? UserText::tr("Num %1").arg(key - kKeyNumpad0)
                                      : QString(QLatin1Char(kCharacters[place]));
        if (!keys.contains(name))
            keys << name;
    }
    return keys.join(QStringLiteral(" / "));
}

}  // namespace answer_keys
