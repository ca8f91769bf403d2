#include "platform/linux/linux_midi_out.h"

#include "audio/audio_engine.h"
#include "platform/linux/audio_stream.h"

#include <gtest/gtest.h>

#include <memory>

TEST(LinuxMidiOut, WithoutSoundEveryOperationAnswersCleanly) {
    testing::internal::CaptureStderr();
    {
        const auto engine = std::make_shared<AudioEngine>(44100);
        AudioStream stream(engine, {"", {"no such driver"}});
        LinuxMidiOut out(*engine, stream);
        for (int attempt = 0; attempt < 2; ++attempt) {
            const auto result = out.open(kMidiMapper);
            EXPECT_EQ(result.code, toInt(SoundCode::NoAudioDevice));
            EXPECT_EQ(result.handle, 0u);
        }
        EXPECT_EQ(out.send(0, 0x643C90), 0);
        EXPECT_EQ(out.reset(0), 0);
        EXPECT_EQ(out.send(77, 0x643C90), toInt(SoundCode::InvalidHandle));
        EXPECT_EQ(out.reset(77), toInt(SoundCode::InvalidHandle));
        EXPECT_EQ(out.close(77), toInt(SoundCode::InvalidHandle));

        EXPECT_EQ(out.deviceName(kMidiMapper), "Sintetizzatore interno");
        const int count = out.deviceCount();
        for (const int unknown : {count, count + 99, -2}) {
            EXPECT_FALSE(out.deviceName(unknown));
            EXPECT_EQ(out.open(unknown).code, toInt(SoundCode::UnknownDevice));
        }
        for (int device = 0; device < count; ++device)
            EXPECT_FALSE(out.deviceName(device)->isEmpty());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
