#include "reading/step_range_choice.h"

#include "platform/user_text.h"
#include "reading/ruler.h"

#include <algorithm>

void StepRangeChoice::chooseItem(std::size_t index) {
    range_ = *difficulty::kItems[difficulty::chosenItem(index)].range;
    forgetClicks();
}

void StepRangeChoice::forgetClicks() {
    first_ = 0;
    second_ = 0;
    startAllowed_ = true;
}

std::optional<int> StepRangeChoice::click(double y) {
    startAllowed_ = false;
    const std::optional<int> step = ruler::stepAt(y);
    if (!step)
        return std::nullopt;
    (first_ == 0 ? first_ : second_) = *step;

    if (first_ != second_)
        range_ = {std::min(first_, second_), std::max(first_, second_)};
    startAllowed_ = first_ != 0 && second_ != 0;
    return step;
}

QString StepRangeChoice::inWords(pitch::AnswerNames names) const {
    const auto name = [names](int step) {
        return pitch::answerName(staff_step::degree(step), names);
    };
    if (startAllowed_) {
        const int lower = std::max(range_.lower, staff_step::kBassLowest);
        return UserText::tr("Note da %1 a %2").arg(name(lower), name(range_.upper));
    }
    if (first_ == 0)
        return UserText::tr("Clicca sul righello accanto alla prima nota");
    return UserText::tr("Prima nota: %1. Ora clicca la seconda").arg(name(first_));
}
