// How fast a melody of three minutes is rendered to a wave file, beside the command of the
// synthesizer's library rendering the exported MIDI file with the same instruments. Both are whole
// processes, run in turn.
//
//   render_bench [runs, 7]

#include "figures.h"
#include "platform/linux/soundfont.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

constexpr int kMinutes = 3;
constexpr int kTempo = 120;
constexpr int kEntries = kMinutes * kTempo * 2;  // eighth notes

/// Every articulation and some rests, on the church organ, whose notes ring on.
QByteArray melody() {
    constexpr const char* kLetters = "nsntanpn";
    QByteArray notes;
    QByteArray durations;
    QByteArray attributes;
    for (int i = 0; i < kEntries; ++i) {
        const char letter = kLetters[i % 8];
        notes += letter == 'p' ? QByteArray("00") : QByteArray::number(48 + i * 7 % 30);
        notes += ';';
        durations += "0,5;";
        attributes += letter;
        attributes += ';';
    }
    return notes + "\r\n" + durations + "\r\n" + attributes + "\r\n " + QByteArray::number(kTempo) +
           " \r\n 19 \r\n";
}

double secondsOf(const QString& program, const QStringList& arguments) {
    const auto start = figures::Clock::now();
    if (QProcess::execute(program, arguments) != 0) {
        std::fprintf(stderr, "%s did not work.\n", qPrintable(program));
        std::exit(EXIT_FAILURE);
    }
    return figures::seconds(figures::Clock::now() - start);
}

void report(const char* what, const std::vector<double>& times, const QString& file) {
    figures::print(what, times, 1, "s");
    std::printf("%-44s %.0f times real time, %.1f MB\n", "",
                60.0 * kMinutes / figures::quantile(times, 0.5),
                static_cast<double>(QFileInfo(file).size()) * 1e-6);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::atoi(argv[1]) : 7;
    const QTemporaryDir folder;
    const QString source = folder.filePath("melodia.mel");
    const QString midi = folder.filePath("melodia.mid");
    const QString own = folder.filePath("melodia.wav");
    const QString other = folder.filePath("other.wav");
    QFile file(source);
    if (!file.open(QIODevice::WriteOnly) || file.write(melody()) < 0)
        return EXIT_FAILURE;
    file.close();

    const QString program = QCoreApplication::applicationDirPath() + "/cantavista";
    secondsOf(program, {"--export-midi", source, "-o", midi});
    std::vector<double> ownTimes;
    std::vector<double> otherTimes;
    for (int run = 0; run < runs; ++run) {
        ownTimes.push_back(secondsOf(program, {"--render", source, "-o", own}));
        otherTimes.push_back(
            secondsOf("fluidsynth", {"-q", "-n", "-i", "-r", "44100", "-F", other,
                                     QString::fromStdString(findSoundfont()), midi}));
    }
    report("cantavista --render", ownTimes, own);
    report("fluidsynth -F, as it comes", otherTimes, other);
    return EXIT_SUCCESS;
}
