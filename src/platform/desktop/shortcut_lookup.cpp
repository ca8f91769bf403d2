#include "platform/desktop/shortcut_lookup.h"

#include <QKeyEvent>
#include <QWindow>

#include <utility>

/// Exported by the toolkit for its own test library.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* target, ulong timestamp, int key,
                                               Qt::KeyboardModifiers modifiers, const QString& text,
                                               bool autoRepeat, ushort count);

namespace shortcut_lookup {
namespace {

bool announcing = false;

}  // namespace

bool act(QWindow& window, const QKeyEvent& press, bool repeats) {
    announcing = true;
    return qt_sendShortcutOverrideEvent(&window, press.timestamp(), press.key(), press.modifiers(),
                                        press.text(), repeats, static_cast<ushort>(press.count()));
}

/// What the shortcut does may run a loop, to which other keys are announced.
bool isOwnAnnouncement() {
    return std::exchange(announcing, false);
}

}  // namespace shortcut_lookup
