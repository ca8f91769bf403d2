#pragma once

#include "composer/melody/melody.h"
#include "composer/melody/rhythm.h"
#include "support/same_lines.h"

#include <cstdint>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;
using Entries = std::vector<MelodyEntry>;

/// Entries of every kind: odd tokens, and lengths from nothing to ones in which events run.
inline Entries anyEntries(std::mt19937& random) {
    const auto any = [&random](const std::vector<QString>& tokens) {
        return tokens[random() % tokens.size()];
    };
    Entries entries(1 + random() % 7);
    for (MelodyEntry& entry : entries)
        entry = {any({"36", "60", "62", "95", "00", "x", "96", "35"}),
                 any({"1", "0,5", "1,5", "0.75", "0,333333333333333", "0,1875", "0,0625", "0,01",
                      "-1", "y", "20,5", "41", "4", "0,1", "0,25", "0,03", "1"}),
                 any({"n", "s", "t", "a", "p", "n", "?"})};
    return entries;
}

/// The player in its plainest form, on a clock of its own that counts milliseconds.
struct PlayerModel {
    Entries entries;
    bool playing = false;
    std::int64_t now = 0;
    std::function<int()> lateness = [] { return 0; };  ///< what showing an entry takes
    std::multimap<std::int64_t, std::function<void()>> acts;
    Lines midi;
    Lines view;

    void setTempo(int tempo) { tempo_ = tempo; }
    void setLoops(bool on) { loops_ = on; }
    void toggleKeepLastNumber() { keepsLastNumber_ = !keepsLastNumber_; }
    void endProgram() { ending_ = true; }
    void load(const Entries& theEntries, int start, int end) {
        const int last = std::max(static_cast<int>(theEntries.size()) - 1, 0);
        entries = theEntries;
        start_ = std::min(start, last);
        end_ = std::clamp(end, start_, last);
    }
    void stop() {
        if (playing)
            clickPlay();
    }
    void clickPlay() {
        say({"no frame", "canc"});
        if (entries.empty())
            return;
        playing = !playing;
        if (!playing)
            endNote();
        say({playing ? "Stop" : "Play"});
        if (playing)
            say({"no canc"});
        say({"ne 0"});
        const int call = ++calls_;
        if (!passes(call) || (playing && call != calls_))
            return;
        playing = false;
        say({"Play", "no canc", "focus", "ne ", "pnn ", "canc"});
    }
    void abandon() {
        if (!std::exchange(playing, false))
            return;
        endNote();
        say({"Play", "canc", "ne ", "pnn "});
    }
    /// A pass of a loop runs up to two acts that are due.
    void runDueActs() {
        for (int i = 0; i < 2 && !acts.empty() && acts.begin()->first <= now; ++i)
            acts.extract(acts.begin()).mapped()();
    }
    void runActs() {
        while (!acts.empty()) {
            now = std::max(now, acts.begin()->first);
            runDueActs();
        }
    }

private:
    void say(const Lines& lines) {
        for (const std::string& line : lines)
            view.push_back(at(now, line));
    }
    bool stopped(int call) {
        runDueActs();
        playing = playing && !ending_;
        return !playing || call != calls_;
    }
    /// In an entry of more than twenty seconds events run once a second. True if one stopped it.
    bool wait(std::int64_t until, bool isLong, int call) {
        while (isLong && until - now > 1000) {
            now += 1000;
            if (stopped(call))
                return true;
        }
        now = std::max(now, until);
        return false;
    }

    /// False if it ended at an entry too short to be played.
    bool passes(int call) {
        const int from = start_;
        const int to = end_;
        std::int64_t due = now;
        std::int64_t passBegan = due;
        std::int64_t sounding = 0;
        std::int64_t silence = 0;
        int velocity = 100;
        for (int i = from; !stopped(call) && i < static_cast<int>(entries.size());) {
            const MelodyEntry entry = entries[static_cast<std::size_t>(i)];
            say({"ne " + std::to_string(i + 1)});
            now += lateness();
            const double quarters = rhythm::numberFromText(entry.duration).value_or(0);
            const auto total = static_cast<std::int64_t>(quarters * (60.0 / tempo_) * 1000);
            const char letter = entry.attribute[0].toLatin1();
            const std::map<char, std::pair<int, int>> articulations{
                {'n', {100, 1}}, {'a', {127, 1}}, {'s', {120, 4}}, {'t', {100, 2}}};
            if (const auto row = articulations.find(letter); row != articulations.end()) {
                const int part = row->second.second;
                velocity = row->second.first;
                sounding = part == 1 ? total - 30 : total / part;
                silence = part == 1 ? 0 : std::max<std::int64_t>(total - sounding - 30, 0);
            } else if (letter == 'p') {
                silence = std::max<std::int64_t>(total - 30, 0);
            }
            const std::int64_t heard = letter == 'p' ? 0 : sounding;
            say({"pnn " + pitch::NoteName(entry.noteNumber()).toStdString()});
            if (letter != 'p' && sounding < 1)
                return false;
            const bool isLong = heard + silence + 30 > 20000;
            if (heard > 0) {
                // Too late for most of the note, the melody goes on from here.
                due = (now - due) * 2 > heard ? now : due;
                beginNote(entry.noteNumber(), velocity, due);
                due = after(due, heard);
                const bool ended = wait(due, isLong, call);
                endNote(ended ? now : due);
                if (ended)
                    return true;
            }
            due = after(due, silence);
            if (wait(due, isLong, call))
                return true;
            const bool more = ++i <= to;
            if (!more && !keepsLastNumber_)
                say({"ne 0"});
            if (!more && (!loops_ || !playing))
                return true;
            // Between two entries, and in a pass that takes no time.
            due = more || due == passBegan ? after(due, 30) : due;
            wait(due, false, call);
            passBegan = more ? passBegan : due;
            i = more ? i : from;
        }
        return true;
    }

    /// Where a wait ends: waits follow each other, unless the clock is far behind them.
    std::int64_t after(std::int64_t due, std::int64_t ms) const {
        return (now - due > 500 ? now : due) + ms;
    }
    void beginNote(int note, int velocity, std::int64_t due) {
        if (note < 36 || note > 95)
            return;
        sounding_ = note;
        say({"mark " + std::to_string(note - 36)});
        midi.push_back(at(due, "on 1 " + std::to_string(note) + ' ' + std::to_string(velocity)));
    }
    void endNote() { endNote(now); }
    void endNote(std::int64_t due) {
        const int note = std::exchange(sounding_, 0);
        if (note == 0)
            return;
        midi.push_back(at(due, "on 1 " + std::to_string(note) + " 0"));
        say({"unmark " + std::to_string(note - 36)});
    }

    int tempo_ = 60;
    int start_ = 0;
    int end_ = 0;
    bool loops_ = false;
    bool keepsLastNumber_ = false;
    bool ending_ = false;
    int calls_ = 0;
    int sounding_ = 0;
};
