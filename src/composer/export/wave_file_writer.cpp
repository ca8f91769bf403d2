#include "composer/export/wave_file_writer.h"

#include "composer/export/melody_score.h"
#include "platform/wave_renderer.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace wave_file {
namespace {

constexpr std::uint32_t kPcm = 1;
constexpr std::uint32_t kChannels = 2;
constexpr std::uint32_t kSampleBytes = 2;
constexpr std::uint32_t kFrameBytes = kChannels * kSampleBytes;
constexpr std::uint32_t kHeaderBytes = 44;
/// The sizes in the header leave out the first 8 of its bytes.
constexpr std::uint32_t kUncountedBytes = 8;
constexpr std::int64_t kMsPerSecond = 1000;

constexpr std::int64_t framesOf(std::int64_t ms) {
    return ms * WaveRenderer::kFramesPerSecond / kMsPerSecond;
}

bool fits(const MelodyScore& score) {
    constexpr std::uint32_t kMostBytes = std::numeric_limits<std::uint32_t>::max() - kHeaderBytes;
    return framesOf(score.endMs + WaveRenderer::kLongestTailMs) < kMostBytes / kFrameBytes;
}

void append(QByteArray& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> 8 * i);
}

QByteArray headerOf(std::uint32_t dataBytes) {
    constexpr std::uint32_t kFormatBytes = 16;
    QByteArray header("RIFF");
    append(header, kHeaderBytes - kUncountedBytes + dataBytes, 4);
    header += "WAVEfmt ";
    append(header, kFormatBytes, 4);
    append(header, kPcm, 2);
    append(header, kChannels, 2);
    append(header, WaveRenderer::kFramesPerSecond, 4);
    append(header, WaveRenderer::kFramesPerSecond * kFrameBytes, 4);
    append(header, kFrameBytes, 2);
    append(header, 8 * kSampleBytes, 2);
    header += "data";
    append(header, dataBytes, 4);
    return header;
}

QByteArray bytesOf(const WaveRendering::Frames& frames) {
    const auto samples = static_cast<qsizetype>(frames.size());
    QByteArray bytes(samples * qsizetype{kSampleBytes}, Qt::Uninitialized);
    qToLittleEndian<std::int16_t>(frames.data(), samples, bytes.data());
    return bytes;
}

/// The length is known only when the reverberation has decayed, so the header is written twice.
Outcome render(WaveRendering& rendering, FileDraft& file, std::int64_t length,
               const Progress& progress) {
    FileError error = file.append(headerOf(0));
    std::uint32_t dataBytes = 0;
    while (!error.failed()) {
        const WaveRendering::Frames& frames = rendering.next();
        if (frames.empty())
            break;
        error = file.append(bytesOf(frames));
        dataBytes += static_cast<std::uint32_t>(frames.size() * kSampleBytes);
        const std::uint32_t written = dataBytes / kFrameBytes;
        const double share =
            static_cast<double>(written) / static_cast<double>(std::max<std::int64_t>(length, 1));
        if (!progress(std::min(share, 1.0)))
            return {Result::Interrupted, {}};
    }
    if (!error.failed())
        error = file.amend(0, headerOf(dataBytes));
    if (!error.failed())
        error = file.finish();
    return {error.failed() ? Result::Failed : Result::Written, error};
}

}  // namespace

Outcome write(WaveRenderer& renderer, const MelodyScore& score, Folders& folders,
              const QString& path, const Progress& progress) {
    if (!fits(score))
        return {Result::TooLong, {}};
    const auto rendering = renderer.start(score.messages, score.endMs);
    if (!rendering)
        return {renderer.instrumentsDamaged() ? Result::DamagedInstruments : Result::NoInstruments,
                {}};
    const Folders::Draft draft = folders.draftFile(path);
    if (draft.error.failed())
        return {Result::Failed, draft.error};
    return render(*rendering, *draft.file, framesOf(score.endMs), progress);
}

}  // namespace wave_file
