#pragma once

#include "composer/melody/bookmarks.h"
#include "composer/melody/entry_settings.h"
#include "composer/melody/melody.h"
#include "composer/melody/play_range.h"
#include "composer/melody/step_mode.h"
#include "core/instruments.h"
#include "core/pitch.h"

#include <QChar>
#include <QString>

/// The file that a melody was opened from or saved to last; without a name there is none.
struct MelodySource {
    QString name;
    QString folder;
    QString fileName;      ///< as it stands in the folder
    bool outside = false;  ///< not in the tree of melodies: "Salva" writes it where it is
    bool emptied = false;  ///< the melody was emptied since: what is there now is another one

    bool operator==(const MelodySource&) const = default;
};

/// Everything that the composer works on. The window owns it; the editor changes it, the player
/// reads it.
struct Composition {
    static constexpr int kLowestTempo = 20;
    static constexpr int kHighestTempo = 250;
    static constexpr int kDefaultTempo = 60;
    static constexpr int kDefaultInstrument = instruments::kOrgano;
    static constexpr int kLargestTransposition = 12;  ///< semitones, either way

    Melody melody;
    PlayRange range;
    Bookmarks bookmarks;
    QString name;  ///< as shown above the melody
    MelodySource source;
    int document = 0;  ///< tells the melodies apart that this window held one after the other
    int tempo = kDefaultTempo;            ///< quarter notes per minute
    int instrument = kDefaultInstrument;  ///< General MIDI program

    EntrySettings settings;
    StepMode step;
    pitch::NoteNumber activeNote = pitch::kRest;  ///< 0 = none
    int transposition = 0;                        ///< semitones

    QChar decimalSeparator{u','};  ///< of the durations that are written
};
