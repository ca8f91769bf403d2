#pragma once

#include "eartraining/ear_training.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/ear_training_view.h"
#include "support/test_world.h"

#include <cstdio>
#include <set>

/// Holds what the ear training shows.
class EarScreen : public EarTrainingView {
public:
    EarPrompt prompt = range_prompts::kLowerKey;
    std::string score;  ///< "right wrong percentage"
    std::vector<bool> verdicts;
    std::set<int> keys;
    std::set<int> marks;
    bool close = true;
    bool exerciseMenu = true;

    void showPrompt(const EarPrompt& shown) override { prompt = shown; }
    void showScore(const Score& now) override {
        score = std::to_string(now.right()) + ' ' + std::to_string(now.wrong()) + ' ' +
                now.percentage().toStdString();
    }
    void announceVerdict(const Score& now) override {
        verdicts.push_back(now.lastVerdict() == Score::Verdict::Right);
    }
    void showExercise(const EarExercise& /*exercise*/) override {}
    void focusStart(const EarExercise& /*exercise*/) override {}
    void showKey(pitch::NoteIndex key, bool pressed) override { put(keys, key, pressed); }
    void showRangeMark(pitch::NoteIndex key, bool on) override { put(marks, key, on); }
    void clearRangeMarks() override { marks.clear(); }
    void showClose(bool on) override { close = on; }
    void enableExerciseMenu(bool on) override { exerciseMenu = on; }

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
    EarTraining ear{runtime, funzioniMM, dialogs, state, screen};
    PitchExercise& pitch = ear.exercises().pitch;
    IntervalExercise& interval = ear.exercises().interval;
    ChordExercise& chord = ear.exercises().chord;

    EarWorld() {
        openOutput();
        ear.load();
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
