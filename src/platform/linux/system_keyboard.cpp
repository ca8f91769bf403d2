#include "platform/system_keyboard.h"

#include <QGuiApplication>

// The X headers define macros with names of the toolkit, and so come last.
#include <X11/XKBlib.h>

namespace {

constexpr std::uint32_t kScanCodes = 256;
constexpr std::uint32_t kBitsOfByte = 8;

/// The toolkit's own connection to the X server; none on another platform.
Display* display() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->display() : nullptr;
}

}  // namespace

namespace system_keyboard {

/// The server writes the release and the press of a repeat one after the other, and whoever reads
/// between the two takes them for a key that was let go and pressed again. The connection can ask
/// for the presses alone.
void repeatWithoutReleases() {
    if (Display* connection = display())
        XkbSetDetectableAutoRepeat(connection, True, nullptr);
}

/// The toolkit makes the repeats of Wayland itself.
bool marksRepeats() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

std::optional<bool> isDown(std::uint32_t scanCode) {
    Display* connection = display();
    if (!connection || scanCode >= kScanCodes)
        return std::nullopt;
    char keys[kScanCodes / kBitsOfByte];
    XQueryKeymap(connection, keys);
    return (keys[scanCode / kBitsOfByte] >> (scanCode % kBitsOfByte) & 1) != 0;
}

}  // namespace system_keyboard
