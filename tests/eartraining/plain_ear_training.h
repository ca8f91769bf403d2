#pragma once

#include "eartraining/plain_ear_state.h"

/// The rules of the ear-training window a second time, in their plainest form. It is worked by the
/// names of the window's controls.
struct PlainEarTraining : PlainEarState {
    void request(int exercise) {
        requested = exercise;
        alwaysChord = alwaysChord || exercise == 7;
    }
    void open() {
        w = {};
        sound.setAutoSilence(false);
        setRange(-1, -1);
        if (alwaysChord)
            choose(7);
        else
            w.chosen = requested;
    }
    void close() {
        if (running() || w.prompt == kReference)
            return;
        w.open = false;
        requested = 3;
        stopSounds();
    }
    void stopSounds() {
        if (w.pitch.sounding)
            silencePitch();
        ++w.interval.number;
        if (w.interval.sounding)
            silenceInterval();
        if (w.chord.sounding || w.chord.silent)
            endChord();
    }
    void choose(int exercise) {
        w.judged.clear();
        w.focus.clear();
        if (exercise != 3) {
            w.pitch.reset = w.pitch.start = false;
            silencePitch();
        }
        if (exercise != 5)
            silenceInterval();
        forgetChordRange();
        w.chosen = exercise;
        stopSounds();
        if (exercise == 5)
            return;
        setRange(-1, -1);
        w.marks.clear();
        w.prompt = kLower;
        if (exercise == 3)
            w.pitch.start = w.started = w.stopped = false;
        else
            w.chord.start = w.chord.reset = w.closeButton = false;
    }

    void forgetChordRange() {
        w.hasRange = false;
        w.lower = w.upper = -1;
    }
    bool judge(const char* controls, int answer, bool right) {
        ++(right ? w.right : w.wrong);
        w.verdict = right ? '+' : '-';
        w.judged = QString("%1_%2 %3").arg(controls).arg(answer).arg(w.verdict);
        w.judgedAt = world.runtime.now();
        return right;
    }
    void hearAgain(const QString& button) {
        w.focus = button;
        if (w.pitch.running)
            playTest(true);
        else if (w.interval.running)
            playInterval(w.pair[1] - 60);
        else
            playChord(notes);
    }
    void start(Exercise& exercise) {
        exercise.running = true;
        w.right = w.wrong = 0;
    }
    void stop(Exercise& exercise, const char* button) {
        if (!w.focus.isEmpty())
            w.focus = button;
        exercise.running = false;
        w.menuLocked = false;
    }
    void send(const std::vector<int>& numbers, int velocity) {
        for (const int note : numbers)
            sound.NoteOn(1, note, velocity);
    }
    void show(const std::vector<int>& shown, bool pressed) {
        for (const int note : shown)
            pressed ? void(w.keys.insert(note - 36)) : void(w.keys.erase(note - 36));
    }

    void silencePitch() {
        ++w.pitch.number;
        w.pitch.sounding = false;
        sound.PlayNoteIndex(-1);
    }
    void playTest(bool again = false) {
        const int number = ++w.pitch.number;
        const pitch::NoteIndex asked = sound.drawnIndex();
        w.pitch.asked = again;
        if (sound.autoSilence()) {
            world.runtime.yield();
            if (number != w.pitch.number)
                return;
            send({w.reference}, 90);
            sound.WaitSeconds(1.2);
            send({w.reference}, 0);
            sound.WaitSeconds(0.1);
        }
        sound.PlayNoteIndex(again ? asked : std::int16_t(-2));
        if (again && sound.autoSilence()) {
            sound.WaitSeconds(0.9);
            sound.PlayNoteIndex(-1);
        }
        w.pitch.asked = true;
        w.pitch.sounding = !sound.autoSilence();
    }
    void startPitch() {
        if (w.pitch.running) {
            stop(w.pitch, "IntoStart");
            w.stopped = w.pitch.reset = w.closeButton = true;
            w.prompt = kReset;
            return silencePitch();
        }
        start(w.pitch);
        w.stopped = w.pitch.reset = false;
        w.started = true;
        w.prompt = "Riconosci la nota suonata";
        playTest();
    }
    void resetPitch() {
        w.menuLocked = true;
        w.right = w.wrong = 0;
        w.prompt = kLower;
        w.pitch.start = w.started = w.stopped = false;
        silencePitch();
        for (const int key : {lower(), upper(), w.reference - 36})
            w.marks.erase(key);
        setRange(-1, -1);
    }
    void pitchKey(int key) {
        const int lower = this->lower(), upper = this->upper();
        if (w.stopped || w.interval.running || (w.started && !sound.noteDrawn()))
            return;
        if (w.started) {
            if (judge("lb", key, key == sound.drawnIndex()))
                playTest();
        } else if (complete() && (key < lower || key > upper)) {
            world.dialogs.message("Scegli il riferimento all'interno dell'intervallo !!!");
        } else if (complete()) {
            if (w.reference - 36 != lower && w.reference - 36 != upper)
                w.marks.erase(w.reference - 36);
            w.reference = key + 36;
            w.marks.insert(key);
            sound.PlayNoteIndex(static_cast<std::int16_t>(key));
            w.pitch.start = w.pitch.sounding = true;
            w.focus = "IntoStart";
        } else if (upper == -1) {
            setRange(-1, key);
            w.marks.insert(key);
            w.prompt = kUpper;
            w.closeButton = false;
        } else if (key == upper || key == upper + 1) {
            setRange(upper, upper);
            world.dialogs.message("Intervallo troppo piccolo !!!");
        } else if (key == upper - 1) {
            setRange(key, upper);
            world.dialogs.message("Intervallo non consentito !!!");
        } else {
            setRange(std::min(key, upper), std::max(key, upper));
            w.marks.insert(key);
            w.prompt = kReference;
        }
    }

