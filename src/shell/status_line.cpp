#include "shell/status_line.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"

namespace status_line {

QString text(MidiOut& midiOut, const FunzioniMM& funzioniMM) {
    QString output = QStringLiteral("nessuna");
    if (funzioniMM.outputOpen())
        output = midiOut.deviceName(funzioniMM.deviceId()).value_or(QStringLiteral("sconosciuta"));
    return QStringLiteral("Uscita: %1   ·   Strumento: %2")
        .arg(output, instruments::caption(funzioniMM.currentInstrument()));
}

}  // namespace status_line
