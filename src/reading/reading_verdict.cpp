#include "reading/reading_verdict.h"

#include <utility>

ReadingVerdict::ReadingVerdict(Runtime& runtime, std::function<void()> changed)
    : changed_(std::move(changed)), moment_(runtime, [this] {
          shown_.reset();
          changed_();
      }) {}

void ReadingVerdict::noteShown(int step) {
    step_ = step;
}

void ReadingVerdict::noteHidden() {
    if (!shown_ || !shown_->onShow)
        return;
    shown_->onShow = false;
    changed_();
}

void ReadingVerdict::judged(Verdict verdict, std::optional<int> degree) {
    shown_ = Shown{verdict, degree, step_, true};
    moment_.begin();
    changed_();
}
