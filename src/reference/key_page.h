#pragma once

#include "core/key_signatures.h"

/// What the page of the keys shows: one key signature, the list of the scale's degrees, or nothing.
/// Its buttons 1 to 15 stand for the keys, button 16 for the degrees; each shows and hides its own.
class KeyPage {
public:
    static constexpr int kDegrees = static_cast<int>(key_signatures::kAll.size()) + 1;
    static constexpr int kButtons = kDegrees;

    constexpr void click(int button) { shown_ = isShown(button) ? kNothing : button; }

    constexpr bool isShown(int button) const { return shown_ == button; }
    constexpr bool isEmpty() const { return shown_ == kNothing; }

private:
    static constexpr int kNothing = 0;

    int shown_ = kNothing;
};
