#include "platform/linux/linux_media.h"

#include "audio/audio_engine.h"
#include "audio/sound_file_bytes.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/linux/audio_stream.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct MediaWithoutDevice {
    MediaWithoutDevice() {
        qputenv("CANTAVISTA_DRIVE_A", disk.path().toUtf8());
        stream.wait();
    }
    ~MediaWithoutDevice() { qunsetenv("CANTAVISTA_DRIVE_A"); }
    int operator()(const char* text) { return media.command(QString::fromUtf8(text)); }

    QTemporaryDir disk;
    DesktopFolders folders{DesktopFolders::ProgramFolder::Unused};
    std::shared_ptr<AudioEngine> engine = std::make_shared<AudioEngine>(44100);
    AudioStream stream{engine, {"", {}}};
    LinuxMedia media{*engine, stream, folders};
};

}  // namespace

TEST(LinuxMedia, CommandsAnswerWithTheRightCodes) {
    MediaWithoutDevice run;
    run.folders.writeFile("A:\\il brano ALIAS 1.mid",
                          bytes::midi(0, 96, bytes::track(QByteArray::fromHex("00903C64"))));
    run.folders.writeFile("A:\\testo.mid", "testo");
    struct Step {
        const char* text;
        SoundCode code;
    };
    const Step steps[] = {
        {"", SoundCode::UnknownCommand},
        {"SING jepa", SoundCode::UnknownCommand},
        {"PLAY", SoundCode::UnknownCommand},
        {"OPEN A:\\il brano.mid", SoundCode::UnknownCommand},
        {"OPEN  ALIAS jepa", SoundCode::UnknownCommand},
        {"PLAY jepa", SoundCode::AliasNotOpen},
        {"CLOSE jepa", SoundCode::AliasNotOpen},
        {"OPEN A:\\manca.mid ALIAS jepa ", SoundCode::FileNotFound},
        {"OPEN A:\\ ALIAS jepa ", SoundCode::FileNotFound},
        {"OPEN A:\\testo.mid ALIAS jepa ", SoundCode::NotMidiFile},
        {"OPEN A:\\il brano ALIAS 1.mid ALIAS jepa ", SoundCode::Ok},
        {"OPEN A:\\il brano ALIAS 1.mid ALIAS jepa ", SoundCode::AliasInUse},
        {"PLAY altro", SoundCode::AliasNotOpen},
        {"PLAY jepa", SoundCode::Ok},
        {"PLAY jepa", SoundCode::Ok},
        {"CLOSE jepa", SoundCode::Ok},
        {"CLOSE jepa", SoundCode::AliasNotOpen},
    };
    for (const Step& step : steps) {
        const int code = run(step.text);
        EXPECT_EQ(code, toInt(step.code)) << step.text;
        EXPECT_LE(run.media.errorText(code).size(), 127);
    }
    EXPECT_FALSE(run.media.playSound("A:\\rok.wav", kSoundAsync)) << "there is no device";
}
