#include "composer/playback/melody_player.h"

#include "composer/melody/composition.h"
#include "composer/playback/articulation.h"
#include "core/funzioni_mm.h"
#include "core/wait_chain.h"

#include <optional>
#include <utility>

namespace {

/// How often events run while a long entry lasts.
constexpr Instant kServeInterval = std::chrono::seconds(1);

/// The passes of a range are an entry apart: what was typed since the last one sounds at once.
class KeysTogether {
public:
    explicit KeysTogether(Runtime& runtime)
        : runtime_(runtime), before_(runtime.pollKeysInOrder(false)) {}
    ~KeysTogether() { runtime_.pollKeysInOrder(before_); }
    KeysTogether(const KeysTogether&) = delete;
    KeysTogether& operator=(const KeysTogether&) = delete;

private:
    Runtime& runtime_;
    bool before_;
};

}  // namespace

struct MelodyPlayer::Run {
    unsigned call;
    WaitChain waits;
    Articulation articulation{};
    bool longEntry = false;
};

void MelodyPlayer::play(std::int16_t start, std::int16_t end) {
    if (composition_.melody.empty())
        return;
    playing_ = !playing_;
    if (!playing_)
        endNote();
    view_.showPlaying(playing_);
    if (playing_)
        view_.enableCanc(false);
    view_.showEntryNumber(QStringLiteral("0"));
    std::optional<KeysTogether> together;
    if (start != end)
        together.emplace(runtime_);
    Run run{++calls_, WaitChain(runtime_)};
    const End howEnded = playPasses(start, end, run);
    // A later call of `play` may still be playing: the button then keeps its "Stop".
    const bool superseded = playing_ && run.call != calls_;
    if (howEnded != End::TooShort && !superseded)
        finish();
}

MelodyPlayer::End MelodyPlayer::playPasses(std::int16_t start, std::int16_t end, Run& run) {
    int index = start;
    Instant passStart = run.waits.reached();
    while (true) {
        run.waits.pass();
        if (stopped(run) || !composition_.melody.has(index))
            return End::Stopped;
        if (const End howEnded = playEntry(index, run); howEnded != End::Reached)
            return howEnded;
        if (++index <= end) {
            runtime_.blockUntil(run.waits.afterMs(Articulation::kGapMs));
            continue;
        }
        if (!keepsLastNumber_)
            view_.showEntryNumber(QStringLiteral("0"));
        if (!loops_ || !playing_)
            return End::Reached;
        // A range that takes no time at all would keep the processor busy for nothing.
        if (run.waits.reached() == passStart)
            runtime_.blockUntil(run.waits.afterMs(Articulation::kGapMs));
        passStart = run.waits.reached();
        index = start;
    }
}

MelodyPlayer::End MelodyPlayer::playEntry(int index, Run& run) {
    const MelodyEntry& entry = composition_.melody.entry(index);
    const pitch::NoteNumber note = entry.noteNumber();
    Articulation& articulation = run.articulation;
    view_.showEntryNumber(QString::number(index + 1));
    articulation.articulate(entry.attribute, entry.quarters(), composition_.tempo);
    view_.showEntryName(pitch::NoteName(note));
    const std::int64_t soundingMs = entry.attribute == letter::kPausa ? 0 : articulation.soundingMs;
    if (entry.attribute != letter::kPausa && soundingMs < 1)
        return End::TooShort;
    run.longEntry = soundingMs + articulation.silenceMs + Articulation::kGapMs > kLongEntryMs;
    if (soundingMs > 0) {
        // Too late for most of the note to be heard, the melody goes on from here.
        if (run.waits.delay() > std::chrono::milliseconds(soundingMs) / 2)
            run.waits.restart();
        beginNote(note, articulation.velocity, run.waits.reached());
        const bool played = waitUntil(run.waits.afterMs(soundingMs), run, note);
        endNote();
        if (!played)
            return End::Stopped;
    }
    const Instant end = run.waits.afterMs(articulation.silenceMs);
    return waitUntil(end, run) ? End::Reached : End::Stopped;
}

/// Whether the events of a pass, or the end of the program, ended this playback.
bool MelodyPlayer::stopped(const Run& run) {
    if (runtime_.ending())
        playing_ = false;
    return !playing_ || run.call != calls_;
}

/// False if the playback was stopped meanwhile, which only a long entry allows. A note that ends
/// then is sent ahead when no more events run before.
bool MelodyPlayer::waitUntil(Instant end, const Run& run, pitch::NoteNumber ending) {
    while (run.longEntry && end - runtime_.now() > kServeInterval) {
        runtime_.blockUntil(runtime_.now() + kServeInterval);
        runtime_.yield();
        if (stopped(run))
            return false;
    }
    if (pitch::isPlayable(ending))
        funzioniMM_.planNoteOff(FunzioniMM::kMelodyChannel, ending, end);
    runtime_.blockUntil(end);
    return true;
}

/// A note that is not on the keyboard takes its time in silence.
void MelodyPlayer::beginNote(pitch::NoteNumber note, int velocity, Instant at) {
    if (!pitch::isPlayable(note))
        return;
    sounding_ = note;
    // Before the key is painted, which takes its time.
    funzioniMM_.planNoteOn(FunzioniMM::kMelodyChannel, note, velocity, at);
    view_.markKey(pitch::noteIndexOf(note), true);
    funzioniMM_.NoteOn(FunzioniMM::kMelodyChannel, note, velocity);
}

/// A stop calls this at once, and the loop that began the note calls it again when it returns.
void MelodyPlayer::endNote() {
    const pitch::NoteNumber note = std::exchange(sounding_, pitch::kRest);
    if (note == pitch::kRest)
        return;
    funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
    view_.markKey(pitch::noteIndexOf(note), false);
}

void MelodyPlayer::abandon() {
    if (!std::exchange(playing_, false))
        return;
    endNote();
    view_.showPlaying(false);
    view_.enableCanc(true);
    leaveEntry();
}

void MelodyPlayer::finish() {
    playing_ = false;
    view_.showPlaying(false);
    view_.enableCanc(false);
    view_.focusPlay();
    if (composition_.step.active)
        return;
    leaveEntry();
    view_.enableCanc(true);
}

/// Nothing plays any more; only step mode still names its entry.
void MelodyPlayer::leaveEntry() {
    if (composition_.step.active)
        return;
    view_.showEntryNumber({});
    view_.showEntryName({});
}

void MelodyPlayer::silenceAll() {
    for (pitch::NoteNumber note = pitch::kLowestNote; note <= pitch::kHighestNote; ++note) {
        funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
        view_.markKey(pitch::noteIndexOf(note), false);
    }
}
