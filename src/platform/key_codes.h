#pragma once

/// A key by its place on the keyboard, written as the virtual-key code that it has on an Italian
/// layout: letters and digits are their upper-case ASCII codes.
using KeyCode = int;

constexpr KeyCode kKeyBackspace = 8;
constexpr KeyCode kKeyEnter = 13;
constexpr KeyCode kKeyEscape = 27;
constexpr KeyCode kKeySpace = 32;
constexpr KeyCode kKeyLeft = 37;
constexpr KeyCode kKeyUp = 38;
constexpr KeyCode kKeyRight = 39;
constexpr KeyCode kKeyDown = 40;
constexpr KeyCode kKeyNumpad0 = 96;  ///< the numeric keypad's digits are 96..105
constexpr KeyCode kKeyF1 = 112;      ///< the function keys F1..F12 are 112..123
constexpr KeyCode kKeyRightOfP = 186;
constexpr KeyCode kKeyPlus = 187;
constexpr KeyCode kKeyComma = 188;
constexpr KeyCode kKeyMinus = 189;
constexpr KeyCode kKeyFullStop = 190;
constexpr KeyCode kKeyRightOfL = 192;
constexpr KeyCode kKeyLeftOfBackspace = 221;

/// A key by its letter, 'A' to 'Z', wherever the layout has it.
constexpr KeyCode letterKey(char letter) {
    return 256 + letter;
}

constexpr KeyCode kKeyLast = letterKey('Z');

/// A property of a window: true where typing means nothing to the rest of the program.
constexpr const char* kKeepsKeys = "keepsKeys";
