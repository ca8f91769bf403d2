#include "command/commands.h"

#include "command/command_line.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/sound.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>

#include <gtest/gtest.h>

namespace {

const QByteArray kMelody = "69;62;\r\n1;1;\r\nn;n;\r\n 60 \r\n 0 \r\n";
const QByteArray kDamaged = "60;62;\r\n1;\r\nn;n;\r\n";
const QByteArray kTooShort = "69;62;\r\n1;0,01;\r\nn;n;\r\n";

struct CommandsTest : testing::Test {
    QTemporaryDir folder;
    DesktopFolders folders{DesktopFolders::ProgramFolder::Unused};
    std::unique_ptr<Sound> sound = openSound(folders);
    QString out;
    QString err;

    CommandsTest() {
        put("buona.mel", kMelody);
        put("rotta.mel", kDamaged);
        put("corta.mel", kTooShort);
        put("vuota.mel", "\r\n\r\n\r\n");
        put("-o.mel", kMelody);
        QDir::setCurrent(folder.path());
    }

    ~CommandsTest() override { QDir::setCurrent(QDir::rootPath()); }

    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QByteArray at(const QString& name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int run(const QString& arguments) {
        const QStringList words =
            QStringList{QStringLiteral("cantavista")} + arguments.split(' ', Qt::SkipEmptyParts);
        EXPECT_TRUE(CommandLine::isCommand(words)) << arguments.toStdString();
        out.clear();
        err.clear();
        QTextStream outStream(&out);
        QTextStream errStream(&err);
        return commands::run(CommandLine::parse(words), {folders, *sound, outStream, errStream});
    }
};

struct Case {
    const char* arguments;
    int status;
    const char* out;  ///< an expression that it matches; empty if nothing is written there
    const char* err;
};

}  // namespace

TEST_F(CommandsTest, EveryCommandAnswersWithItsStatusAndSaysWhy) {
    const std::array cases{
        Case{"--version", 0, "Cantavista \\d", ""},
        Case{"-h", 0, "--render MELODIA", ""},
        Case{"--check buona.mel vuota.mel", 0, "buona.mel: .*2\nvuota.mel: .*0\n", ""},
        Case{"--check rotta.mel buona.mel nulla.mel", 1,
             "rotta.mel: File corrotto.*\nbuona.*\nnulla.mel: File non trovato", ""},
        Case{"--check -- -o.mel", 0, "^-o.mel: melodia valida", ""},
        Case{"--check", 2, "", "manca il file della melodia\nUso:"},
        Case{"--check buona.mel -o x", 2, "", "-o e --instrument non servono"},
        Case{"--chek buona.mel", 2, "", "sconosciuta: --chek\n"},
        Case{"-x", 2, "", "sconosciuta: -x\n"},
        Case{"buona.mel rotta.mel", 2, "", "un comando"},
        Case{"--check --render buona.mel -o x.wav", 2, "", "uno solo"},
        Case{"--render buona.mel", 2, "", "manca il file da scrivere"},
        Case{"--render buona.mel -o", 2, "", "manca il valore dopo -o"},
        Case{"--export-midi buona.mel rotta.mel -o x.mid", 2, "", "troppi file"},
        Case{"--export-midi buona.mel -o x.mid --instrument 128", 2, "", "0 a 127"},
        Case{"--export-midi rotta.mel -o x.mid", 1, "", "rotta.mel: File corrotto"},
        Case{"--export-midi vuota.mel -o x.mid", 1, "", "vuota"},
        Case{"--export-midi buona.mel -o nulla/x.mid", 1, "", "x.mid: Cartella non trovata"},
        Case{"--export-midi buona.mel -o ./buona.mel", 1, "", "la melodia stessa"},
        Case{"--export-midi buona.mel -o /dev/null", 1, "", "negato"},
        Case{"--render buona.mel -o nulla/x.wav", 1, "", "x.wav: Cartella non trovata"},
        Case{"--render buona.mel -o /dev/null", 1, "", "negato"},
        Case{"--export-midi corta.mel -o corta.mid", 0, "", "La nota 2 è troppo breve"},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(run(QString::fromUtf8(test.arguments)), test.status) << test.arguments;
        for (const auto& [text, wanted] : {std::pair{out, test.out}, std::pair{err, test.err}}) {
            const QRegularExpression expression(QString::fromUtf8(wanted));
            EXPECT_TRUE(*wanted ? text.contains(expression) : text.isEmpty())
                << test.arguments << ": " << text.toStdString();
        }
    }
    EXPECT_EQ(at("buona.mel"), kMelody);
    EXPECT_FALSE(QFile::exists("x.mid"));
}

TEST_F(CommandsTest, AnInstrumentTakesThePlaceOfTheFilesOwn) {
    ASSERT_EQ(run("--export-midi buona.mel -o a.mid"), 0);
    ASSERT_EQ(run("--export-midi buona.mel -o b.mid --instrument 73"), 0);
    EXPECT_TRUE(at("a.mid").contains(QByteArray("\0\xC0\0", 3)));
    EXPECT_EQ(at("b.mid"),
              at("a.mid").replace(QByteArray("\0\xC0\0", 3), QByteArray("\0\xC0\x49", 3)));
}

TEST(CommandLine, LeavesTheWindowItsOwnArguments) {
    for (const char* words : {"", "a.mel", "-platform offscreen a.mel", "--style=Fusion -- -a.mel",
                              "-session 10_20 -reverse"}) {
        const QStringList arguments = QString::fromUtf8(words).split(' ', Qt::SkipEmptyParts);
        EXPECT_FALSE(CommandLine::isCommand(QStringList{"cantavista"} + arguments)) << words;
    }
}
