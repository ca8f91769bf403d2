// What is heard of the program on a busy machine: how evenly its sounds follow the instants of its
// own rules while 0, 2 and 4 busy loops at ordinary priority compete for the processors.
//
//   beat_bench [--quick] [--loops N] [metronome] [melody] [ear] [held] [first] [port]
//
//   metronome   clicks at 120 a minute; beside them, on a sink of its own, the metronome of the
//               distribution that computes its clicks in the stream (gtick), if it is installed
//   melody      the note-ons of a melody
//   ear         reference and note of ear training
//   held        the gaps in a note of the organ that is held
//   first       the first clicks, right after the output has opened
//   port        the metronome's note-ons as a JACK client receives them
//
// The sounds are recorded from null sinks of PulseAudio. Each program that sounds is a process of
// its own with the real parts and a real window. Its waits are worked out in single precision of
// the seconds since midnight; it runs in a time zone where midnight was just now, so that their
// grain (8 ms in the evening) is below 0.01 ms and the instants of the rule make an even grid.

#include "beat_player.h"
#include "busy_cores.h"
#include "figures.h"
#include "heard.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <ctime>
#include <jack/jack.h>
#include <jack/midiport.h>
#include <numeric>
#include <optional>
#include <thread>

namespace {

using namespace std::chrono_literals;
using beat::kPeriod;
using beat::kPortName;

constexpr double kOfReferenceAndNote = 0.4;  ///< less than from the one to the other
const auto kOwnSink = QStringLiteral("cantavista_bench");
const auto kPeerSink = QStringLiteral("cantavista_bench_peer");

/// A child process that is ended with this object.
class Child : public QProcess {
public:
    Child() { setProcessChannelMode(QProcess::ForwardedErrorChannel); }
    ~Child() override { stop(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void set(const char* name, const QString& value) {
        QProcessEnvironment environment = processEnvironment().isEmpty()
                                              ? QProcessEnvironment::systemEnvironment()
                                              : processEnvironment();
        environment.insert(QLatin1String(name), value);
        setProcessEnvironment(environment);
    }

    void stop() {
        if (state() == NotRunning)
            return;
        terminate();
        if (!waitForFinished(3000))
            kill();
        waitForFinished();
    }
};

std::optional<QString> answerOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

bool installed(const char* program) {
    return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
}

/// A null sink of PulseAudio and what was played to it.
class RecordedSink {
public:
    RecordedSink(const QTemporaryDir& folder, const QString& name)
        : file_(folder.filePath(name + QLatin1String(".raw"))),
          module_(answerOf(QStringLiteral("pactl"),
                           {QStringLiteral("load-module"), QStringLiteral("module-null-sink"),
                            QStringLiteral("sink_name=") + name, QStringLiteral("rate=44100"),
                            QStringLiteral("norewinds=1")})) {
        if (!module_)
            return;
        QFile::remove(file_);
        recorder_.start(QStringLiteral("parec"),
                        {QStringLiteral("--raw"), QStringLiteral("--format=s16le"),
                         QStringLiteral("--rate=44100"), QStringLiteral("--channels=1"),
                         QStringLiteral("-d"), name + QStringLiteral(".monitor"), file_});
        // It records once the first frames have reached the file.
        for (int tries = 0; tries < 100 && QFile(file_).size() == 0; ++tries)
            std::this_thread::sleep_for(100ms);
    }
    ~RecordedSink() {
        recorder_.stop();
        if (module_)
            answerOf(QStringLiteral("pactl"), {QStringLiteral("unload-module"), *module_});
    }
    RecordedSink(const RecordedSink&) = delete;
    RecordedSink& operator=(const RecordedSink&) = delete;

    bool works() const { return module_ && QFile(file_).size() > 0; }

    /// Ends the recording.
    std::vector<std::int16_t> frames() {
        recorder_.stop();
        QFile file(file_);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        std::vector<std::int16_t> frames(static_cast<std::size_t>(file.size()) /
                                         sizeof(std::int16_t));
        file.read(reinterpret_cast<char*>(frames.data()),
                  static_cast<qint64>(frames.size() * sizeof(std::int16_t)));
        return frames;
    }

private:
    QString file_;
    std::optional<QString> module_;
    Child recorder_;
};

/// A JACK client with a MIDI input that keeps when note-ons came.
class JackReceiver {
public:
    JackReceiver() : client_(jack_client_open(kPortName, JackNoStartServer, nullptr)) {
        if (!client_)
            return;
        came_.reserve(10000);
        port_ = jack_port_register(client_, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
        jack_set_process_callback(
            client_,
            [](jack_nframes_t frames, void* self) {
                static_cast<JackReceiver*>(self)->receive(frames);
                return 0;
            },
            this);
        jack_activate(client_);
    }
    ~JackReceiver() {
        if (client_)
            jack_client_close(client_);
    }
    JackReceiver(const JackReceiver&) = delete;
    JackReceiver& operator=(const JackReceiver&) = delete;

    bool works() const { return client_ != nullptr; }

    /// Ends the receiving.
    const std::vector<double>& came() {
        if (client_)
            jack_deactivate(client_);
        return came_;
    }

private:
    void receive(jack_nframes_t frames) {
        void* buffer = jack_port_get_buffer(port_, frames);
        const jack_nframes_t first = jack_last_frame_time(client_);
        const auto rate = static_cast<double>(jack_get_sample_rate(client_));
        const jack_nframes_t count = jack_midi_get_event_count(buffer);
        for (jack_nframes_t i = 0; i < count; ++i) {
            jack_midi_event_t event{};
            jack_midi_event_get(&event, buffer, i);
            const bool noteOn =
                event.size == 3 && (event.buffer[0] & 0xF0) == 0x90 && event.buffer[2] != 0;
            if (noteOn && came_.size() < came_.capacity())
                came_.push_back((first + event.time) / rate);
        }
    }

    jack_client_t* client_;
    jack_port_t* port_ = nullptr;
    std::vector<double> came_;
};

/// A time zone in which it is two minutes past midnight.
QString zoneOfMidnight() {
    const long west = static_cast<long>(std::time(nullptr) % 86400) - 120;
    char zone[40];
    std::snprintf(zone, sizeof zone, "BENCH%c%02ld:%02ld:%02ld", west < 0 ? '-' : '+',
                  std::abs(west) / 3600, std::abs(west) / 60 % 60, std::abs(west) % 60);
    return QLatin1String(zone);
}

/// Runs the program that sounds to its end; answers the instants that its rule names.
std::vector<double> sounding(const QString& what, int count) {
    Child program;
    program.set("PULSE_SINK", kOwnSink);
    program.set("TZ", zoneOfMidnight());
    program.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--play"), what, QString::number(count)});
    program.waitForFinished(120000);
    std::vector<double> due;
    for (const QByteArray& line : program.readAllStandardOutput().split('\n'))
        if (!line.isEmpty())
            due.push_back(line.toDouble());
    return due;
}

void report(const char* what, int loops, const std::vector<double>& due,
            const std::vector<double>& sounds) {
    const std::vector<heard::Pair> pairs = heard::matched(due, sounds);
    const heard::Line line = heard::fitted(pairs);
    const std::vector<double> strays = heard::strays(pairs, line);
    std::printf(
        "%-10s %d busy loops: heard %3zu of %3zu, standard deviation %7.3f ms, p99 %7.3f "
        "ms, largest %7.3f ms; pace %+.4f %%\n",
        what, loops, pairs.size(), due.size(), 1e3 * heard::deviation(strays),
        1e3 * figures::quantile(strays, 0.99), 1e3 * figures::quantile(strays, 1),
        100 * (line.slope - 1));
    std::fflush(stdout);
}

/// Gtick, beating at the same tempo on a sink of its own.
class Peer {
public:
    explicit Peer(const QTemporaryDir& folder) {
        if (!installed("gtick") || !installed("xdotool") || !qEnvironmentVariableIsSet("DISPLAY"))
            return;
        QFile settings(folder.filePath(QStringLiteral(".gtickrc")));
        if (!settings.open(QIODevice::WriteOnly))
            return;
        settings.write(
            "SampleFilename = <default>\nSoundSystem = <pulseaudio>\nSoundDevice = "
            "<default>\nSpeed = 120\n"
            "Meter = 1\nVolume = 100\n");
        settings.close();
        sink_.emplace(folder, kPeerSink);
        program_.setProcessChannelMode(QProcess::SeparateChannels);  // it complains of its settings
        program_.set("HOME", folder.path());
        program_.set("PULSE_SINK", kPeerSink);
        program_.start(QStringLiteral("gtick"), QStringList());
        const auto window = answerOf(
            QStringLiteral("xdotool"),
            {QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
             QStringLiteral("--name"), QStringLiteral("^GTick"), QStringLiteral("windowfocus"),
             QStringLiteral("--sync"), QStringLiteral("key"), QStringLiteral("ctrl+s")});
        runs_ = window.has_value() && sink_->works();
    }

    bool runs() const { return runs_; }

    /// Ends it; answers what was heard until then.
    std::vector<double> onsets() {
        std::vector<double> sounds = heard::onsets(sink_->frames(), kPeriod / 2);
        program_.stop();
        return sounds;
    }

private:
    std::optional<RecordedSink> sink_;
    Child program_;
    bool runs_ = false;
};

std::vector<double> evenGrid(double length) {
    std::vector<double> due;
    for (double instant = 0; instant < length; instant += kPeriod)
        due.push_back(instant);
    return due;
}

/// All of it at one load: the peer if there is one, and the program's part.
void hear(const QString& what, int loops, int count, double apart = 0) {
    const QTemporaryDir folder;
    RecordedSink sink(folder, kOwnSink);
    if (!sink.works()) {
        std::puts("no PulseAudio here: nothing can be recorded");
        return;
    }
    std::optional<Peer> peer;
    if (what == QLatin1String("metronome"))
        peer.emplace(folder);
    std::vector<double> due;
    std::vector<double> peerSounds;
    {
        const BusyCores busy(loops);
        due = sounding(what, count);
        if (peer && peer->runs())
            peerSounds = peer->onsets();
    }
    // Monitors lag behind by what the recorder asks for at once.
    std::this_thread::sleep_for(500ms);
    const std::vector<std::int16_t> frames = sink.frames();
    if (what == QLatin1String("held")) {
        const std::vector<double> gaps = heard::gaps(frames);
        std::printf("%-10s %d busy loops: %zu gaps in %d s, %.1f ms in all, the longest %.1f ms\n",
                    "held", loops, gaps.size(), count,
                    1e3 * std::accumulate(gaps.begin(), gaps.end(), 0.0),
                    1e3 * figures::quantile(gaps, 1));
        std::fflush(stdout);
        return;
    }
    std::vector<double> sounds = heard::onsets(frames, apart);
    // The first sound confirms the choice of the reference and is not planned.
    if (what == QLatin1String("ear") && !sounds.empty())
        sounds.erase(sounds.begin());
    report(qPrintable(what), loops, due, sounds);
    if (peer && peer->runs() && !peerSounds.empty())
        report("gtick", loops, evenGrid(peerSounds.back() - peerSounds.front() + kPeriod / 2),
               peerSounds);
}

void receive(int loops, int count) {
    JackReceiver receiver;
    if (!receiver.works()) {
        std::puts("port       no JACK here");
        return;
    }
    std::vector<double> due;
    {
        const BusyCores busy(loops);
        due = sounding(QStringLiteral("port"), count);
    }
    report("port", loops, due, receiver.came());
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc > 3 && QByteArray(argv[1]) == "--play")
        return beat::play(argc, argv);
    const QCoreApplication app(argc, argv);
    QStringList parts = QCoreApplication::arguments().mid(1);
    const bool quick = parts.removeAll(QStringLiteral("--quick")) > 0;
    std::vector<int> loads{0, 2, 4};
    if (const auto at = parts.indexOf(QStringLiteral("--loops"));
        at >= 0 && at + 1 < parts.size()) {
        loads = {parts[at + 1].toInt()};
        parts.remove(at, 2);
    }
    const bool all = parts.isEmpty();
    const auto chosen = [&](const char* part) {
        return all || parts.contains(QLatin1String(part));
    };
    for (const int loops : loads)
        if (chosen("metronome"))
            hear(QStringLiteral("metronome"), loops, quick ? 12 : 60, kPeriod / 2);
    // One load tells enough of the rest in a hurry.
    if (quick && loads.size() > 1)
        loads = {2};
    for (const int loops : loads)
        if (chosen("melody"))
            hear(QStringLiteral("melody"), loops, quick ? 40 : 200, 0.05);
    for (const int loops : loads)
        if (chosen("ear"))
            hear(QStringLiteral("ear"), loops, quick ? 3 : 10, kOfReferenceAndNote);
    for (const int loops : loads)
        if (chosen("held"))
            hear(QStringLiteral("held"), loops, quick ? 3 : 20);
    for (const int loops : loads)
        for (int start = 0; start < (quick ? 1 : 8) && chosen("first"); ++start)
            hear(QStringLiteral("first"), loops, 10, 0.05);
    for (const int loops : loads)
        if (chosen("port"))
            receive(loops, quick ? 12 : 60);
    return EXIT_SUCCESS;
}
