// The program itself, run as a user's shell would.

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace {

struct ProgramTest : testing::Test {
    ProgramTest() {
        put("asound.conf", "pcm.!default { type null }");
        put("buona.mel", "69;62;\r\n1;1;\r\nn;n;\r\n 60 \r\n 0 \r\n");
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("CANTAVISTA_HOME", folder.filePath("casa"));
        environment.insert("PULSE_SERVER", "unix:/nowhere");
        environment.insert("ALSA_CONFIG_PATH", folder.filePath("asound.conf"));
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program.setReadChannel(QProcess::StandardError);
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(folder.path());
    }

    void put(const char* name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    void start(const QString& arguments) {
        program.start(PROGRAM, arguments.split(' ', Qt::SkipEmptyParts));
        ASSERT_TRUE(program.waitForStarted());
    }

    int status() {
        EXPECT_TRUE(program.waitForFinished(100'000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return program.exitCode();
    }

    QTemporaryDir folder;
    QProcess program;
};

bool matches(const QString& text, const char* pattern) {
    return *pattern ? text.contains(QRegularExpression(pattern)) : text.isEmpty();
}

}  // namespace

TEST_F(ProgramTest, CommandsAnswerOnTheirStreamsWithTheirStatus) {
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"--version", 0, "^Cantavista \\d+\\.\\d+", ""},
        {"--list-devices", 0, "^ -1  Sintetizzatore interno\n", ""},
        {"--check buona.mel nulla.mel", 1, "^buona.mel: melodia valida.*2\nnulla.mel: ", ""},
        {"--export-midi buona.mel -o a.mid", 0, "", ""},
        {"--render buona.mel -o a.wav", 0, "", ""},
        {"--suona", 2, "", "sconosciuta: --suona\nUso: "},
    };
    for (const auto& [arguments, code, out, err] : cases) {
        start(arguments);
        EXPECT_EQ(status(), code) << arguments;
        EXPECT_TRUE(matches(program.readAllStandardOutput(), out)) << arguments;
        const QString said = program.readAllStandardError();
        EXPECT_TRUE(matches(said, err)) << arguments << ": " << said.toStdString();
    }
    EXPECT_GT(QFile(folder.filePath("a.mid")).size(), 40);
    EXPECT_GT(QFile(folder.filePath("a.wav")).size(), 44 + 44100 * 4);
    EXPECT_FALSE(QFile::exists(folder.filePath("casa"))) << "a command needs no folder";
}

TEST_F(ProgramTest, OpensItsMelodyAndEndsWhenItIsAsked) {
    start("-- buona.mel");
    // The offscreen platform complains once of each window that opens: the main one, the composer.
    QByteArray complaints;
    while (complaints.count('\n') < 2 && program.waitForReadyRead(60'000))
        complaints += program.readAllStandardError();
    EXPECT_EQ(complaints.count('\n'), 2) << complaints.constData();
    kill(static_cast<pid_t>(program.processId()), SIGTERM);
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(QFile::exists(folder.filePath("casa/Melodie")));
}

TEST_F(ProgramTest, SaysThatThereIsNoScreen) {
    auto environment = program.processEnvironment();
    environment.insert("QT_QPA_PLATFORM", "nessuna");
    program.setProcessEnvironment(environment);
    start({});
    EXPECT_EQ(status(), 1);
    EXPECT_TRUE(matches(program.readAllStandardError(), "\nCantavista non trova uno schermo"));
}
