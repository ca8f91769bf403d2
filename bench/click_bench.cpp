// What is heard of the percussion clicks: how evenly their sounds follow the messages.
//
//   click_bench [clicks, 200]
//
// Sends clicks of the built-in synthesizer at irregular intervals and records what the default
// output plays. A recording has a clock and a start of its own, so a straight line is fitted to the
// onsets over the message times; what is left is the unevenness that a listener could hear.

#include "figures.h"
#include "heard.h"
#include "platform/linux/linux_sound.h"
#include "platform/midi_out.h"
#include "silent_machine.h"

#include <QCoreApplication>
#include <QProcess>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <random>

namespace {

using figures::Clock;
using heard::kRate;
using heard::Line;
using heard::Pair;

constexpr std::uint32_t kClick = 0x7F4C99;  ///< channel 10, note 76, velocity 127
constexpr int kWarmUpClicks = 30;           ///< the output learns the stream's pace in these
constexpr double kShortest = 0.1;
constexpr double kLongest = 0.14;
constexpr double kSilenceBefore = 0.03;  ///< the click before is silenced this long before the next
constexpr double kSearch = 0.04;         ///< an onset may be this far from where it is expected

double nowSeconds() {
    return figures::seconds(Clock::now().time_since_epoch());
}

/// Records the monitor of PulseAudio's default output.
class Recorder {
public:
    bool start() {
        process_.start(QStringLiteral("parec"),
                       {QStringLiteral("--raw"), QStringLiteral("--format=s16le"),
                        QStringLiteral("--rate=44100"), QStringLiteral("--channels=1"),
                        QStringLiteral("--latency-msec=10"), QStringLiteral("-d"),
                        QStringLiteral("@DEFAULT_MONITOR@")});
        constexpr double kPatience = 4;
        const double begun = nowSeconds();
        while (frames_.empty() && process_.state() != QProcess::NotRunning &&
               nowSeconds() - begun < kPatience)
            readUntil(nowSeconds() + 0.1);
        return !frames_.empty();
    }

    /// Takes in what is recorded until the given instant.
    void readUntil(double instant) {
        for (double left = instant - nowSeconds(); left > 0; left = instant - nowSeconds()) {
            if (process_.state() == QProcess::NotRunning)
                return;
            process_.waitForReadyRead(static_cast<int>(std::ceil(left * 1000)));
            take();
        }
    }

    void stop() {
        process_.terminate();
        process_.waitForFinished();
        take();
    }

    const std::vector<std::int16_t>& frames() const { return frames_; }

    /// The instant of the recording's first frame, where a second of this clock takes `pace`
    /// seconds of the recording: the latest that every arrival allows, as frames arrive after they
    /// were played, by at most the recorder's buffer.
    double origin(double pace) const {
        double earliest = std::numeric_limits<double>::max();
        for (const Arrival& arrival : arrivals_)
            earliest = std::min(earliest, arrival.when - arrival.recorded / pace);
        return earliest;
    }

private:
    struct Arrival {
        double when;
        double recorded;  ///< seconds of the recording so far
    };

    void take() {
        const QByteArray bytes = process_.readAllStandardOutput();
        if (bytes.isEmpty())
            return;
        const auto count = static_cast<std::size_t>(bytes.size()) / sizeof(std::int16_t);
        const std::size_t before = frames_.size();
        frames_.resize(before + count);
        std::memcpy(frames_.data() + before, bytes.constData(), count * sizeof(std::int16_t));
        arrivals_.push_back({nowSeconds(), static_cast<double>(frames_.size()) / kRate});
    }

