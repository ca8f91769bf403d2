#pragma once

#include "composer/melody_speech.h"

/// Announces what happens in the composer, unless the user has asked for silence.
class ComposerSpeech {
public:
    explicit ComposerSpeech(const Composition& composition) : melody_(composition) {}

    /// For those who only listen to the music. What is asked for by a key is said all the same.
    void setSilent(bool silent) { silent_ = silent; }

    void changed() { say(melody_.change()); }
    void undone();
    void redone();
    void opened() { say(melody_.opened()); }
    void saved() { say(melody_.saved()); }
    void stepped() { say(melody_.activeEntry()); }
    void activeNote() { say(melody_.activeNote()); }
    void settings() { say(melody_.settings()); }
    void range() { say(melody_.range()); }
    void transposition() { say(melody_.transposition()); }
    void transposed();
    void directInsertion(bool on);
    void playing(bool playing);

    void readActiveEntry() const;
    void readMelody() const;

private:
    void say(const QString& text) const;

    MelodySpeech melody_;
    bool silent_ = false;
    bool playing_ = false;
};
