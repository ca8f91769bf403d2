#include "metronome/sequence_test.h"

#include "core/funzioni_mm.h"
#include "metronome/metronome_state.h"

namespace {

constexpr double kPulseSeconds = 0.8;

}  // namespace

/// The reset at the end of a test takes back the click that was planned.
void SequenceTest::play(const QString& pattern) {
    if (playing_)
        return;
    playing_ = true;
    stopped_ = false;
    int pulse = 0;
    WaitChain waits = funzioniMM_.waits();
    for (const QChar letter : pattern) {
        state_.takePulse(letter);
        if (!funzioniMM_.output().ready())
            continue;
        view_.showPulse(++pulse, static_cast<int>(pattern.size()));
        funzioniMM_.planReset(waits.reached());
        const Instant click = waits.afterSeconds(kPulseSeconds);
        funzioniMM_.planNoteOn(FunzioniMM::kPercussionChannel, state_.MetroPulseNote,
                               MetronomeState::kFullVelocity, click);
        funzioniMM_.ResetOutput();
        const bool ends = funzioniMM_.waitUnless(
            click, [this](const QEvent& input) { return view_.endsTest(input); });
        if (ends || stopped_) {
            funzioniMM_.ResetOutput();
            break;
        }
        funzioniMM_.NoteOn(FunzioniMM::kPercussionChannel, state_.MetroPulseNote,
                           MetronomeState::kFullVelocity);
    }
    playing_ = false;
    view_.showEnd();
}
