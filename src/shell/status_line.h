#pragma once

#include <QString>

class FunzioniMM;
class MidiKeyboard;

namespace status_line {

/// Where the sound goes and with which instrument: "Uscita: … · Strumento: 16-Hammond Organ". An
/// output that was lost is none, and is named as "interrotta"; none is opened before the program
/// has `started`, as the tune plays first. With MIDI keyboards they follow, or that they were
/// unplugged: "· Tastiera MIDI: …".
QString text(const FunzioniMM& funzioniMM, const MidiKeyboard* keyboard, bool started);

/// "Tastiera MIDI: …": the names of the keyboards; that there is none, and which one was unplugged;
/// empty where there never was one.
QString keyboards(const MidiKeyboard* keyboard);

}  // namespace status_line
