#include "platform/desktop/qt_printing.h"

#include "platform/desktop/held_input.h"
#include "platform/desktop/program_module.h"
#include "platform/desktop/qt_dialogs.h"
#include "platform/modules/print_module.h"
#include "platform/runtime.h"

#include <QDialog>

Printing::Outcome QtPrinting::print(const QString& title, const PaintPages& paintPages) {
    if (runtime_.ending())
        return Outcome::Cancelled;
    auto* const module = openModule<PrintModule>("printing");
    if (!module)
        return Outcome::NotInstalled;
    const auto run = [this](QDialog& dialog) {
        const HeldInput::Box onShow(heldInput_);
        return dialog.exec() == QDialog::Accepted && !runtime_.ending();
    };
    return module->print(title, QtDialogs::windowInFront(), run, paintPages);
}
