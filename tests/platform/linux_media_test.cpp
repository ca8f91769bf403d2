#include "platform/linux/linux_media.h"

#include "platform/folders.h"
#include "platform/linux/audio_engine.h"
#include "platform/linux/audio_stream.h"
#include "platform/linux/media_command.h"
#include "platform/sound_file_bytes.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// The drive "N:" is a temporary folder.
class TemporaryFolders : public Folders {
public:
    QString programFolder() const override { return QStringLiteral("N:"); }
    bool fileExists(const QString& path) const override { return QFile::exists(nativePath(path)); }
    QString nativePath(const QString& path) const override {
        return folder_.path() + path.mid(2).replace(QLatin1Char('\\'), QLatin1Char('/'));
    }
    void write(const QString& path, const QByteArray& content) const {
        QFile file(nativePath(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private:
    QTemporaryDir folder_;
};

struct MediaWithoutDevice {
    MediaWithoutDevice() { stream.wait(); }
    int operator()(const char* text) { return media.command(QString::fromUtf8(text)); }

    TemporaryFolders folders;
    std::shared_ptr<AudioEngine> engine = std::make_shared<AudioEngine>(44100);
    AudioStream stream{engine, {"", {}}};
    LinuxMedia media{*engine, stream, folders};
};

}  // namespace

TEST(MediaCommand, TakesTextsApart) {
    const auto open =
        MediaCommand::parse(QStringLiteral("OPEN N:\\la mia alias\\ap 1.mid ALIAS jepa "));
    ASSERT_TRUE(open);
    EXPECT_EQ(open->verb, MediaCommand::Verb::Open);
    EXPECT_EQ(open->path, QStringLiteral("N:\\la mia alias\\ap 1.mid"));
    EXPECT_EQ(open->alias, QStringLiteral("jepa"));
    EXPECT_EQ(MediaCommand::parse(QStringLiteral("open \"a b.mid\" alias x"))->path,
              QStringLiteral("a b.mid"));
    EXPECT_EQ(MediaCommand::parse(QStringLiteral("play jepa"))->verb, MediaCommand::Verb::Play);
    EXPECT_EQ(MediaCommand::parse(QStringLiteral("CLOSE jepa"))->verb, MediaCommand::Verb::Close);
    for (const char* text : {"", "PLAY", "OPEN", "OPEN a.mid", "OPEN  ALIAS jepa", "PAUSE jepa"})
        EXPECT_FALSE(MediaCommand::parse(QString::fromUtf8(text))) << text;
}

TEST(LinuxMedia, CommandsAnswerWithTheRightCodes) {
    MediaWithoutDevice run;
    run.folders.write(QStringLiteral("N:\\il brano.mid"),
                      bytes::midi(0, 96, bytes::track(QByteArray::fromHex("00903C64"))));
    run.folders.write(QStringLiteral("N:\\testo.mid"), "testo");
    struct Step {
        const char* text;
        SoundCode code;
    };
    const Step steps[] = {
        {"SING jepa", SoundCode::UnknownCommand},
        {"PLAY jepa", SoundCode::AliasNotOpen},
        {"CLOSE jepa", SoundCode::AliasNotOpen},
        {"OPEN N:\\manca.mid ALIAS jepa ", SoundCode::FileNotFound},
        {"OPEN N:\\ ALIAS jepa ", SoundCode::FileNotFound},
        {"OPEN N:\\testo.mid ALIAS jepa ", SoundCode::NotMidiFile},
        {"OPEN N:\\il brano.mid ALIAS jepa ", SoundCode::Ok},
        {"OPEN N:\\il brano.mid ALIAS jepa ", SoundCode::AliasInUse},
        {"PLAY altro", SoundCode::AliasNotOpen},
        {"PLAY jepa", SoundCode::Ok},
        {"PLAY jepa", SoundCode::Ok},
        {"CLOSE jepa", SoundCode::Ok},
        {"CLOSE jepa", SoundCode::AliasNotOpen},
    };
    for (const Step& step : steps) {
        const int code = run(step.text);
        EXPECT_EQ(code, toInt(step.code)) << step.text;
        EXPECT_LE(run.media.errorText(code).size(), 254);
    }
}

TEST(LinuxMedia, PlaysNothingWithoutADevice) {
    MediaWithoutDevice run;
    EXPECT_FALSE(run.media.playSound(QStringLiteral("N:\\rok.wav"), kSoundAsync));
}
