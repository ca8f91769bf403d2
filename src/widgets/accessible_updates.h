#pragma once

class QAccessibleEvent;

/// What screen readers are told while a window is built, opens and closes. They look at every
/// widget of which something is reported before they say a word, and while a hundred reports wait
/// they drop what is announced; so there is one report of the window itself, and none of its parts.
namespace accessible_updates {

/// Whether a report tells something of what is on the screen.
bool concernsScreen(const QAccessibleEvent& event);

/// Drops the others for the rest of the run, and has a list that gets the focus tell its current
/// item. Without a screen reader nothing is reported anyway.
void reportScreenOnly();

}  // namespace accessible_updates
