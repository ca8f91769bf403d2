#include "composer/playback/range_arrows.h"

#include "composer/melody/composition.h"
#include "core/funzioni_mm.h"
#include "platform/runtime.h"

namespace {

constexpr double kRepeatSeconds = 0.1;

}  // namespace

void RangeArrows::hold(PlayRange::Arrow arrow) {
    held_ = true;
    bool secondPass = false;
    while (held_) {
        runtime_.yield();
        if (runtime_.ending())
            held_ = false;
        if (held_ && secondPass) {
            step(arrow);
            funzioniMM_.WaitSeconds(kRepeatSeconds);
        }
        secondPass = !secondPass;
    }
}

void RangeArrows::step(PlayRange::Arrow arrow) {
    const Melody& melody = composition_.melody;
    if (!melody.empty() && composition_.range.move(arrow, melody.EntryCount()))
        view_.showRange();
}
