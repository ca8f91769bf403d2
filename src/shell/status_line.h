#pragma once

#include <QString>

class FunzioniMM;

namespace status_line {

/// Where the sound goes and with which instrument: "Uscita: … · Strumento: 16-Hammond Organ". An
/// output that was lost is none, and is named as "interrotta".
QString text(const FunzioniMM& funzioniMM);

}  // namespace status_line
