#pragma once

class QApplication;

namespace application {

/// Name, version, icon, Italian standard buttons and the look of every window. The palette follows
/// the desktop, light or dark; the environment variable CANTAVISTA_THEME ("light", "dark")
/// overrides it.
void prepare(QApplication& app);

}  // namespace application
