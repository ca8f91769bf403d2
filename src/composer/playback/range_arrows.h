#pragma once

#include "composer/melody/play_range.h"

class FunzioniMM;
class Runtime;
struct Composition;

/// Shows the ends of the range while an arrow is held.
class RangeView {
public:
    virtual ~RangeView() = default;

    virtual void showRange() = 0;
};

/// The arrows that move the ends of the range for as long as they are held.
class RangeArrows {
public:
    RangeArrows(Runtime& runtime, FunzioniMM& funzioniMM, Composition& composition, RangeView& view)
        : runtime_(runtime), funzioniMM_(funzioniMM), composition_(composition), view_(view) {}

    /// The mouse went down on an arrow. This returns when it was released, or the program ends. An
    /// empty melody has nothing to move.
    void hold(PlayRange::Arrow arrow);

    /// One step: a press that nothing holds, as a screen reader makes it.
    void step(PlayRange::Arrow arrow);

    /// The mouse went up, or the window closes.
    void release() { held_ = false; }

private:
    Runtime& runtime_;
    FunzioniMM& funzioniMM_;
    Composition& composition_;
    RangeView& view_;
    bool held_ = false;
};
