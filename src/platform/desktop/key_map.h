#pragma once

#include "platform/key_codes.h"

class QKeyEvent;

/// The code of a key event's key by its place on the keyboard, so that keys played as a piano lie
/// the same on every layout; an event without a scan code goes by the key's name. 0 = unknown.
KeyCode keyCodeOf(const QKeyEvent& event);

/// The code of a key event's key by the letter that the layout has there; 0 if that is none.
KeyCode letterKeyOf(const QKeyEvent& event);
