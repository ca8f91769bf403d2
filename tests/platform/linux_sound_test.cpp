#include "platform/linux/linux_sound.h"

#include "audio/sound_file_bytes.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/linux/sound_code.h"
#include "platform/linux/soundfont.h"
#include "platform/media.h"
#include "platform/midi_out.h"
#include "support/virtual_runtime.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

namespace {

const QByteArray kTune = bytes::midi(0, 96, bytes::track(QByteArray::fromHex("00903C64")));

/// The sound of a machine on which ALSA's output is a file that is written as fast as it goes.
struct LinuxSoundTest : testing::Test {
    LinuxSoundTest() {
        put("asound.conf", "pcm.!default { type file slave.pcm { type null } format raw file \"" +
                               output.toUtf8() + "\" }");
        for (const auto& [name, value] : {std::pair{"ALSA_CONFIG_PATH", path("asound.conf")},
                                          {"PULSE_SERVER", QStringLiteral("unix:/nowhere")},
                                          {"CANTAVISTA_DRIVE_A", path({})}})
            qputenv(name, value.toUtf8());
    }
    ~LinuxSoundTest() override { qunsetenv("CANTAVISTA_DRIVE_A"); }

    QString path(const QString& name) const { return folder.filePath(name); }

    void put(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    /// A busy machine may take longer to open than the program waits.
    static MidiOpenResult opened(Sound& sound, bool hasOutput = true) {
        MidiOpenResult result = sound.midiOut().open(kMidiMapper);
        for (int i = 0; i < 20 && hasOutput && result.code == toInt(SoundCode::NoAudioDevice); ++i)
            result = sound.midiOut().open(kMidiMapper);
        return result;
    }

    /// Whether something else than silence comes out, sooner or later.
    bool isHeard() const {
        QFile file(output);
        for (int i = 0; i < 3000; ++i, std::this_thread::sleep_for(std::chrono::milliseconds(10))) {
            const QByteArray all = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            if (all.count('\0') < all.size())
                return true;
            file.close();
        }
        return false;
    }

    QTemporaryDir folder;
    QString output = path("output");
    DesktopFolders folders{DesktopFolders::ProgramFolder::Unused};
    VirtualRuntime runtime;
};

}  // namespace

TEST_F(LinuxSoundTest, NotesTunesAndAnswersAreHeard) {
    put("brano.mid", kTune);
    put("suono.wav", bytes::wave(1, 1, 8, QByteArray(4000, '\x40')));
    for (const char* file : {"", "A:\\brano.mid", "A:\\suono.wav", "A:\\manca.wav"}) {
        const std::unique_ptr<Sound> sound = openSound(folders, &runtime);
        Media& media = sound->media();
        const MidiOpenResult result = opened(*sound);
        ASSERT_EQ(result.code, 0);
        if (!*file)
            EXPECT_EQ(sound->midiOut().send(result.handle, 0x643C90), 0);
        else if (media.command(QStringLiteral("OPEN %1 ALIAS jepa").arg(file)) == 0)
            EXPECT_EQ(media.command("PLAY jepa"), 0);
        else
            EXPECT_TRUE(media.playSound(file, 0));
        EXPECT_TRUE(isHeard()) << file;
        EXPECT_FALSE(media.playSound("A:\\manca.wav", kSoundNoDefault));
        EXPECT_EQ(sound->midiOut().reset(result.handle), 0);
        const MidiOpenResult again = sound->midiOut().reopen(result.handle);
        EXPECT_EQ(sound->midiOut().send(result.handle, 0), toInt(SoundCode::InvalidHandle));
        EXPECT_EQ(sound->midiOut().close(again.handle), 0);
    }
}

TEST_F(LinuxSoundTest, SaysWhyItIsSilentAndWhichCommandIsWrong) {
    for (const auto& [soundfont, code] : {std::pair{"asound.conf", SoundCode::SoundfontDamaged},
                                          {"manca", SoundCode::NoSoundfont}}) {
        qputenv("CANTAVISTA_SOUNDFONT", path(soundfont).toUtf8());
        const std::unique_ptr<Sound> sound = openSound(folders);
        EXPECT_EQ(opened(*sound).code, toInt(code));
        EXPECT_FALSE(sound->waveRenderer()->start({}, 0));
        EXPECT_EQ(sound->waveRenderer()->instrumentsDamaged(), code == SoundCode::SoundfontDamaged);
    }
    qunsetenv("CANTAVISTA_SOUNDFONT");
    put("il brano ALIAS 1.mid", kTune);
    qputenv("ALSA_CONFIG_PATH", path("manca").toUtf8());
    const std::unique_ptr<Sound> sound = openSound(folders, &runtime);
    int inputs = 0;
    runtime.at(runtime.now(), [&inputs] { ++inputs; });
    EXPECT_EQ(opened(*sound, false).code, toInt(SoundCode::NoAudioDevice));
    EXPECT_EQ(inputs, 1) << "what the user did in the wait";
    EXPECT_FALSE(sound->media().playSound("A:\\manca.wav", kSoundAsync)) << "there is no device";
    const std::pair<const char*, SoundCode> steps[] = {
        {"SING jepa", SoundCode::UnknownCommand},
        {"OPEN  ALIAS jepa", SoundCode::UnknownCommand},
        {"PLAY jepa", SoundCode::AliasNotOpen},
        {"OPEN A:\\ ALIAS jepa ", SoundCode::FileNotFound},
        {"OPEN A:\\asound.conf ALIAS jepa ", SoundCode::NotMidiFile},
        {"OPEN A:\\il brano ALIAS 1.mid ALIAS jepa ", SoundCode::Ok},
        {"OPEN A:\\il brano ALIAS 1.mid ALIAS jepa ", SoundCode::AliasInUse},
        {"PLAY altro", SoundCode::AliasNotOpen},
        {"PLAY jepa", SoundCode::Ok},
        {"CLOSE jepa", SoundCode::Ok},
    };
    for (const auto& [text, code] : steps)
        EXPECT_EQ(sound->media().command(QString::fromUtf8(text)), toInt(code)) << text;
    qputenv("ALSA_CONFIG_PATH", path("asound.conf").toUtf8());
    EXPECT_EQ(opened(*sound).code, 0) << "the output is there now";
}