    void endPair() {
        w.interval.sounding = false;
        send(w.pair, 0);
    }
    void silenceInterval() {
        ++w.interval.number;
        endPair();
        show(w.pair, false);
    }
    void playInterval(int semitones) {
        const auto [number, mode] = std::pair(++w.interval.number, w.mode);
        endPair();
        const auto before = std::exchange(w.pair, {60, 60 + semitones});
        if (!w.interval.running) {
            show(before, false);
            show(w.pair, true);
        }
        if (mode > 0)
            world.runtime.yield();
        if (number != w.interval.number)
            return;
        w.interval.sounding = true;
        for (int i = 0; i < 4 && mode > 0; ++i) {
            send({w.pair[i / 2]}, i % 2 == 0 ? 90 : 0);
            sound.WaitSeconds(std::array{0.7, 0.1, 0.7, 0.3}[i]);
            if (number != w.interval.number)
                return;
        }
        w.interval.sounding = mode != 1;
        if (mode != 1)
            send(w.pair, 90);
    }
    void drawInterval() {
        do {
            w.interval.target = sound.random().between(0, 13);
        } while (w.interval.excluded.count(w.interval.target));
        playInterval(w.interval.target);
    }
    void startInterval() {
        if (w.interval.running) {
            stop(w.interval, "CmdIntStart");
            return silenceInterval();
        }
        start(w.interval);
        show(w.pair, false);
        drawInterval();
        if (w.interval.running)
            w.prompt = "Riconosci intervallo suonato";
    }
    void semitones(int count) {
        if (!w.interval.running)
            playInterval(count);
        else if (judge("LblSemi", count, count == w.interval.target))
            drawInterval();
    }
    void excludeInterval(int semitones) {
        const bool none = w.interval.excluded.count(1) > 0;
        if (semitones > 0)
            return toggle(w.interval.excluded, semitones);
        w.interval.excluded.clear();
        for (int all = 1; all <= 13 && !none; ++all)
            w.interval.excluded.insert(all);
    }

    void endChord() {
        ++w.chord.number;
        w.chord.sounding = w.chord.silent = false;
        if (!chordPlayable())
            return;
        show(notes, false);
        send(notes, 0);
    }
    void silenceChord() {
        endChord();
        if (chordPlayable())
            sound.WaitSeconds(0.3);
    }
    void drawChord() {
        int type = 0;
        do {
            type = sound.random().between(0, 3);
        } while (w.chord.excluded.count(type));
        const int root = 36 + sound.RandomNoteIndex(static_cast<std::int16_t>(w.lower),
                                                    static_cast<std::int16_t>(w.upper));
        const auto [middle, top] = kShapes[type];
        if (playChord({root, root + middle, root + top}))
            w.chord.target = type;
    }
    bool playChord(const std::vector<int>& next) {
        endChord();
        if (chordPlayable()) {
            const int number = w.chord.number;
            w.chord.silent = true;
            sound.WaitSeconds(0.3);
            if (number != w.chord.number)
                return false;
            w.chord.silent = false;
        }
        notes = next;
        if (!chordPlayable())
            return true;
        if (w.showsKeys)
            show(notes, true);
        send(notes, 90);
        w.chord.sounding = true;
        return true;
    }
    void startChord() {
        if (!w.hasRange)
            return;
        if (w.chord.running) {
            stop(w.chord, "ComdRacStart");
            silenceChord();
            if (!w.chord.running)
                w.closeButton = w.chord.reset = true;
            return;
        }
        start(w.chord);
        w.closeButton = w.chord.reset = false;
        drawChord();
    }
    void resetChord() {
        w.marks.erase(w.lower);
        w.marks.erase(w.upper);
        forgetChordRange();
        w.prompt = kReset;
    }
    void chordKey(int key) {
        if (w.hasRange)
            return world.dialogs.message("Riconosci il tipo di accordo suonato !!!");
        if (key > 51)
            return world.dialogs.message("Limite non consentito !!!");
        w.marks.insert(key);
        if (w.upper == -1) {
            w.upper = key;
            w.prompt = kUpper;
            w.closeButton = false;
            return;
        }
        w.lower = std::min(key, w.upper);
        w.upper = std::max(key, w.upper);
        w.hasRange = w.chord.start = true;
        w.prompt = "Riconosci tipo accordo suonato";
    }

