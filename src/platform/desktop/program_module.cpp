#include "platform/desktop/program_module.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QPluginLoader>

QObject* openModuleRoot(const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    for (const QString& folder :
         {program + QStringLiteral("/modules"),
          program + QLatin1Char('/') + QStringLiteral(CANTAVISTA_MODULE_FOLDER)}) {
        QPluginLoader loader(folder + QLatin1Char('/') + name);
        loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);
        if (QObject* const root = loader.instance())
            return root;
    }
    return nullptr;
}
