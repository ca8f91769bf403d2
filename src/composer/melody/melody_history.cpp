#include "composer/melody/melody_history.h"

#include <utility>

namespace {

template <typename Value>
void restoreIfChanged(Value& value, const Value& from, const Value& to) {
    if (from != to)
        value = to;
}

/// Takes the step index through a change that is about to be made.
bool followStep(StepMode& step, const MelodyDelta& delta, const EditState& from,
                const EditState& to) {
    const bool movedByChange = step.index == from.stepIndex && from.stepIndex != to.stepIndex;
    const bool stays = !delta.whole && step.follow(delta.position, delta.count,
                                                   static_cast<int>(delta.others.size()));
    if (movedByChange)
        step.index = to.stepIndex;
    return stays;
}

}  // namespace

EditState EditState::of(const Composition& composition) {
    return {composition.range, composition.step.index, composition.bookmarks,
            composition.name,  composition.source,     composition.document,
            composition.tempo, composition.instrument, composition.settings.mode()};
}

bool MelodyHistory::undo(Composition& composition) {
    if (!canUndo())
        return true;
    Change& change = done_.back();
    const bool stays = restore(composition, change, change.after, change.before);
    moveLast(done_, undone_);
    return stays;
}

bool MelodyHistory::redo(Composition& composition) {
    if (!canRedo())
        return true;
    Change& change = undone_.back();
    const bool stays = restore(composition, change, change.before, change.after);
    moveLast(undone_, done_);
    return stays;
}

void MelodyHistory::moveLast(std::vector<Change>& from, std::vector<Change>& to) {
    to.push_back(std::move(from.back()));
    from.pop_back();
}

bool MelodyHistory::restore(Composition& composition, Change& change, const EditState& from,
                            const EditState& to) {
    const bool stays = followStep(composition.step, change.delta, from, to);
    composition.melody.exchange(change.delta);
    composition.range = to.range;
    composition.bookmarks = to.bookmarks;
    restoreIfChanged(composition.name, from.name, to.name);
    restoreIfChanged(composition.source, from.source, to.source);
    restoreIfChanged(composition.document, from.document, to.document);
    restoreIfChanged(composition.tempo, from.tempo, to.tempo);
    restoreIfChanged(composition.instrument, from.instrument, to.instrument);
    if (from.mode != to.mode)
        composition.settings.setMode(to.mode);
    composition.step.keepWithin(composition.melody.EntryCount());
    return stays;
}

/// The tempo and the instrument of an empty melody are not saved and do not count.
bool MelodyHistory::modified(const Composition& composition) const {
    const auto found = saved_.find(composition.document);
    if (found == saved_.end() || found->second.changes != done_.size())
        return true;
    const bool empty = composition.melody.empty() && composition.melody.consistent();
    return !empty && (found->second.tempo != composition.tempo ||
                      found->second.instrument != composition.instrument);
}

void MelodyHistory::markSaved(const Composition& composition) {
    saved_[composition.document] = {done_.size(), composition.tempo, composition.instrument};
}

void MelodyHistory::record(Change change) {
    std::erase_if(saved_,
                  [this](const auto& saved) { return saved.second.changes > done_.size(); });
    undone_.clear();
    done_.push_back(std::move(change));
}

void MelodyHistory::Recorder::replace(int position, int count, std::vector<MelodyEntry> entries) {
    delta_.position = position;
    delta_.count = count;
    delta_.others = std::move(entries);
    composition_.melody.exchange(delta_);
    entriesChanged_ = true;
}

void MelodyHistory::Recorder::replaceAll(std::vector<MelodyEntry> entries,
                                         std::shared_ptr<const MelodyTexts> damaged) {
    const bool leavesIt = composition_.melody.empty() && composition_.melody.consistent() &&
                          entries.empty() && !damaged;
    if (leavesIt)
        return;
    delta_.whole = true;
    delta_.otherDamaged = std::move(damaged);
    replace(0, 0, std::move(entries));
}

void MelodyHistory::Recorder::commit() {
    EditState after = EditState::of(composition_);
    if (entriesChanged_ || after.bookmarks != before_.bookmarks || after.name != before_.name)
        history_.record({std::move(delta_), std::move(before_), std::move(after)});
}
