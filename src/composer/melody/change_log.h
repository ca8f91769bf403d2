#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

/// From which entry on a list changed since a reader looked at it last. Readers keep the revision
/// that they have seen; the cost of a call does not grow with the list.
class ChangeLog {
public:
    using Revision = std::uint64_t;

    Revision revision() const { return revision_; }

    /// The entries from `position` on may be others than before, in number too.
    void record(int position) {
        // An older change behind this one is part of it.
        while (!changes_.empty() && changes_.back().position >= position)
            changes_.pop_back();
        changes_.push_back({++revision_, position});
    }

    /// The first entry that may have changed after a revision; nothing if none has.
    std::optional<int> firstSince(Revision seen) const {
        const auto first = std::upper_bound(
            changes_.begin(), changes_.end(), seen,
            [](Revision revision, const Change& change) { return revision < change.revision; });
        return first == changes_.end() ? std::nullopt : std::optional(first->position);
    }

private:
    struct Change {
        Revision revision = 0;
        int position = 0;
    };

    std::vector<Change> changes_;  ///< revision and position both grow
    Revision revision_ = 0;
};
