#include "eartraining/score.h"

#include "core/text.h"

#include <array>

namespace {

using ear_colours::Rgb;
using ear_colours::rgb;

using Alternating = std::array<Rgb, 2>;

constexpr Alternating kRight{rgb(0, 191, 11), rgb(192, 247, 0)};
constexpr Alternating kWrong{rgb(247, 202, 233), rgb(241, 107, 201)};

std::optional<Rgb> afterChanges(const Alternating& colours, int changes) {
    if (changes == 0)
        return std::nullopt;
    return colours[static_cast<std::size_t>((changes - 1) % 2)];
}

}  // namespace

void Score::reset() {
    right_ = 0;
    wrong_ = 0;
}

void Score::count(Verdict verdict) {
    lastVerdict_ = verdict;
    ++(verdict == Verdict::Right ? right_ : wrong_);
}

void Score::alternateColour(Verdict verdict) {
    ++(verdict == Verdict::Right ? rightChanges_ : wrongChanges_);
}

QString Score::percentage() const {
    const int answers = right_ + wrong_;
    return answers == 0 ? QStringLiteral("0") : text::percentage(right_, answers);
}

std::optional<Rgb> Score::rightColour() const {
    return afterChanges(kRight, rightChanges_);
}

std::optional<Rgb> Score::wrongColour() const {
    return afterChanges(kWrong, wrongChanges_);
}
