#include "platform/desktop/qt_printing.h"

#include "platform/desktop/held_input.h"
#include "platform/desktop/program_module.h"
#include "platform/desktop/qt_dialogs.h"
#include "platform/modules/print_module.h"
#include "platform/runtime.h"

#include <QDialog>

namespace {

PrintModule* printModule() {
    return openModule<PrintModule>("printing");
}

}  // namespace

Printing::Readiness QtPrinting::readiness() {
    const PrintModule* const module = printModule();
    if (!module)
        return Readiness::NotInstalled;
    return module->hasPrinter() ? Readiness::Ready : Readiness::NoPrinter;
}

Printing::Outcome QtPrinting::print(const QString& title, const PaintPages& paintPages) {
    if (runtime_.ending())
        return Outcome::Cancelled;
    PrintModule* const module = printModule();
    if (!module)
        return Outcome::Failed;
    const auto run = [this](QDialog& dialog) {
        const HeldInput::Box onShow(heldInput_);
        return dialog.exec() == QDialog::Accepted && !runtime_.ending();
    };
    return module->print(title, QtDialogs::windowInFront(), run, paintPages);
}
