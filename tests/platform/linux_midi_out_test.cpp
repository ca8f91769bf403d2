#include "platform/linux/linux_midi_out.h"

#include "platform/linux/audio_engine.h"
#include "platform/linux/audio_stream.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A machine on which no audio driver opens.
struct SilentMachine {
    std::shared_ptr<AudioEngine> engine = std::make_shared<AudioEngine>(44100);
    AudioStream stream{engine, {"", {"no such driver"}}};
    LinuxMidiOut out{*engine, stream};
};

}  // namespace

TEST(LinuxMidiOut, WithoutSoundEveryOperationAnswersCleanly) {
    testing::internal::CaptureStderr();
    {
        SilentMachine machine;
        LinuxMidiOut& out = machine.out;
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

        EXPECT_EQ(out.deviceName(kMidiMapper), QStringLiteral("Sintetizzatore interno"));
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

TEST(LinuxMidiOut, EveryCodeHasAShortTextOfItsOwn) {
    SilentMachine machine;
    const QString unknown = machine.out.errorText(12345);
    QStringList texts;
    for (int code = 0; code < 30; ++code) {
        const QString text = machine.out.errorText(code);
        EXPECT_FALSE(text.isEmpty());
        EXPECT_LE(text.size(), 127);
        EXPECT_FALSE(texts.contains(text)) << code;
        texts << text;
    }
    EXPECT_FALSE(unknown.isEmpty());
}
