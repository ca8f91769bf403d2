#include "platform/linux/linux_sound.h"

#include "audio/sound_file_bytes.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/linux/sound_code.h"
#include "platform/linux/soundfont.h"
#include "platform/media.h"
#include "platform/midi_out.h"
#include "support/virtual_runtime.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
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
    ~LinuxSoundTest() override {
        for (const char* name : {"CANTAVISTA_DRIVE_A", "CANTAVISTA_SOUNDFONT"})
            qunsetenv(name);
    }

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
        for (int i = 0; i < 3000; ++i, std::this_thread::sleep_for(std::chrono::milliseconds(10)))
            if (file.open(QIODevice::ReadOnly)) {
                const QByteArray all = file.readAll();
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
    const auto play = [](const char* file) {
        return [file](Sound& sound, MidiHandle) { return sound.media().playSound(file, 0); };
    };
    const std::pair<const char*, std::function<bool(Sound&, MidiHandle)>> acts[] = {
        {"a note", [](Sound& sound,
                      MidiHandle handle) { return sound.midiOut().send(handle, 0x643C90) == 0; }},
        {"a tune",
         [](Sound& sound, MidiHandle) {
             return sound.media().command("OPEN A:\\brano.mid ALIAS jepa") == 0 &&
                    sound.media().command("PLAY jepa") == 0;
         }},
        {"a sound", play("A:\\suono.wav")},
        {"the sound in place of a missing one", play("A:\\manca.wav")},
    };
    for (const auto& [name, act] : acts) {
        SCOPED_TRACE(name);
        const std::unique_ptr<Sound> sound = openSound(folders, &runtime);
        const MidiOpenResult result = opened(*sound);
        ASSERT_EQ(result.code, 0);
        EXPECT_TRUE(act(*sound, result.handle));
        EXPECT_TRUE(isHeard());
        EXPECT_FALSE(sound->media().playSound("A:\\manca.wav", kSoundNoDefault));
        EXPECT_FALSE(sound->midiOut().gone(result.handle));
        EXPECT_EQ(sound->midiOut().reset(result.handle), 0);
        const MidiOpenResult again = sound->midiOut().reopen(result.handle);
        EXPECT_EQ(again.code, 0);
        EXPECT_EQ(sound->midiOut().send(result.handle, 0), toInt(SoundCode::InvalidHandle));
        EXPECT_EQ(sound->midiOut().close(again.handle), 0);
    }
}

TEST_F(LinuxSoundTest, SaysWhyItIsSilent) {
    EXPECT_TRUE(QFile::exists(QString::fromStdString(findSoundfont()))) << "it is not installed";
    for (const auto& [soundfont, code] : {std::pair{"asound.conf", SoundCode::SoundfontDamaged},
                                          {"manca", SoundCode::NoSoundfont}}) {
        qputenv("CANTAVISTA_SOUNDFONT", path(soundfont).toUtf8());
        const std::unique_ptr<Sound> sound = openSound(folders);
        EXPECT_EQ(opened(*sound).code, toInt(code));
        EXPECT_FALSE(sound->waveRenderer()->start({}, 0));
        EXPECT_EQ(sound->waveRenderer()->instrumentsDamaged(), code == SoundCode::SoundfontDamaged);
    }
    qunsetenv("CANTAVISTA_SOUNDFONT");
    qputenv("ALSA_CONFIG_PATH", path("manca").toUtf8());
    const std::unique_ptr<Sound> sound = openSound(folders, &runtime);
    int inputs = 0;
    runtime.at(runtime.now(), [&inputs] { ++inputs; });
    EXPECT_EQ(opened(*sound, false).code, toInt(SoundCode::NoAudioDevice));
    EXPECT_EQ(inputs, 1) << "what the user did in the wait";
    EXPECT_EQ(sound->midiOut().reopen(7).code, toInt(SoundCode::InvalidHandle));
    qputenv("ALSA_CONFIG_PATH", path("asound.conf").toUtf8());
    EXPECT_EQ(opened(*sound).code, 0) << "the output is there now";
}

TEST_F(LinuxSoundTest, MediaCommandsAnswerWithTheRightCodes) {
    put("il brano ALIAS 1.mid", kTune);
    put("testo.mid", "testo");
    qputenv("ALSA_CONFIG_PATH", path("manca").toUtf8());
    const std::unique_ptr<Sound> sound = openSound(folders);
    EXPECT_EQ(opened(*sound, false).code, toInt(SoundCode::NoAudioDevice));
    EXPECT_FALSE(sound->media().playSound("A:\\manca.wav", kSoundAsync)) << "there is no device";
    const std::pair<const char*, SoundCode> steps[] = {
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
        {"CLOSE jepa", SoundCode::Ok},
        {"CLOSE jepa", SoundCode::AliasNotOpen},
    };
    QSet<QString> texts;
    for (const auto& [text, code] : steps) {
        EXPECT_EQ(sound->media().command(QString::fromUtf8(text)), toInt(code)) << text;
        texts << sound->media().errorText(toInt(code));
    }
    EXPECT_EQ(texts.size(), 6) << "each code has a text of its own";
    EXPECT_TRUE(sound->media().errorText(99).contains("99"));
}
