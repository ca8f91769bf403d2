#pragma once

#include <QObject>
#include <QString>

/// The root of a library that the program opens when it is needed: those of `platform/modules`. It
/// stays open to the end of the program. Null where it is not installed, or does not fit the
/// program.
QObject* openModuleRoot(const QString& name);

template <class Interface>
Interface* openModule(const char* name) {
    return qobject_cast<Interface*>(openModuleRoot(QString::fromUtf8(name)));
}
