#pragma once

class QApplication;
class QCoreApplication;

namespace application {

/// Sets name, version, icon, Italian standard buttons and the style of every window. The palette
/// follows the desktop, light or dark; the environment variable CANTAVISTA_THEME ("light", "dark")
/// overrides it.
void prepare(QApplication& app);

enum class Theme { Light, Dark };

/// Gives the windows that are opened from now on the colours of a theme.
void showTheme(Theme theme);

/// The program's own texts are Italian; another language takes effect by its file alone,
/// `translations/cantavista_<language>.qm` beside the program or among its installed data. The
/// toolkit's standard buttons follow.
void translate(QCoreApplication& app);

}  // namespace application
