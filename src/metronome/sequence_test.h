#pragma once

#include <QString>

class FunzioniMM;
class QEvent;
struct MetronomeState;

/// What the test of a sequence shows.
class SequenceTestView {
public:
    virtual ~SequenceTestView() = default;

    /// A pulse is the next to sound, counted from 1.
    virtual void showPulse(int pulse, int pulses) = 0;
    virtual void showEnd() = 0;

    /// Whether the user asks for the end by this input.
    virtual bool endsTest(const QEvent& input) = 0;
};

/// Plays a custom sequence once, a pulse every 0.8 s, and lets no input through meanwhile; the user
/// can end it all the same. The last pulse stays the state's current one.
class SequenceTest {
public:
    SequenceTest(FunzioniMM& funzioniMM, MetronomeState& state, SequenceTestView& view)
        : funzioniMM_(funzioniMM), state_(state), view_(view) {}

    /// Nothing is heard or shown without an output. A screen reader, whose presses come through a
    /// wait, cannot start it twice.
    void play(const QString& pattern);

    /// Ends the test with the wait for its next pulse.
    void stop() { stopped_ = true; }

private:
    FunzioniMM& funzioniMM_;
    MetronomeState& state_;
    SequenceTestView& view_;
    bool playing_ = false;
    bool stopped_ = false;
};
