#include "shell/status_line.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "platform/user_text.h"

namespace status_line {

QString text(const FunzioniMM& funzioniMM) {
    const OpenOutput& open = funzioniMM.output();
    QString output = open.deviceName().value_or(UserText::tr("sconosciuta"));
    if (open.isLost())
        output = UserText::tr("nessuna (interrotta: %1)").arg(output);
    else if (!open.isOpen())
        output = UserText::tr("nessuna");
    return UserText::tr("Uscita: %1   ·   Strumento: %2")
        .arg(output, instruments::caption(funzioniMM.currentInstrument()));
}

}  // namespace status_line
