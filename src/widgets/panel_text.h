#pragma once

#include "platform/user_text.h"

#include <QStringList>

class QLabel;
class QWidget;

/// Room for texts that change, in whatever type they are shown, so that nothing else moves when
/// they do.
namespace panel_text {

/// Keeps a widget at least as wide as a text, and some pixels of frame beside it.
void reserve(QWidget& widget, const QString& widest, int frame = 12);

/// Keeps a widget exactly so wide.
void fix(QWidget& widget, const QString& widest, int frame = 12);

/// Keeps a label at least as wide as the widest of some texts.
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