    /// A key of a MIDI keyboard goes down, or up if it is down.
    void midi(int note) {
        if (w.played.erase(note) > 0)
            return;
        w.played.insert(note);
        if (w.chosen == 3)
            pitchKey(note - 36);
        else if (w.chosen == 5 && note >= 60 && note <= 73)
            semitones(note - 60);
        if (w.chosen != 7)
            return;
        if (!w.hasRange) {
            w.choosing = w.played;
            return chordKey(note - 36);
        }
        w.choosing.erase(note);
        if (std::none_of(w.played.begin(), w.played.end(),
                         [this](int down) { return w.choosing.contains(down); }))
            chordType(typeOf(w.played));
    }
    void chordType(int type) {
        if (type >= 0 && !w.chord.silent && judge("TipoAcc", type, type == w.chord.target))
            drawChord();
    }

    static void toggle(std::set<int>& excluded, int element) {
        if (excluded.erase(element) == 0)
            excluded.insert(element);
    }
    /// A click, or a double click on `Il_0`, the choice of an item of the menu, or "close".
    void click(const QString& control) {
        const int i = control.section('_', 1).toInt();
        const bool menu = menuEnabled(), pitches = w.chosen == 3 || w.pitch.start || w.pitch.reset;
        const bool intervals = w.chosen == 5, chords = w.chosen == 7, again = canHearAgain();
        if (control != "F4" && control != "Ctrl+Return" && !control.startsWith("midi"))
            w.focus.clear();
        const std::tuple<const char*, bool, std::function<void()>> rules[] = {
            {"lb", true, [&] { w.keys.erase(i); }},
            {"lb", chords, [&] { chordKey(i); }},
            {"lb", !chords, [&] { pitchKey(i); }},
            {"close cmdEsci", control == "close" || w.closeButton, [&] { close(); }},
            {"mnuNota", menu, [&] { choose(3); }},
            {"mnuRint", menu, [&] { choose(5); }},
            {"mnuRicTa", menu, [&] { choose(7); }},
            {"IntoStart", w.pitch.start, [&] { startPitch(); }},
            {"cmdReimposta", w.pitch.reset, [&] { resetPitch(); }},
            {"lblMod Label6", pitches, [&] { sound.setAutoSilence(!sound.autoSilence()); }},
            {"CmdIntStart", intervals, [&] { startInterval(); }},
            {"LblSemi", intervals, [&] { semitones(i); }},
            {"Il", intervals, [&] { excludeInterval(i); }},
            {"lblModo Label7", intervals, [&] { w.mode = (w.mode + 1) % 3; }},
            {"ComdRacStart", chords && w.chord.start, [&] { startChord(); }},
            {"TipoAcc", chords, [&] { chordType(i); }},
            {"midi", true, [&] { midi(i); }},
            {"EsclTa", chords && i >= 2, [&] { toggle(w.chord.excluded, i); }},
            {"lblVt lblModoVt", chords, [&] { w.showsKeys = !w.showsKeys; }},
            {"F4", again, [&] { hearAgain(w.focus); }},
            {"cmdRiascoltaNota", pitches && again,
             [&] { hearAgain(w.chosen == 3 ? control : ""); }},
            {"cmdRiascoltaIntervallo", intervals && again, [&] { hearAgain(control); }},
            {"cmdRiascoltaAccordo", chords && again, [&] { hearAgain(control); }},
            {"Ctrl+Return", w.chosen == 3 && w.pitch.start, [&] { startPitch(); }},
            {"Ctrl+Return", intervals, [&] { startInterval(); }},
            {"Ctrl+Return", chords && w.chord.start, [&] { startChord(); }},
            {"cmdRes", chords && w.chord.reset, [&] { resetChord(); }}};
        for (const auto& [names, usable, rule] : rules) {
            if (QString(names).split(' ').contains(control.section('_', 0, 0)) && usable)
                rule();
        }
    }
};
