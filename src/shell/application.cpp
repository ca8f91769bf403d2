#include "shell/application.h"

#include "shell/closed_windows.h"
#include "shell/menu_escape.h"
#include "shell/window_style.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QTranslator>

#include <array>

namespace application {
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

bool desktopIsDark() {
    const QString named = qEnvironmentVariable("CANTAVISTA_THEME");
    if (!named.isEmpty())
        return named == QLatin1String("dark");
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

QIcon icon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/cantavista-%1.png").arg(size));
    return icon;
}

/// Numbers are written in the format of the user's system; without a locale, in the Italian one.
void chooseLocale() {
    if (QLocale::system().language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
}

}  // namespace

void showTheme(Theme theme) {
    QApplication::setPalette(paletteOf(theme == Theme::Dark ? kDark : kLight));
}

void translate(QCoreApplication& app) {
    const QString program = QCoreApplication::applicationDirPath();
    QString buttons = QStringLiteral("qtbase_it");
    auto* own = new QTranslator(&app);
    for (const QString& folder : {program, program + QLatin1String("/../share/cantavista")}) {
        // By the locale's name: its list of languages names others that the user reads as well, and
        // there is no file for Italian.
        if (own->load(QLatin1String("cantavista_") + QLocale().name(),
                      folder + QLatin1String("/translations"))) {
            QCoreApplication::installTranslator(own);
            buttons = QLatin1String("qtbase_") + own->language();
            break;
        }
    }
    auto* translator = new QTranslator(&app);
    if (translator->load(buttons, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

void prepare(QApplication& app) {
    QApplication::setApplicationName(QStringLiteral("cantavista"));
    QApplication::setApplicationVersion(QStringLiteral(CANTAVISTA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("cantavista"));
    QApplication::setWindowIcon(icon());
    chooseLocale();
    const Theme theme = desktopIsDark() ? Theme::Dark : Theme::Light;
    QApplication::setStyle(new WindowStyle);
    showTheme(theme);
    translate(app);
    app.installEventFilter(new ClosedWindows(&app));
    app.installEventFilter(new MenuEscape(&app));
}

}  // namespace application
