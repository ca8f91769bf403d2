#pragma once

#include "core/moment.h"
#include "core/verdict.h"

#include <functional>
#include <optional>

/// The verdict on the drill's last answer as it is seen for a moment: at the note that was asked
/// for, also after another one has taken its place, and at the button of the degree that was
/// answered, whatever key or button gave it.
class ReadingVerdict {
public:
    struct Shown {
        Verdict verdict = Verdict::None;
        std::optional<int> degree;  ///< that was answered, 0 (Do) to 6 (Si), by a key of its own
        int step = 0;               ///< that was asked for
        bool onShow = false;        ///< the note is still the one on show

        bool operator==(const Shown&) const = default;
    };

    /// `changed` is called whenever `shown` changes.
    ReadingVerdict(Runtime& runtime, std::function<void()> changed);

    /// Nothing when the moment is over.
    const std::optional<Shown>& shown() const { return shown_; }

    void noteShown(int step);
    void noteHidden();
    /// An answer to the note on show has been judged.
    void judged(Verdict verdict, std::optional<int> degree);
    void end() { moment_.end(); }

private:
    std::function<void()> changed_;
    std::optional<Shown> shown_;
    int step_ = 0;
    Moment moment_;
};
