#include "composer/notation/score_layout.h"

#include <algorithm>
#include <utility>

namespace notation {
namespace {

/// So many entries are laid out behind what is asked for.
constexpr int kAhead = 1000;

constexpr double kNearlyFull = 0.75;  ///< of what the other systems hold

std::ptrdiff_t brokenBars(const std::vector<System>& systems) {
    return std::count_if(systems.begin(), systems.end(), [](const System& system) {
        return system.start.bar && system.start.bar->notes > 0;
    });
}

}  // namespace

void ScoreLayout::setSource(Source source) {
    source_ = std::move(source);
    changedFrom(0);
}

void ScoreLayout::setPage(const Page& page) {
    page_ = page;
    changedFrom(0);
}

void ScoreLayout::changedFrom(int entry) {
    const auto stale = std::find_if(systems_.begin(), systems_.end(),
                                    [&](const System& system) { return entry < system.readTo; });
    systems_.erase(stale, systems_.end());
    tops_.resize(systems_.size());
    systemOf(entry);
}

std::size_t ScoreLayout::systemOf(int entry) {
    while (!complete() && (systems_.empty() || systems_.back().start.entry <= entry + kAhead))
        append(page_);
    return std::min(find(entry), systems_.size() - 1);
}

std::size_t ScoreLayout::find(int entry) const {
    const auto at =
        std::partition_point(systems_.begin(), systems_.end(),
                             [entry](const System& system) { return system.isBefore(entry); });
    return static_cast<std::size_t>(at - systems_.begin());
}

void ScoreLayout::layOutTo(double y) {
    while (!complete() && (tops_.empty() || tops_.back() < y))
        append(page_);
}

void ScoreLayout::layOutAll() {
    while (!complete())
        append(page_);
}

void ScoreLayout::layOutEvenly() {
    layOutAll();
    const std::size_t systems = systems_.size();
    if (systems < 2)
        return;
    const std::ptrdiff_t broken = brokenBars(systems_);
    double natural = 0;
    std::size_t bars = 0;
    std::size_t symbols = 0;
    for (const System& system : systems_) {
        natural += system.natural;
        bars += system.barLines.size();
        symbols += system.symbols.size();
    }
    const double unit = natural / static_cast<double>(bars > 0 ? bars : symbols);
    if (appendEvenly(systems, natural, unit) && brokenBars(systems_) <= broken)
        return;
    clear();
    layOutAll();
}

/// Each system takes its share of what is left, to the nearest bar or note, of which one has the
/// width `unit` on average. The answer is whether they are enough.
bool ScoreLayout::appendEvenly(std::size_t systems, double natural, double unit) {
    clear();
    Page page = page_;
    const double average = natural / static_cast<double>(systems);
    for (std::size_t left = systems; left > 0 && !complete(); --left) {
        const double share = natural / static_cast<double>(left);
        page.fullness = left > 1 ? std::min(1.0, (share + unit / 2) / page.width) : 1;
        page.fillsLast = share >= kNearlyFull * average;
        append(page);
        natural -= systems_.back().natural;
    }
    return complete();
}

void ScoreLayout::clear() {
    systems_.clear();
    tops_.clear();
}

std::size_t ScoreLayout::systemAt(double y) const {
    const auto below = std::upper_bound(tops_.begin(), tops_.end(), y);
    return below == tops_.begin() ? 0 : static_cast<std::size_t>(below - tops_.begin() - 1);
}

double ScoreLayout::height() const {
    const double known = tops_.back() + systems_.back().height();
    const int laidOut = systems_.back().next.entry;
    return complete() || laidOut == 0 ? known : known / laidOut * source_.count();
}

void ScoreLayout::append(const Page& page) {
    const SystemStart start = systems_.empty() ? startOf(source_) : systems_.back().next;
    const double top =
        systems_.empty() ? 0 : tops_.back() + systems_.back().height() + kBetweenSystems;
    systems_.push_back(layOutSystem(source_, start, page));
    tops_.push_back(top);
    if (systems_.size() > 1 && !fitsView(0) &&
        fitsView(systems_.back().spareAbove + systems_.back().spareBelow))
        systems_.back().giveUpSpareRoom();
}

/// Whether all systems are seen at a time once the last one gives up some of its height.
bool ScoreLayout::fitsView(double less) const {
    return tops_.back() + systems_.back().height() - less <= page_.view;
}

}  // namespace notation
