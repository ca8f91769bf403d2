#include "composer/melody/play_range.h"

#include "composer/melody/rhythm.h"

#include <algorithm>
#include <cmath>

namespace {

std::int16_t lastOf(int count) {
    return static_cast<std::int16_t>(std::max(count - 1, 0));
}

/// The entry that a number counted from 1 means; a fraction is rounded, a half to the even number.
std::int16_t indexOf(double number) {
    return static_cast<std::int16_t>(std::nearbyint(number - 1));
}

}  // namespace

void PlayRange::coverAll(int count) {
    start_ = 0;
    end_ = lastOf(count);
}

void PlayRange::select(int start, int end, int count) {
    start_ = static_cast<std::int16_t>(std::clamp<int>(start, 0, lastOf(count)));
    end_ = static_cast<std::int16_t>(std::clamp<int>(end, start_, lastOf(count)));
}

void PlayRange::afterAppend(int count) {
    end_ = lastOf(count);
}

void PlayRange::afterInsertion(int count) {
    end_ = std::min<std::int16_t>(static_cast<std::int16_t>(end_ + 1), lastOf(count));
}

void PlayRange::afterDeletion(int stepIndex, int count) {
    end_ = std::min(end_, lastOf(count));
    start_ = static_cast<std::int16_t>(std::min<int>(start_, std::max(stepIndex, 0)));
}

void PlayRange::afterInsertionOutside(int index) {
    if (index < start_)
        moveBy(1);
}

void PlayRange::afterDeletionOutside(int index) {
    if (index < start_)
        moveBy(-1);
}

void PlayRange::moveBy(int entries) {
    start_ = static_cast<std::int16_t>(start_ + entries);
    end_ = static_cast<std::int16_t>(end_ + entries);
}

QString PlayRange::validateStart(const QString& box) {
    const double number = rhythm::numberFromText(box).value_or(start_);
    if (number >= 1 && number <= end_ + 1)
        start_ = indexOf(number);
    return startBox();
}

QString PlayRange::validateEnd(const QString& box, int count) {
    const double number = rhythm::numberFromText(box).value_or(end_ + 1);
    if (number <= count && number > start_)
        end_ = std::max(start_, indexOf(number));
    return endBox();
}

bool PlayRange::move(Arrow arrow, int count) {
    const PlayRange before = *this;
    if (arrow == Arrow::StartDown && start_ >= 1)
        --start_;
    else if (arrow == Arrow::StartUp && start_ < end_ - 1)
        ++start_;
    else if (arrow == Arrow::EndDown && end_ > start_ + 1)
        --end_;
    else if (arrow == Arrow::EndUp && end_ < count - 1)
        ++end_;
    return *this != before;
}
