#include "platform/modules/qt_print_module.h"

#include "platform/user_text.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRadioButton>

namespace {

constexpr int kMostPages = 9999;

}  // namespace

bool QtPrintModule::hasPrinter() const {
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

Printing::Outcome QtPrintModule::print(const QString& title, QWidget* parent,
                                       const RunDialog& runDialog,
                                       const Printing::PaintPages& paintPages) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    printer.setCreator(QStringLiteral("Cantavista"));
    QPrintDialog dialog(&printer, parent);
    // A file is written whole or not at all, which the toolkit's printing into files does not
    // promise; the program has an export of its own for that.
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    // How many there are is known when the paper is.
    dialog.setMinMax(1, kMostPages);
    // The toolkit's Italian lacks this word.
    if (auto* const pages = dialog.findChild<QRadioButton*>(QStringLiteral("pagesRadioButton")))
        pages->setText(UserText::tr("Pagine"));
    if (!runDialog(dialog))
        return Printing::Outcome::Cancelled;
    const bool painted = paintPages(printer, printer.pageOrder() == QPrinter::LastPageFirst);
    const bool ended = printer.printerState() != QPrinter::Error;
    return painted && ended ? Printing::Outcome::Printed : Printing::Outcome::Failed;
}
