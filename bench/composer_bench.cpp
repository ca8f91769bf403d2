// The composer's operations in melodies of different lengths: each should cost the same in all.
// Operations that change the melody are measured together with taking them back, so that the
// melody keeps its length.

#include "composer/melody/melody_editor.h"
#include "composer/notation/score_layout.h"
#include "composer/playback/playback.h"

#include <benchmark/benchmark.h>

#include <cstdint>

namespace {

/// A composition of notes and rests, with two bookmarks, one entry short of the given number.
struct Bench {
    explicit Bench(std::int64_t entries) {
        MelodyFile file;
        file.bookmarks = QStringList{Bookmarks::wholeMelody(1), Bookmark{1, 8, "intro"}.text()};
        for (std::int64_t i = 1; i < entries; ++i) {
            const bool rest = i % 7 == 0;
            file.texts.notes += rest ? QStringLiteral("00;") : QString::number(36 + i % 60) + u';';
            file.texts.durations += QStringLiteral("0,75;");
            file.texts.attributes += rest ? QStringLiteral("p;") : QStringLiteral("n;");
        }
        editor.open(file);
        composition.activeNote = 60;
        composition.step.active = true;
        composition.step.index = static_cast<std::int16_t>(entries / 2);
    }

    /// What the window reads after each change.
    void refresh() const {
        benchmark::DoNotOptimize(composition.melody.lastNames(40));
        benchmark::DoNotOptimize(QString::number(composition.melody.EntryCount()));
        benchmark::DoNotOptimize(composition.range.endBox());
    }

    Composition composition;
    MelodyEditor editor{composition};
};

/// The staff of a composition, laid out as far as it is seen.
struct Engraving {
    Engraving(const Melody& melody, const score::Notation& notation)
        : melody_(melody), seen_(melody.changes().revision()) {
        layout_.setSource({[&melody] { return int{melody.EntryCount()}; },
                           [&melody](int i) {
                               const MelodyEntry& entry = melody.entry(i);
                               return staff_entry::Entry{entry.noteNumber(), entry.quarters()};
                           },
                           notation});
        layout_.layOutAll();
    }

    /// What the window asks for after a change.
    void refresh() {
        if (const auto first = melody_.changes().firstSince(seen_)) {
            layout_.changedFrom(*first);
            benchmark::DoNotOptimize(layout_.systemOf(*first));
        }
        seen_ = melody_.changes().revision();
    }

private:
    const Melody& melody_;
    notation::ScoreLayout layout_;
    ChangeLog::Revision seen_;
};

void append(benchmark::State& state) {
    Bench bench(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        bench.editor.insertNote();
        bench.refresh();
        bench.editor.undo();
    }
}

void deleteLast(benchmark::State& state) {
    Bench bench(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        bench.editor.deleteLast();
        bench.refresh();
        bench.editor.undo();
    }
}

void modifyInTheMiddle(benchmark::State& state) {
    Bench bench(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        bench.editor.modify({"2/4", "3", "t"});
        bench.refresh();
        bench.editor.undo();
    }
}

void insertInTheMiddle(benchmark::State& state) {
    Bench bench(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        bench.editor.insertAfter({"1/4", "1", "n"});
        bench.refresh();
        bench.editor.undo();
    }
}

/// In 6/8 the dotted eighth notes of the melody are divided and tied.
constexpr score::Notation kInBars{score::Metre{6, 8}, {-3, false}};

void engraveWhatWasAppended(benchmark::State& state, const score::Notation& notation) {
    Bench bench(state.range(0));
    Engraving engraving(bench.composition.melody, notation);
    for ([[maybe_unused]] auto _ : state) {
        bench.editor.insertNote();
        engraving.refresh();
        bench.editor.undo();
        engraving.refresh();
    }
}

void engraveWhatWasInsertedInTheMiddle(benchmark::State& state, const score::Notation& notation) {
    Bench bench(state.range(0));
    Engraving engraving(bench.composition.melody, notation);
    for ([[maybe_unused]] auto _ : state) {
        bench.editor.insertAfter({"1/4", "1", "n"});
        engraving.refresh();
        bench.editor.undo();
        engraving.refresh();
    }
}

void step(benchmark::State& state) {
    Bench bench(state.range(0));
    Composition& composition = bench.composition;
    for ([[maybe_unused]] auto _ : state) {
        composition.step.step(StepMode::Direction::Forward, composition.range);
        benchmark::DoNotOptimize(StepEntry::of(composition.melody.entry(composition.step.index)));
    }
}

void refresh(benchmark::State& state) {
    const Bench bench(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        bench.refresh();
}

void makeTheTexts(benchmark::State& state) {
    const Bench bench(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(bench.composition.melody.texts());
}

void atAllLengths(benchmark::internal::Benchmark* benchmark) {
    for (const int entries : {100, 1000, 10000, 32767})
        benchmark->Arg(entries);
}

BENCHMARK(append)->Apply(atAllLengths);
BENCHMARK(deleteLast)->Apply(atAllLengths);
BENCHMARK(modifyInTheMiddle)->Apply(atAllLengths);
BENCHMARK(insertInTheMiddle)->Apply(atAllLengths);
BENCHMARK_CAPTURE(engraveWhatWasAppended, barless, score::kWithoutBars)->Apply(atAllLengths);
BENCHMARK_CAPTURE(engraveWhatWasAppended, inBars, kInBars)->Apply(atAllLengths);
BENCHMARK_CAPTURE(engraveWhatWasInsertedInTheMiddle, barless, score::kWithoutBars)
    ->Apply(atAllLengths);
BENCHMARK_CAPTURE(engraveWhatWasInsertedInTheMiddle, inBars, kInBars)->Apply(atAllLengths);
BENCHMARK(step)->Apply(atAllLengths);
BENCHMARK(refresh)->Apply(atAllLengths);
BENCHMARK(makeTheTexts)->Apply(atAllLengths);

}  // namespace

BENCHMARK_MAIN();
