#include "composer/export/melody_score.h"

#include "composer/melody/melody.h"
#include "composer/playback/articulation.h"
#include "core/pitch.h"

namespace {

// Both on channel 1; a note ends with a note-on of velocity 0.
constexpr std::uint32_t kNoteOn = 0x90;
constexpr std::uint32_t kProgramChange = 0xC0;

std::uint32_t noteMessage(pitch::NoteNumber note, int velocity) {
    return kNoteOn | static_cast<std::uint32_t>(note) << 8 |
           static_cast<std::uint32_t>(velocity) << 16;
}

}  // namespace

MelodyScore scoreOf(const Melody& melody, int tempo, int program) {
    MelodyScore score;
    score.messages.push_back({0, kProgramChange | static_cast<std::uint32_t>(program) << 8});
    Articulation articulation;
    for (const MelodyEntry& entry : melody.entries()) {
        articulation.articulate(entry.attribute, entry.quarters(), tempo);
        if (entry.attribute != letter::kPausa) {
            if (articulation.soundingMs < 1)
                break;
            const pitch::NoteNumber note = entry.noteNumber();
            const std::int64_t end = score.endMs + articulation.soundingMs;
            if (pitch::isPlayable(note)) {
                score.messages.push_back({score.endMs, noteMessage(note, articulation.velocity)});
                score.messages.push_back({end, noteMessage(note, 0)});
            }
            score.endMs = end;
        }
        score.endMs += articulation.silenceMs + Articulation::kGapMs;
        ++score.entries;
    }
    return score;
}
