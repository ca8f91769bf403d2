#pragma once

#include "eartraining/ear_training.h"
#include "eartraining/ear_training_state.h"
#include "support/test_world.h"

#include <cstdio>
#include <map>
#include <set>

/// Holds what the ear training shows.
class EarScreen : public EarTrainingView {
public:
    EarPrompt prompt = EarPrompt::LowerKey;
    std::string score;  ///< "right wrong percentage"
    std::vector<bool> verdicts;
    std::set<int> keys;
    std::set<int> marks;
    std::map<EarControl, bool> controls{{EarControl::cmdEsci, true}};
    std::map<EarExercise, bool> running;
    bool exerciseMenu = true;

    bool shown(EarControl control) const { return controls.at(control); }

    void showPrompt(EarPrompt shown) override { prompt = shown; }
    void showScore(const Score& now) override {
        score = std::to_string(now.right()) + ' ' + std::to_string(now.wrong()) + ' ' +
                now.percentage().toStdString();
    }
    void announceVerdict(const Score& now) override {
        verdicts.push_back(now.lastVerdict() == Score::Verdict::Right);
    }
    void showKey(pitch::NoteIndex key, bool pressed) override { put(keys, key, pressed); }
    void showRangeMark(pitch::NoteIndex key, bool on) override { put(marks, key, on); }
    void clearRangeMarks() override { marks.clear(); }
    void showControl(EarControl control, bool on) override { controls[control] = on; }
    void focusIntoStart() override {}
    void enableExerciseMenu(bool on) override { exerciseMenu = on; }
    void showRunning(EarExercise exercise, bool on) override { running[exercise] = on; }

private:
    static void put(std::set<int>& set, int element, bool in) {
        if (in)
            set.insert(element);
        else
            set.erase(element);
    }
};

/// The ear training on virtual time, just after midnight when waits have the finest grain.
struct EarWorld : TestWorld {
    EarTrainingState state;
    EarScreen screen;
    EarTraining ear{runtime, funzioniMM, dialogs, state};

    EarWorld() {
        openOutput();
        ear.load(screen);
    }

    void clickKeys(std::initializer_list<int> keys) {
        for (const int key : keys)
            ear.keyClicked(static_cast<pitch::NoteIndex>(key));
    }

    /// The notes that have begun and not ended.
    std::set<int> sounding() {
        std::set<int> notes;
        for (const std::string& line : midi.takeUntimed()) {
            int note = 0;
            int velocity = 0;
            std::sscanf(line.c_str(), "on 1 %d %d", &note, &velocity);
            if (velocity == 0)
                notes.erase(note);
            else
                notes.insert(note);
        }
        return notes;
    }

    /// The next draws between 0 and `count` - 1; the last one is repeated.
    void willDraw(int count, std::initializer_list<int> draws) {
        random.numbers.clear();
        for (const int draw : draws)
            random.numbers.push_back((static_cast<float>(draw) + 0.5F) / static_cast<float>(count));
    }
};
