#pragma once

#include <QString>

/// A text as screen readers take it from the accessibility bus, whatever has the focus.
namespace spoken_text {

/// Brings the text on the bus.
void say(const QString& text);

}  // namespace spoken_text
