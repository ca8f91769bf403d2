#pragma once

#include "platform/printing.h"

#include <QtPlugin>

class QDialog;
class QWidget;

/// The toolkit's print dialogue and printers. They stand in a library of their own, which the
/// program opens when something is printed.
class PrintModule {
public:
    virtual ~PrintModule() = default;

    virtual bool hasPrinter() const = 0;

    /// Shows a dialogue; true if it was accepted.
    using RunDialog = std::function<bool(QDialog& dialog)>;

    virtual Printing::Outcome print(const QString& title, QWidget* parent,
                                    const RunDialog& runDialog,
                                    const Printing::PaintPages& paintPages) = 0;
};

Q_DECLARE_INTERFACE(PrintModule, "cantavista.PrintModule/2")
