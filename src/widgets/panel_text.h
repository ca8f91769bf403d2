#pragma once

#include "platform/user_text.h"

#include <QStringList>

class QLabel;
class QWidget;

/// Room for texts that change, so that nothing else moves when they do.
namespace panel_text {

/// Makes a widget at least as wide as a text, and some pixels of frame beside it.
void reserve(QWidget& widget, const QString& widest, int frame = 12);

/// Makes a label at least as wide as it is with the widest of some texts. It shows the last of them
/// afterwards.
void reserveWidest(QLabel& label, const QStringList& texts);

/// The widest name of a note.
inline QString widestNoteName() {
    return UserText::tr("Sol#");
}

/// The widest number of an entry.
inline QString widestEntryNumber() {
    return QStringLiteral("32767");
}

}  // namespace panel_text
