#pragma once

#include "composer/melody/melody_editor.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

/// Undo, and what is not saved, in their plainest form: whole copies of the composition.
struct PlainUndo {
    struct State {
        Composition all;
        std::vector<int> ids;  ///< of the entries
    };
    struct Change {
        int number;
        bool whole;  ///< puts another melody there
        State before;
        State after;
    };

    Composition c;
    std::vector<int> ids;  ///< of the entries

    bool canUndo() const { return !done.empty(); }
    bool canRedo() const { return !undone.empty(); }
    bool modified() const {
        const auto at = saved.find(c.document);
        return at == saved.end() || at->second[0] != lastChange() ||
               (!isNothing(c) && (at->second[1] != c.tempo || at->second[2] != c.instrument));
    }
    void markSaved() { saved[c.document] = {lastChange(), c.tempo, c.instrument}; }
    EditOutcome undo() { return travel(true); }
    EditOutcome redo() { return travel(false); }

protected:
    int count() const { return c.melody.EntryCount(); }
    void setStep(int index) { c.step.index = static_cast<std::int16_t>(index); }

    /// What undo takes back, if it changes something.
    template <typename Act>
    EditOutcome edit(Act act) {
        outcome = {};
        edits = whole = false;
        const State before{c, ids};
        act();
        const bool changed = ids != before.ids || !c.melody.consistent() ||
                             c.melody.texts() != before.all.melody.texts() ||
                             c.bookmarks != before.all.bookmarks || c.name != before.all.name;
        if (edits && changed) {
            const bool fromNothing = isNothing(before.all) && isNothing(c);
            done.push_back({++changes, whole && !fromNothing, before, {c, ids}});
            undone.clear();
        }
        return outcome;
    }

    /// The step index stays with its entry; if that went, the one before it is next.
    bool follow(const std::vector<int>& from) {
        const int index = c.step.index;
        const int more = static_cast<int>(ids.size()) - static_cast<int>(from.size());
        const bool isEntry = index >= 0 && index < static_cast<int>(from.size());
        const auto found =
            isEntry ? std::ranges::find(ids, from[static_cast<std::size_t>(index)]) : ids.end();
        if (found != ids.end())
            setStep(static_cast<int>(found - ids.begin()));
        else if (index >= 0)
            setStep(isEntry ? index - 1 : index + more);
        return !isEntry || found != ids.end();
    }

    EditOutcome outcome;
    bool edits = false;  ///< the operation is one that undo takes back
    bool whole = false;

private:
    int lastChange() const { return done.empty() ? 0 : done.back().number; }
    static bool isNothing(const Composition& all) {
        return all.melody.empty() && all.melody.consistent();
    }
    /// Entries, range and bookmarks go back; the rest only where the change had altered it.
    EditOutcome travel(bool back) {
        auto& from = back ? done : undone;
        outcome = {};
        outcome.changed = true;
        if (from.empty())
            return outcome;
        const Change change = from.back();
        from.pop_back();
        (back ? undone : done).push_back(change);
        const Composition& left = back ? change.after.all : change.before.all;
        const Composition& to = back ? change.before.all : change.after.all;
        const auto oldIds = std::exchange(ids, back ? change.before.ids : change.after.ids);
        const auto restore = [&](auto Composition::*field) {
            if (left.*field != to.*field)
                c.*field = to.*field;
        };
        c.melody = to.melody;
        c.range = to.range;
        c.bookmarks = to.bookmarks;
        restore(&Composition::name);
        restore(&Composition::source);
        restore(&Composition::document);
        restore(&Composition::tempo);
        restore(&Composition::instrument);
        if (left.settings.mode() != to.settings.mode())
            c.settings.setMode(to.settings.mode());
        const bool moved = c.step.index == left.step.index && left.step.index != to.step.index;
        outcome.stepEntryGone = change.whole || !follow(oldIds);
        setStep(std::clamp<int>(moved ? to.step.index : c.step.index, 0, std::max(count() - 1, 0)));
        if (count() == 0)
            c.step.active = c.step.frameOpen = false;
        return outcome;
    }

    std::vector<Change> done;
    std::vector<Change> undone;
    std::map<int, std::array<int, 3>> saved{{0, {}}};  ///< by document: change, tempo, instrument
    int changes = 0;
};
