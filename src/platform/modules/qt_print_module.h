#pragma once

#include "platform/modules/print_module.h"

#include <QObject>

/// The module for printing, made by the toolkit's own loader.
class QtPrintModule : public QObject, public PrintModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "cantavista.PrintModule/2")
    Q_INTERFACES(PrintModule)

public:
    bool hasPrinter() const override;
    Printing::Outcome print(const QString& title, QWidget* parent, const RunDialog& runDialog,
                            const Printing::PaintPages& paintPages) override;
};
