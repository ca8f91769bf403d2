// Melodies as files of notation programs: writing and reading the longest one, and refusing what is
// hostile; sheet music of 1,000 entries. The largest memory that the process held is printed at the
// end.

#include "composer/exchange/braille_writer.h"
#include "composer/exchange/melody_builder.h"
#include "composer/exchange/musicxml_reader.h"
#include "composer/exchange/musicxml_writer.h"
#include "composer/exchange/score_heading.h"
#include "composer/exchange/zip_archive.h"
#include "composer/melody/composition.h"
#include "composer/melody_sheet.h"
#include "composer/score/bar_view.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <sys/resource.h>

namespace {

const ScoreHeading kHeading{QStringLiteral("lunga"), 60, 0};

/// Rests, triplets, dotted and tied values, which no bar of 4/4 divides evenly.
Melody melodyOf(std::int64_t entries) {
    MelodyDelta delta;
    for (std::int64_t i = 0; i < entries; ++i) {
        const bool rest = i % 7 == 0;
        const double quarters = i % 9 < 3 ? 1 / 3.0 : i % 5 == 0 ? 1.25 : 0.75;
        delta.others.push_back(
            MelodyEntry::make(static_cast<pitch::NoteNumber>(rest ? 0 : 36 + i * 7 % 60), quarters,
                              rest ? QStringLiteral("p") : QStringLiteral("s"), u','));
    }
    Melody melody;
    melody.exchange(delta);
    return melody;
}

void writeMusicXml(benchmark::State& state) {
    const Melody melody = melodyOf(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(musicxml::write(score::barsOf(melody, {}), kHeading));
}

void writeCompressed(benchmark::State& state) {
    const Melody melody = melodyOf(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(musicxml::writeCompressed(score::barsOf(melody, {}), kHeading));
}

void writeBraille(benchmark::State& state) {
    const Melody melody = melodyOf(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(braille::write(score::barsOf(melody, {}), kHeading));
}

void writePdf(benchmark::State& state, Paper paper) {
    Composition composition;
    composition.melody = melodyOf(state.range(0));
    const MelodySheet sheet = sheetOf(composition, QStringLiteral("lunga"), {});
    qsizetype bytes = 0;
    for ([[maybe_unused]] auto _ : state)
        bytes = sheet_painter::pdf(sheet, paper).size();
    state.counters["kB"] = static_cast<double>(bytes) / 1000;
}

void readMusicXml(benchmark::State& state) {
    // One value each, so that the longest melody comes back as long.
    MelodyDelta delta;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        delta.others.push_back(MelodyEntry::make(static_cast<pitch::NoteNumber>(36 + i * 7 % 60),
                                                 0.75, QStringLiteral("n"), u','));
    Melody melody;
    melody.exchange(delta);
    const QByteArray bytes = musicxml::write(score::barsOf(melody, {}), kHeading);
    for ([[maybe_unused]] auto _ : state) {
        imported::Score score = musicxml::read(bytes);
        if (static_cast<std::int64_t>(imported::entriesOf(score, u',').size()) != state.range(0))
            state.SkipWithError("the melody did not come back");
    }
}

/// Files of the largest size that is read, each of one kind of trouble.
void refuseHostile(benchmark::State& state) {
    const char* const kinds[] = {
        "<a>",
        "<a b='1' c='2' d='3' e='4' f='5' g='6' h='7' i='8' j='9' k='0' l='1' m='2' n='3' o='4'/>",
        "<measure/>", "<measure number='1'><note><rest/><duration>1</duration></note></measure>",
        "<measure number='1'><note><chord/></note></measure>"};
    const QByteArray part = kinds[state.range(0)];
    QByteArray bytes = "<score-partwise><part>";
    bytes += part.repeated((musicxml::kLargestFile - 100) / part.size());
    bytes += "</part></score-partwise>";
    for ([[maybe_unused]] auto _ : state) {
        imported::Score score = musicxml::read(bytes);
        benchmark::DoNotOptimize(imported::entriesOf(score, u','));
        if (score.faults.isEmpty() && state.range(0) != 1)
            state.SkipWithError("the file was not refused");
    }
}

BENCHMARK(writeMusicXml)->Arg(Melody::kMaxEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(writeCompressed)->Arg(Melody::kMaxEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(writeBraille)->Arg(Melody::kMaxEntries)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writePdf, A4, Paper::A4)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writePdf, Letter, Paper::Letter)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(readMusicXml)->Arg(Melody::kMaxEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(refuseHostile)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("largest memory: %ld MB\n", usage.ru_maxrss / 1024);
}
