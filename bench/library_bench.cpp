// The melody library: reading, checking and writing the longest melody, and listing a full folder.

#include "composer/library/library_list.h"
#include "composer/library/melody_file.h"
#include "platform/desktop/desktop_folders.h"

#include <QCollator>
#include <QCoreApplication>
#include <QLocale>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdint>

namespace {

/// The melody folder of a user whose program folder is a temporary one.
struct Disk {
    QTemporaryDir home;
    DesktopFolders folders = in(home);
    QString folder = folders.programFolder() + QStringLiteral("\\Melodie\\");

    static DesktopFolders in(const QTemporaryDir& home) {
        qputenv("CANTAVISTA_HOME", home.path().toUtf8());
        return {};
    }
};

QByteArray melodyOf(std::int64_t entries) {
    MelodyFile file;
    for (std::int64_t i = 0; i < entries; ++i) {
        const bool rest = i % 7 == 0;
        file.texts.notes += rest ? QStringLiteral("00;") : QString::number(36 + i % 60) + u';';
        file.texts.durations +=
            i % 3 == 0 ? QStringLiteral("0,333333333333333;") : QStringLiteral("0,75;");
        file.texts.attributes += rest ? QStringLiteral("p;") : QStringLiteral("n;");
    }
    file.bookmarks = QStringList{Bookmarks::wholeMelody(static_cast<int>(entries))};
    return melody_file::write(file).bytes;
}

/// From the disk into a composition that holds another melody, and what that gives up.
void load(benchmark::State& state) {
    Disk disk;
    const QString path = disk.folder + QStringLiteral("lunga.mel");
    disk.folders.writeFile(path, melodyOf(state.range(0)));
    Composition composition;
    for ([[maybe_unused]] auto _ : state) {
        MelodyEditor editor(composition);
        const auto content = disk.folders.readFile(path, melody_file::kLargestFile + 1);
        editor.open(*melody_file::read(content.bytes));
    }
    if (composition.melody.EntryCount() != state.range(0))
        state.SkipWithError("the melody was not loaded");
}

/// From a composition to the disk, the wait for the disk included.
void save(benchmark::State& state) {
    Disk disk;
    const QString path = disk.folder + QStringLiteral("lunga.mel");
    Composition composition;
    MelodyEditor editor(composition);
    editor.open(*melody_file::read(melodyOf(state.range(0))));
    for ([[maybe_unused]] auto _ : state) {
        MelodyFile file;
        file.texts = composition.melody.texts();
        file.bookmarks = composition.bookmarks.items();
        if (disk.folders.writeFile(path, melody_file::write(file).bytes).failed())
            state.SkipWithError("the melody was not saved");
    }
}

void listFolder(benchmark::State& state) {
    Disk disk;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const QString name = QStringLiteral("Melodia %1.mel").arg(i * 7919 % state.range(0));
        disk.folders.writeFile(disk.folder + name, "60;\r\n1;\r\nn;\r\n");
    }
    const QCollator collator(QLocale(QLocale::Italian, QLocale::Italy));
    std::size_t entries = 0;
    for ([[maybe_unused]] auto _ : state) {
        entries =
            library_list::read(disk.folders, disk.folder, library_list::Parent::Hidden, collator)
                .size();
    }
    // The example melodies' folder may stand there as well.
    if (static_cast<std::int64_t>(entries) < state.range(0))
        state.SkipWithError("the folder was not listed");
}

BENCHMARK(load)->Arg(1000)->Arg(Melody::kMaxEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Arg(1000)->Arg(Melody::kMaxEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(listFolder)->Arg(100)->Arg(2000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
