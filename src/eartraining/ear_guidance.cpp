#include "eartraining/ear_guidance.h"

#include "core/open_output.h"
#include "eartraining/ear_exercise.h"
#include "eartraining/ear_training_view.h"
#include "platform/user_text.h"

#include <utility>

namespace {

constexpr const char* kNoOutput =
    QT_TRANSLATE_NOOP("UserText",
                      "Non si sente nulla: scegli un'uscita con MIDI Test, nel menu Opzioni della "
                      "finestra principale");

}  // namespace

void EarGuidance::refresh(const EarExercise& asking, const EarExercise& keyboardUser) {
    const char* hint = output_.isOpen() ? asking.hint() : kNoOutput;
    if (std::exchange(hint_, hint) != hint)
        view_.showHint(hint);
    const std::optional<KeySpan> span = keyboardUser.span();
    if (std::exchange(span_, span) != span)
        view_.showSpan(span);
    const bool canHearAgain = asking.canHearAgain();
    if (std::exchange(canHearAgain_, canHearAgain) != canHearAgain)
        view_.enableHearAgain(canHearAgain);
}
