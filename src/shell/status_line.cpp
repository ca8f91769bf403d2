#include "shell/status_line.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"

namespace status_line {

QString text(const FunzioniMM& funzioniMM) {
    const OpenOutput& open = funzioniMM.output();
    QString output = open.deviceName().value_or(QStringLiteral("sconosciuta"));
    if (open.isLost())
        output = QStringLiteral("nessuna (interrotta: %1)").arg(output);
    else if (!open.isOpen())
        output = QStringLiteral("nessuna");
    return QStringLiteral("Uscita: %1   ·   Strumento: %2")
        .arg(output, instruments::caption(funzioniMM.currentInstrument()));
}

}  // namespace status_line
