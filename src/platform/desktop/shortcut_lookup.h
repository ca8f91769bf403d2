#pragma once

class QKeyEvent;
class QWindow;

/// Looks key presses up among the shortcuts, as the toolkit does by itself for those that come from
/// the system and for no others.
namespace shortcut_lookup {

/// Lets the shortcut of these keys act, if there is one; answers whether there is. A repeat does
/// nothing where the shortcut does not repeat.
bool act(QWindow& window, const QKeyEvent& press, bool repeats);

/// Whether an announcement of a key is the one that `act` makes, of a press that is known already.
/// To be asked once for each.
bool isOwnAnnouncement();

}  // namespace shortcut_lookup
