#pragma once

class QString;

/// Opens a compiled help file, named as the system names it, in the system's viewer for such files.
/// Whether there is one; it runs on its own.
bool openChm(const QString& file);
