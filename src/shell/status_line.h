#pragma once

#include <QString>

class FunzioniMM;
class MidiOut;

namespace status_line {

/// Where the sound goes and with which instrument: "Uscita: … · Strumento: 16-Hammond Organ".
QString text(MidiOut& midiOut, const FunzioniMM& funzioniMM);

}  // namespace status_line
