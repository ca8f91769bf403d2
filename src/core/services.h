#pragma once

class Dialogs;
class Folders;
class FunzioniMM;
class HelpViewer;
class MidiKeyboard;
class MidiOut;
class Printing;
class Runtime;
class WaveRenderer;

/// What every window is given: the machine behind its seam and the sound module.
struct Services {
    Runtime& runtime;
    MidiOut& midiOut;
    Dialogs& dialogs;
    Folders& folders;
    HelpViewer& help;
    FunzioniMM& funzioniMM;
    WaveRenderer* waveRenderer = nullptr;  ///< where the machine has one
    MidiKeyboard* midiKeyboard = nullptr;  ///< where MIDI inputs are listened to
    Printing* printing = nullptr;          ///< where the machine can print
};
