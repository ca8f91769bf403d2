#pragma once

#include "composer/notation/system_layout.h"

#include <vector>

namespace notation {

/// The whole melody as systems below each other. A system depends on those before it alone, so that
/// a change leaves everything before it as it is; what follows is laid out afresh as far as someone
/// asks for it, and at once only some way on: the cost of a change does not grow with the melody.
class ScoreLayout {
public:
    void setSource(Source source);
    void setPage(const Page& page);
    const Page& page() const { return page_; }

    /// To be called when the entries from one on may be others than before.
    void changedFrom(int entry);

    /// Lays out what is asked for, if it is there: the system with an entry, or the last one; the
    /// systems down to a height. At least one system is always there.
    std::size_t systemOf(int entry);

    /// The first system that is not before an entry, of those that are laid out; behind the last of
    /// them if it is further on.
    std::size_t find(int entry) const;
    void layOutTo(double y);
    void layOutAll();

    /// Lays out all systems of a melody that does not change any more: as many as else, about
    /// equally full, so that the last one is not the rest of a line.
    void layOutEvenly();

    /// The systems that are laid out.
    const std::vector<System>& systems() const { return systems_; }

    /// The top of a system that is laid out, in half spaces from the top of the first one.
    double topOf(std::size_t system) const { return tops_[system]; }

    /// The system that a height belongs to, of those that are laid out.
    std::size_t systemAt(double y) const;

    /// Of all systems; as far as they are not laid out, what they will take about.
    double height() const;
    bool complete() const { return !systems_.empty() && systems_.back().last; }

private:
    void append(const Page& page);
    void clear();
    bool appendEvenly(std::size_t systems, double natural, double unit);
    bool fitsView(double less) const;

    Source source_;
    Page page_;
    std::vector<System> systems_;
    std::vector<double> tops_;
};

/// Between two systems, in half spaces.
constexpr double kBetweenSystems = 2.5;

}  // namespace notation
