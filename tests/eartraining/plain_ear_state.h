#pragma once

#include "support/test_world.h"

/// What the ear-training window shows, in its plainest form, and what it keeps to decide that. It
/// has a clock, a sound module and random numbers of its own.
struct PlainEarState {
    struct Exercise {
        bool running = false;
        bool sounding = false;  ///< something that has to be ended
        bool start = false;     ///< the button is visible
        bool reset = false;
        bool asked = false;   ///< a note, not recognised yet
        int number = 0;       ///< of what it plays, to see whether another has replaced it
        bool silent = false;  ///< the rest before a chord
        int target = 0;
        std::set<int> excluded = {};
    };

    /// What begins anew with each opening.
    struct Window {
        bool open = true;
        int chosen = 3;
        Exercise pitch, interval, chord;
        QString prompt = kLower;
        QString focus;  ///< a button that hears again, and where the focus goes from there
        int right = 0, wrong = 0;
        char verdict = ' ';
        QString judged;  ///< the control of the last answer and its verdict, as "lb_27 +"
        Instant judgedAt{};
        bool closeButton = true, menuLocked = false;
        std::set<int> marks, keys, played;      ///< played on a MIDI keyboard and still down
        std::set<int> choosing;                 ///< of those, that chose a chord's range
        bool started = false, stopped = false;  ///< of pitches, with the reference
        int reference = 0;
        int mode = 0;  ///< of intervals, with the last one's notes
        std::vector<int> pair{0, 0};
        bool showsKeys = true, hasRange = false;  ///< of chords
        int lower = -1, upper = -1;
    };

    /// Of the types of chord, the semitones from the root to the other two.
    static constexpr std::pair<int, int> kShapes[] = {{3, 7}, {4, 7}, {3, 6}, {4, 8}};
    static constexpr const char* kLower = "Scegli la nota inferiore dell'intervallo";
    static constexpr const char* kUpper = "Scegli la nota superiore dell'intervallo";
    static constexpr const char* kReference = "Scegli la nota di riferimento e premi Start";
    static constexpr const char* kReset = "Reimposta l'intervallo";

    TestWorld world;
    FunzioniMM& sound = world.funzioniMM;
    Window w;
    std::vector<int> notes{0, 0, 0};  ///< of the chord; outlives the window
    int requested = 3;
    bool alwaysChord = false;

    bool running() const { return w.pitch.running || w.interval.running || w.chord.running; }
    bool menuEnabled() const { return !running() && !w.menuLocked; }
    int lower() const { return sound.rangeLower(); }
    int upper() const { return sound.rangeUpper(); }
    bool complete() const { return lower() >= 0 && upper() - lower() >= 2; }
    void setRange(int lower, int upper) {
        sound.setRangeLower(static_cast<pitch::NoteIndex>(lower));
        sound.setRangeUpper(static_cast<pitch::NoteIndex>(upper));
    }
    /// The type of chord of three keys in any octaves and order.
    static int typeOf(const std::set<int>& played) {
        std::set<int> classes;
        for (const int note : played)
            classes.insert(note % 12);
        for (int i = 0; i < 48 && played.size() == 3; ++i) {
            const auto [middle, top] = kShapes[i % 4];
            if (classes == std::set<int>{i / 4, (i / 4 + middle) % 12, (i / 4 + top) % 12})
                return i % 4;
        }
        return -1;
    }
    bool chordPlayable() const { return notes[0] >= 36 && notes[2] <= 95; }
    QString badge() const {
        return world.runtime.now() < w.judgedAt + std::chrono::milliseconds(800) ? w.judged : "";
    }
    QString hint() const {
        const bool range = w.prompt != kLower && w.prompt != kReset;
        if (w.pitch.running)
            return "Clicca il tasto della nota che hai sentito; F4 la fa riascoltare";
        if (w.interval.running)
            return "Clicca il numero dei semitoni che hai sentito; F4 li fa riascoltare";
        if (w.chord.running)
            return "Clicca il tipo che hai sentito; F4 fa riascoltare l'accordo";
        if (w.chosen == 5)
            return w.prompt == "Riconosci intervallo suonato"
                       ? "Premi Start per un altro intervallo, o un numero per ascoltarlo"
                       : "Qui non serve: premi Start, o un numero per ascoltare l'intervallo";
        if (w.chosen == 7)
            return w.hasRange ? "Premi Start per sentire un accordo"
                   : range
                       ? "Va bene anche lo stesso tasto: l'accordo partirà sempre da lì"
                       : "Clicca due tasti del pianoforte: ogni accordo partirà da uno compreso";
        if (w.stopped)
            return "Premi Reimposta per un altro intervallo, o Start per usare ancora questo";
        if (w.pitch.start)
            return "Puoi cambiarla finché vuoi; poi premi Start";
        return complete()     ? "Clicca un tasto fra i due segnati: la senti e ti orienti da lì"
               : upper() >= 0 ? "Almeno due semitoni più in là: in tutto tre tasti, neri compresi"
                              : "Clicca un tasto del pianoforte: l'intervallo ne ha almeno tre";
    }
    bool canHearAgain() const {
        if (w.pitch.running || w.interval.running)
            return w.pitch.running ? w.pitch.asked : true;
        return w.chosen == 7 && w.chord.sounding;
    }
};
