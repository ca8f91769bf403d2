#pragma once

class QApplication;
class QCoreApplication;
class QPalette;

namespace application {

/// Sets name, version, icon, Italian standard buttons and the style of every window. The colours
/// follow the desktop's; the environment variable CANTAVISTA_THEME ("light", "dark") overrides it.
void prepare(QApplication& app);

enum class Theme { Light, Dark };

/// Gives the windows that are opened from now on the colours of a theme.
void showTheme(Theme theme);

/// The same by a desktop's palette: one of high contrast is taken as it is, otherwise it is the
/// theme that is as light or dark.
void followDesktop(const QPalette& desktop);

/// The program's own texts are Italian; another language takes effect by its file alone,
/// `translations/cantavista_<language>.qm` beside the program or among its installed data. The
/// toolkit's standard buttons follow.
void translate(QCoreApplication& app);

}  // namespace application