    QProcess process_;
    std::vector<std::int16_t> frames_;
    std::vector<Arrival> arrivals_;
};

/// Sends the clicks; answers with the instants of their messages.
std::vector<double> sendClicks(MidiOut& midiOut, MidiHandle handle, int count, Recorder& recorder) {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> interval(kShortest, kLongest);
    std::vector<double> sent;
    double next = nowSeconds() + kLongest;
    for (int i = 0; i < count; ++i) {
        recorder.readUntil(next - kSilenceBefore);
        midiOut.reset(handle);
        recorder.readUntil(next);
        sent.push_back(nowSeconds());
        midiOut.send(handle, kClick);
        next += interval(engine);
    }
    recorder.readUntil(nowSeconds() + 1);
    return sent;
}

std::optional<double> nearest(const std::vector<double>& sorted, double value) {
    const auto after = std::lower_bound(sorted.begin(), sorted.end(), value);
    double best = after == sorted.end() ? std::numeric_limits<double>::max() : *after;
    if (after != sorted.begin() && value - *(after - 1) < std::abs(best - value))
        best = *(after - 1);
    return std::abs(best - value) < kSearch ? std::optional(best) : std::nullopt;
}

/// Each message with the onset that follows it; a message that was not heard is left out.
std::vector<Pair> matched(const std::vector<double>& sent, const std::vector<double>& heard) {
    std::vector<Pair> pairs;
    if (heard.empty())
        return pairs;
    for (const double message : sent)
        if (const auto onset = nearest(heard, heard.front() + message - sent.front()))
            pairs.push_back({message - sent.front(), *onset});
    return pairs;
}

void report(const std::vector<Pair>& pairs, const std::vector<double>& sent,
            const Recorder& recorder) {
    const auto settled =
        pairs.begin() + std::min<std::ptrdiff_t>(kWarmUpClicks, std::ssize(pairs) - 2);
    const std::vector<Pair> used(settled, pairs.end());
    const Line line = heard::fitted(used);
    const auto residual = [&](const Pair& pair) { return pair.heard - line.at(pair.due); };
    double squares = 0, largest = 0, largestAtFirst = 0;
    for (const Pair& pair : used) {
        squares += residual(pair) * residual(pair);
        largest = std::max(largest, std::abs(residual(pair)));
    }
    for (auto pair = pairs.begin(); pair != settled; ++pair)
        largestAtFirst = std::max(largestAtFirst, std::abs(residual(*pair)));
    const double deviation = std::sqrt(squares / static_cast<double>(used.size() - 2));
    std::printf("clicks heard %zu of %zu; fitted to the last %zu\n", pairs.size(), sent.size(),
                used.size());
    std::printf("unevenness: standard deviation %.3f ms, largest %.3f ms\n", 1e3 * deviation,
                1e3 * largest);
    std::printf("the first %td, while the output learns the pace: largest %.3f ms\n",
                settled - pairs.begin(), 1e3 * largestAtFirst);
    std::printf("recorder's clock against this one: %+.1f ppm\n", 1e6 * (line.slope - 1));
    const double delay = recorder.origin(line.slope) + line.offset / line.slope - sent.front();
    std::printf(
        "constant delay: at most %.1f ms from message to output (by the earliest arrivals of "
        "the recording, so the recorder's own buffer of about 10 ms is contained)\n",
        1e3 * delay);
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const int clicks = std::max(argc > 1 ? std::atoi(argv[1]) : 200, 3);

    Recorder recorder;
    if (!recorder.start()) {
        std::puts("no PulseAudio here: nothing can be recorded");
        return 0;
    }
    NoFolders folders;
    LinuxSound sound(folders);
    MidiOut& midiOut = sound.midiOut();
    const MidiOpenResult opened = midiOut.open(kMidiMapper);
    if (opened.handle == 0) {
        std::printf("no sound: %s\n", qPrintable(midiOut.errorText(opened.code)));
        return 0;
    }
    const std::vector<double> sent =
        sendClicks(midiOut, opened.handle, clicks + kWarmUpClicks, recorder);
    recorder.stop();
    const std::vector<Pair> pairs = matched(sent, heard::onsets(recorder.frames()));
    if (pairs.size() < sent.size() / 2) {
        std::printf("only %zu of %zu clicks were recorded\n", pairs.size(), sent.size());
        return 0;
    }
    report(pairs, sent, recorder);
    return 0;
}
