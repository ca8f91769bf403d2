// The wave file of the real synthesizer, against what the mixer plays.

#include "audio/sound_file_bytes.h"
#include "audio/sound_mixer.h"
#include "composer/export/melody_score.h"
#include "composer/export/wave_file_writer.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/linux/soundfont.h"
#include "platform/sound.h"
#include "platform/wave_renderer.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

/// Random notes, which in the end are ended or go on.
MelodyScore someNotes(bool ended) {
    std::mt19937 random(4);
    MelodyScore score;
    for (std::int64_t ms = 0; ms < 1500; ms += random() % 60) {
        const auto draw = static_cast<std::uint32_t>(random());
        const std::uint32_t note = 0x90 | (40 + draw % 50) << 8 | draw / 64 % 128 << 16;
        score.messages.push_back({ms, draw >> 29 ? note : 0xC0 | draw % 40 << 8});
    }
    for (std::uint32_t note = 40; ended && note < 90; ++note)
        score.messages.push_back({1600, 0x90 | note << 8});
    score.endMs = 1930;
    return score;
}

/// The same, block by block: each message at the beginning of the block that is closest to it, and
/// the end when nothing sounds any more, or ten seconds late.
std::vector<int> played(const MelodyScore& score) {
    SoundMixer mixer(44100);
    mixer.setSynthesizer(Synthesizer::load(findSoundfont(), 44100));
    std::vector<int> samples;
    std::size_t sent = 0;
    for (std::int64_t block = 0, end = score.endMs * 441 / 10;
         block * 64 < end || (mixer.silentFrames() == 0 && block * 64 < end + 441'000); ++block) {
        for (; sent < score.messages.size() &&
               (score.messages[sent].ms * 441 / 10 + 32) / 64 <= block;
             ++sent) {
            SoundEvent event;
            event.message = score.messages[sent].message;
            mixer.apply(event);
        }
        SoundMixer::Side left;
        SoundMixer::Side right;
        mixer.render(left, right);
        for (std::size_t i = 0; i < left.size(); ++i)
            for (const float sample : {left[i], right[i]})
                samples.push_back(static_cast<int>(std::lround(sample * 32767)));
    }
    return samples;
}

}  // namespace

TEST(WaveFile, HoldsWhatTheMixerPlays) {
    const QTemporaryDir folder;
    DesktopFolders folders(DesktopFolders::ProgramFolder::Unused);
    const std::unique_ptr<Sound> sound = openSound(folders);
    QFile file(folder.filePath("suono.wav"));
    for (const bool ended : {true, false}) {
        const auto outcome = wave_file::write(*sound->waveRenderer(), someNotes(ended), folders,
                                              file.fileName(), [](double) { return true; });
        ASSERT_EQ(outcome.result, wave_file::Result::Written);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray written = file.readAll();
        file.close();
        const std::vector<int> expected = played(someNotes(ended));
        const auto size = static_cast<qsizetype>(2 * expected.size());
        ASSERT_EQ(written.size(), 44 + size);
        EXPECT_EQ(written.first(44), bytes::wave(1, 2, 16, QByteArray(size, 0), 44100).first(44));
        int most = 0;
        for (std::size_t i = 0; i < expected.size(); ++i)
            most = std::max(most, std::abs(expected[i] - qFromLittleEndian<std::int16_t>(
                                                             written.constData() + 44 + 2 * i)));
        EXPECT_LE(most, 1);
        EXPECT_GT(*std::max_element(expected.begin(), expected.end()), 1000);
    }
}
