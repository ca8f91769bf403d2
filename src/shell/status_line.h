#pragma once

#include <QString>

class FunzioniMM;
class MidiKeyboard;

namespace status_line {

/// Where the sound goes and with which instrument: "Uscita: … · Strumento: 16-Hammond Organ". An
/// output that was lost is none, and is named as "interrotta"; the first one is opened only when
/// the tune has played, and is "in preparazione" till then. With MIDI keyboards they follow, or
/// that they were unplugged: "· Tastiera MIDI: …".
QString text(const FunzioniMM& funzioniMM, const MidiKeyboard* keyboard);

/// "Tastiera MIDI: …": the names of the keyboards; that there is none, and which one was unplugged;
/// empty where there never was one.
QString keyboards(const MidiKeyboard* keyboard);

}  // namespace status_line
