#include "shell/application.h"

#include "shell/closed_windows.h"
#include "shell/menu_escape.h"
#include "shell/palettes.h"
#include "shell/window_style.h"
#include "widgets/accessible_updates.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QTranslator>

#include <optional>

namespace application {
namespace {

/// Nothing if the user did not name a theme.
std::optional<Theme> namedTheme() {
    const QString named = qEnvironmentVariable("CANTAVISTA_THEME");
    if (named.isEmpty())
        return {};
    return named == QLatin1String("dark") ? Theme::Dark : Theme::Light;
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
    QApplication::setPalette(theme == Theme::Dark ? palettes::dark() : palettes::light());
}

void followDesktop(const QPalette& desktop) {
    if (palettes::hasHighContrast(desktop))
        QApplication::setPalette(palettes::highContrast(desktop));
    else
        showTheme(desktop.color(QPalette::Window).lightness() < 128 ? Theme::Dark : Theme::Light);
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
    const QPalette desktop = QApplication::palette();
    QApplication::setStyle(new WindowStyle);
    if (const auto theme = namedTheme())
        showTheme(*theme);
    else
        followDesktop(desktop);
    translate(app);
    app.installEventFilter(new ClosedWindows(&app));
    app.installEventFilter(new MenuEscape(&app));
    accessible_updates::reportScreenOnly();
}

}  // namespace application
