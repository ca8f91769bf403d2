// The program itself, run as a user's shell would.

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

struct ProgramTest : testing::Test {
    ProgramTest() {
        for (const auto& [name, bytes] :
             {std::pair{"asound.conf", "pcm.!default { type null }"},
              {"buona.mel", "69;62;\r\n1;1;\r\nn;n;\r\n 60 \r\n 0 \r\n"}}) {
            QFile file(folder.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) > 0);
        }
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("CANTAVISTA_HOME", folder.filePath("casa"));
        environment.insert("PULSE_SERVER", "unix:/nowhere");
        environment.insert("ALSA_CONFIG_PATH", folder.filePath("asound.conf"));
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(folder.path());
    }

    void start(const QString& arguments) { program.start(PROGRAM, arguments.split(' ')); }

    int status() {
        EXPECT_TRUE(program.waitForFinished(100'000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return program.exitCode();
    }

    QTemporaryDir folder;
    QProcess program;
};

}  // namespace

TEST_F(ProgramTest, CommandsAnswerOnTheirStreamsWithTheirStatus) {
    for (const auto& [arguments, code, out, err] :
         {std::tuple{"--version", 0, "Cantavista ", ""},
          {"--render buona.mel -o a.wav", 0, "", ""},
          {"--check nulla.mel", 1, "nulla.mel: File non trovato", ""},
          {"--suona", 2, "", "cantavista: opzione sconosciuta: --suona\n"}}) {
        start(arguments);
        EXPECT_EQ(status(), code) << arguments;
        for (const auto& [said, wanted] : {std::pair{program.readAllStandardOutput(), out},
                                           {program.readAllStandardError(), err}})
            EXPECT_TRUE(*wanted ? said.startsWith(wanted) : said.isEmpty()) << said.constData();
    }
    EXPECT_GT(QFile(folder.filePath("a.wav")).size(), 44 + 44100 * 4);
    EXPECT_FALSE(QFile::exists(folder.filePath("casa"))) << "a command needs no folder";
}

TEST_F(ProgramTest, OpensItsMelodyAndEndsWhenItIsAsked) {
    // Tells when the program has read its melody.
    pollfd watch{inotify_init(), POLLIN, 0};
    inotify_add_watch(watch.fd, qPrintable(folder.filePath("buona.mel")), IN_CLOSE_NOWRITE);
    start("-- buona.mel");
    EXPECT_EQ(poll(&watch, 1, 60'000), 1);
    close(watch.fd);
    kill(static_cast<pid_t>(program.processId()), SIGTERM);
    EXPECT_EQ(status(), 0);
}

TEST_F(ProgramTest, SaysThatThereIsNoScreen) {
    start("-platform nessuna");
    EXPECT_EQ(status(), 1);
    EXPECT_TRUE(program.readAllStandardError().contains("\nCantavista non trova uno schermo"));
}
