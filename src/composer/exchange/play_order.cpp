#include "composer/exchange/play_order.h"

#include <algorithm>
#include <bit>

namespace imported {
namespace {

constexpr int kMostPasses = 31;

/// Walks over the bars as a musician does.
class Walk {
public:
    explicit Walk(const std::vector<Bar>& bars) : bars_(bars), lastEndings_(bars.size()) {
        std::uint32_t all = 0;
        for (std::size_t i = 0; i < bars.size(); ++i) {
            all = bars[i].signs.endings == 0 ? 0 : all | bars[i].signs.endings;
            lastEndings_[i] = std::bit_width(all) - 1;
        }
        for (std::size_t i = bars.size(); i-- > 1;) {
            if (bars[i].signs.endings != 0 && bars[i - 1].signs.endings != 0)
                lastEndings_[i - 1] = lastEndings_[i];
        }
    }

    std::optional<std::vector<std::size_t>> go() {
        std::size_t steps = 0;
        while (at_ < bars_.size()) {
            if (++steps > kMostBarsPlayed)
                return std::nullopt;
            step();
        }
        return order_;
    }

private:
    void step() {
        const BarSigns& signs = bars_[at_].signs;
        const bool leavesEndings =
            signs.endings == 0 && at_ > 0 && bars_[at_ - 1].signs.endings != 0;
        if (at_ != sectionStart_ && (signs.startsRepeat || leavesEndings))
            startSection(at_);
        if (signs.endings != 0 &&
            (signs.endings & 1U << (jumped_ ? lastEndings_[at_] : pass_)) == 0) {
            ++at_;
            return;
        }
        order_.push_back(at_);
        at_ = next(signs);
    }

    std::size_t next(const BarSigns& signs) {
        if (jumped_)
            return nextAfterJump(signs);
        if (signs.timesRepeated > 0) {
            const int passes = signs.endings != 0 ? lastEndings_[at_] : signs.timesRepeated;
            if (pass_ < std::min(passes, kMostPasses)) {
                ++pass_;
                return sectionStart_;
            }
            startSection(at_ + 1);
        }
        if (signs.daCapo || signs.dalSegno) {
            jumped_ = true;
            return signs.daCapo ? 0 : find(&BarSigns::segno, 0);
        }
        return at_ + 1;
    }

    std::size_t nextAfterJump(const BarSigns& signs) const {
        if (signs.fine)
            return bars_.size();
        return signs.toCoda ? find(&BarSigns::coda, at_ + 1) : at_ + 1;
    }

    void startSection(std::size_t bar) {
        sectionStart_ = bar;
        pass_ = 1;
    }

    /// The first bar with a sign; without one, the next.
    std::size_t find(bool BarSigns::*sign, std::size_t from) const {
        for (std::size_t i = from; i < bars_.size(); ++i) {
            if (bars_[i].signs.*sign)
                return i;
        }
        return at_ + 1;
    }

    const std::vector<Bar>& bars_;
    std::vector<int> lastEndings_;  ///< of each bar, among the endings that follow each other there
    std::vector<std::size_t> order_;
    std::size_t at_ = 0;
    std::size_t sectionStart_ = 0;
    int pass_ = 1;
    bool jumped_ = false;
};

}  // namespace

std::optional<std::vector<std::size_t>> playOrder(const std::vector<Bar>& bars) {
    return Walk(bars).go();
}

}  // namespace imported
