#include "shell/palettes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace palettes {
namespace {

struct Colours {
    QRgb window, windowText, base, alternateBase, text, button, buttonText, accent, accentText,
        placeholder, disabledText, toolTip;
};

constexpr Colours kLight{0xFFF3F1EC, 0xFF23272B, 0xFFFFFEFB, 0xFFF0EEE8, 0xFF1C1F22, 0xFFE9E6DF,
                         0xFF23272B, 0xFF1F6F86, 0xFFFFFFFF, 0xFF6A6F75, 0xFF9A9C9E, 0xFFFFFBEA};
constexpr Colours kDark{0xFF23262A, 0xFFE6E4DF, 0xFF1A1C1F, 0xFF2A2D32, 0xFFEDEBE6, 0xFF33373D,
                        0xFFE6E4DF, 0xFF4BA3BC, 0xFF0E1113, 0xFF8E9399, 0xFF9A9FA5, 0xFF3A3F46};

QPalette paletteOf(const Colours& colours) {
    QPalette palette(QColor::fromRgb(colours.button), QColor::fromRgb(colours.window));
    const std::array<std::pair<QPalette::ColorRole, QRgb>, 13> roles{{
        {QPalette::Window, colours.window},
        {QPalette::WindowText, colours.windowText},
        {QPalette::Base, colours.base},
        {QPalette::AlternateBase, colours.alternateBase},
        {QPalette::Text, colours.text},
        {QPalette::Button, colours.button},
        {QPalette::ButtonText, colours.buttonText},
        {QPalette::Highlight, colours.accent},
        {QPalette::HighlightedText, colours.accentText},
        {QPalette::Link, colours.accent},
        {QPalette::PlaceholderText, colours.placeholder},
        {QPalette::ToolTipBase, colours.toolTip},
        {QPalette::ToolTipText, colours.windowText},
    }};
    for (const auto& [role, colour] : roles)
        palette.setColor(role, QColor::fromRgb(colour));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colours.disabledText));
    return palette;
}

/// The relative luminance of the guidelines for accessible web pages (WCAG 2), 0 to 1.
double luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// How many times as bright the brighter one is, by the same guidelines: 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

constexpr double kSameColour = 1.1;
constexpr double kTextOfHighContrast = 10;
constexpr double kReadable = 4.5;

}  // namespace

QPalette light() {
    return paletteOf(kLight);
}

QPalette dark() {
    return paletteOf(kDark);
}

bool hasHighContrast(const QPalette& desktop) {
    const QColor window = desktop.color(QPalette::Window);
    return contrast(window, desktop.color(QPalette::Base)) < kSameColour &&
           contrast(window, desktop.color(QPalette::Button)) < kSameColour &&
           contrast(window, desktop.color(QPalette::WindowText)) > kTextOfHighContrast &&
           contrast(window, desktop.color(QPalette::Text)) > kTextOfHighContrast;
}

QPalette highContrast(const QPalette& desktop) {
    const QColor window = desktop.color(QPalette::Window);
    const QColor text = desktop.color(QPalette::WindowText);
    const auto readable = [&](const QColor& colour) {
        return (contrast(colour, window) < kReadable ? text : colour).rgb();
    };
    const QColor accent = QColor::fromRgb(readable(desktop.color(QPalette::Highlight)));
    const QColor onAccent = desktop.color(QPalette::HighlightedText);
    Colours colours{};
    colours.window = colours.base = colours.alternateBase = colours.button = colours.toolTip =
        window.rgb();
    colours.windowText = colours.placeholder = text.rgb();
    colours.text = readable(desktop.color(QPalette::Text));
    colours.buttonText = readable(desktop.color(QPalette::ButtonText));
    colours.accent = accent.rgb();
    colours.accentText = (contrast(onAccent, accent) < kReadable ? window : onAccent).rgb();
    colours.disabledText = readable(desktop.color(QPalette::Disabled, QPalette::WindowText));
    return paletteOf(colours);
}

}  // namespace palettes
