#pragma once

#include "platform/user_text.h"

#include <QString>

class QWidget;

/// Sizes of texts in the composer's panels, so that nothing moves when a text changes.
namespace panel_text {

/// Keeps room for a text, and for some pixels of frame beside it.
void reserve(QWidget& widget, const QString& widest, int frame = 12);

/// The widest name of a note.
inline QString widestNoteName() {
    return UserText::tr("Sol#");
}

/// The widest number of an entry.
inline QString widestEntryNumber() {
    return QStringLiteral("32767");
}

}  // namespace panel_text
