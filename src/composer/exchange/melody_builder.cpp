#include "composer/exchange/melody_builder.h"

#include "composer/exchange/play_order.h"
#include "composer/melody/rhythm.h"
#include "core/letter.h"
#include "platform/user_text.h"

#include <algorithm>

namespace imported {
namespace {

using Notes = std::vector<Note>;

bool sounds(const Note& note) {
    return note.note != pitch::kRest;
}

/// The notes of the only voice that sounds, with its rests; of several voices, the notes alone.
Notes voiceOf(const Bar& bar) {
    Notes notes;
    const auto first = std::find_if(bar.notes.begin(), bar.notes.end(), sounds);
    if (bar.notes.empty())
        return notes;
    const int voice = first == bar.notes.end() ? bar.notes.front().voice : first->voice;
    const bool isOne = std::all_of(first, bar.notes.end(), [voice](const Note& note) {
        return !sounds(note) || note.voice == voice;
    });
    std::copy_if(bar.notes.begin(), bar.notes.end(), std::back_inserter(notes),
                 [&](const Note& note) { return isOne ? note.voice == voice : sounds(note); });
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note& a, const Note& b) { return a.onset < b.onset; });
    return notes;
}

/// The bar without gaps, or nothing if two notes sound at once.
std::optional<Notes> lineOf(const Bar& bar) {
    Notes line;
    std::int64_t end = 0;
    const auto fillTo = [&line, &end](std::int64_t onset) {
        if (onset > end) {
            Note rest;
            rest.onset = end;
            rest.duration = onset - end;
            line.push_back(rest);
        }
    };
    for (const Note& note : voiceOf(bar)) {
        if (note.onset < end)
            return std::nullopt;
        fillTo(note.onset);
        line.push_back(note);
        end = note.end();
    }
    fillTo(bar.length);
    return line;
}

/// Puts the bars behind each other and merges tied notes.
class Line {
public:
    /// Whether the melody has room for it.
    bool append(const Notes& notes) {
        for (const Note& note : notes) {
            const bool isTied = note.tieStops && !notes_.empty() && notes_.back().tieStarts &&
                                sounds(note) && notes_.back().note == note.note;
            if (isTied) {
                notes_.back().duration += note.duration;
                notes_.back().tieStarts = note.tieStarts;
                continue;
            }
            if (notes_.size() == Melody::kMaxEntries)
                return false;
            notes_.push_back(note);
        }
        return true;
    }

    const Notes& notes() const { return notes_; }

private:
    Notes notes_;
};

}  // namespace

QString faultIn(const Bar& bar, const QString& reason) {
    return UserText::tr("parte 1, battuta %1: %2").arg(bar.number, reason);
}

std::vector<MelodyEntry> entriesOf(Score& score, QChar decimalSeparator) {
    std::vector<Notes> lines;
    for (const Bar& bar : score.bars) {
        std::optional<Notes> line = lineOf(bar);
        if (!line)
            score.faults += faultIn(bar, UserText::tr("più voci insieme"));
        lines.push_back(line.value_or(Notes()));
    }
    if (!score.faults.isEmpty())
        return {};
    const auto order = playOrder(score.bars);
    Line melody;
    const bool fits = order && std::all_of(order->begin(), order->end(), [&](std::size_t bar) {
                          return melody.append(lines[bar]);
                      });
    if (!fits) {
        score.faults += UserText::tr("con i ritornelli ha più di %1 note").arg(Melody::kMaxEntries);
        return {};
    }
    std::vector<MelodyEntry> entries;
    for (const Note& note : melody.notes()) {
        const double quarters =
            static_cast<double>(note.duration) / static_cast<double>(kTicksPerQuarter);
        const QString letter =
            sounds(note) ? QString(QLatin1Char(note.letter)) : QString(letter::kPausa);
        entries.push_back(MelodyEntry::make(note.note, quarters, letter, decimalSeparator));
    }
    return entries;
}

void Score::leaveOut(LeftOut what) {
    if (std::find(leftOut.begin(), leftOut.end(), what) == leftOut.end())
        leftOut.push_back(what);
}

}  // namespace imported
