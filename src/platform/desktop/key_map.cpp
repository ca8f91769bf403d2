#include "platform/desktop/key_map.h"

#include "platform/key_places.h"

#include <QKeyEvent>

#include <array>

namespace {

struct KeyRun {
    quint32 firstPlace;
    const char* keys;
};

/// The rows of letters and digits, left to right.
constexpr std::array<KeyRun, 4> kRows{{
    {2, "1234567890"},
    {16, "QWERTYUIOP"},
    {30, "ASDFGHJKL"},
    {44, "ZXCVBNM"},
}};

struct KeyAtPlace {
    quint32 place;
    KeyCode key;
};

constexpr std::array<KeyAtPlace, 26> kPlaces{{
    {1, kKeyEscape},       {13, kKeyLeftOfBackspace}, {14, kKeyBackspace},   {26, kKeyRightOfP},
    {27, kKeyPlus},        {28, kKeyEnter},           {39, kKeyRightOfL},    {51, kKeyComma},
    {52, kKeyFullStop},    {53, kKeyMinus},           {57, kKeySpace},       {71, kKeyNumpad0 + 7},
    {72, kKeyNumpad0 + 8}, {73, kKeyNumpad0 + 9},     {75, kKeyNumpad0 + 4}, {76, kKeyNumpad0 + 5},
    {77, kKeyNumpad0 + 6}, {79, kKeyNumpad0 + 1},     {80, kKeyNumpad0 + 2}, {81, kKeyNumpad0 + 3},
    {82, kKeyNumpad0},     {96, kKeyEnter},           {103, kKeyUp},         {105, kKeyLeft},
    {106, kKeyRight},      {108, kKeyDown},
}};

/// The places of F1 to F10 follow each other.
constexpr quint32 kFirstFunctionKey = 59;
constexpr quint32 kLastFunctionKey = 68;

KeyCode fromPlace(quint32 place) {
    for (const KeyRun& row : kRows) {
        const auto length = static_cast<quint32>(qstrlen(row.keys));
        if (place >= row.firstPlace && place < row.firstPlace + length)
            return row.keys[place - row.firstPlace];
    }
    if (place >= kFirstFunctionKey && place <= kLastFunctionKey)
        return kKeyF1 + static_cast<KeyCode>(place - kFirstFunctionKey);
    for (const KeyAtPlace& at : kPlaces) {
        if (at.place == place)
            return at.key;
    }
    return 0;
}

struct NamedKey {
    int qtKey;
    KeyCode key;
};

constexpr std::array<NamedKey, 12> kNames{{
    {Qt::Key_Escape, kKeyEscape},
    {Qt::Key_Backspace, kKeyBackspace},
    {Qt::Key_Return, kKeyEnter},
    {Qt::Key_Enter, kKeyEnter},
    {Qt::Key_Space, kKeySpace},
    {Qt::Key_Left, kKeyLeft},
    {Qt::Key_Up, kKeyUp},
    {Qt::Key_Right, kKeyRight},
    {Qt::Key_Down, kKeyDown},
    {Qt::Key_Comma, kKeyComma},
    {Qt::Key_Period, kKeyFullStop},
    {Qt::Key_Plus, kKeyPlus},
}};

KeyCode fromName(int qtKey, bool onKeypad) {
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return onKeypad ? kKeyNumpad0 + (qtKey - Qt::Key_0) : qtKey;
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return qtKey;
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return kKeyF1 + (qtKey - Qt::Key_F1);
    for (const NamedKey& name : kNames) {
        if (name.qtKey == qtKey)
            return name.key;
    }
    return qtKey == Qt::Key_Minus ? kKeyMinus : 0;
}

}  // namespace

KeyCode keyCodeOf(const QKeyEvent& event) {
    if (const quint32 place = keyPlaceOf(event.nativeScanCode()); place != 0)
        return fromPlace(place);
    return fromName(event.key(), event.modifiers().testFlag(Qt::KeypadModifier));
}

KeyCode letterKeyOf(const QKeyEvent& event) {
    const int key = event.key();
    return key >= Qt::Key_A && key <= Qt::Key_Z ? letterKey(static_cast<char>(key)) : 0;
}
