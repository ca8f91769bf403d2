#include "command/commands.h"

#include "command/command_line.h"
#include "composer/export/sheet_request.h"
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

QByteArray contentOf(const char* name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

TEST(Commands, AnswerWithTheirStatusAndSayWhy) {
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    DesktopFolders folders(DesktopFolders::ProgramFolder::Unused);
    const std::unique_ptr<Sound> sound = openSound(folders);
    for (const auto& [name, bytes] :
         {std::pair{"buona.mel", kMelody},
          {"rotta.mel", "60;62;\r\n1;\r\nn;n;\r\n"},
          {"corta.mel", "69;62;0;0;0;\r\n1;0,01;1;2,9895833333;1;\r\nn;n;z;n;n;\r\n60\r\n0\r\n"},
          {"vuota.mel", "\r\n\r\n\r\n"},
          {"-o.mel", kMelody}}) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    // Expressions that the texts match; empty where nothing is written.
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"--list-devices", 0, "^ -1  Sintetizzatore interno\n", ""},
        {"--check rotta.mel buona.mel vuota.mel nulla.mel", 1,
         "rotta.mel: File corrotto.*\nbuona.mel: .*2\nvuota.mel: .*0\nnulla.mel: File non trovato",
         ""},
        {"--check -- -o.mel", 0, "^-o.mel: melodia valida", ""},
        {"--check", 2, "", "manca il file della melodia\nUso:"},
        {"--check buona.mel -o x", 2, "", "-o e --instrument non servono"},
        {"buona.mel rotta.mel", 2, "", "un comando"},
        {"--check --render buona.mel -o x.wav", 2, "", "uno solo"},
        {"--render buona.mel", 2, "", "manca il file da scrivere"},
        {"--render buona.mel -o", 2, "", "manca il valore dopo -o"},
        {"--export-midi buona.mel rotta.mel -o x.mid", 2, "", "troppi file"},
        {"--export-midi buona.mel -o x.mid --instrument 128", 2, "", "0 a 127"},
        {"--export-midi vuota.mel -o x.mid", 1, "", "vuota"},
        {"--export-midi buona.mel -o ./buona.mel", 1, "", "la melodia stessa"},
        {"--render buona.mel -o /dev/null", 1, "", "cantavista: /dev/null: .*negato"},
        {"--export-midi buona.mel -o /dev/null", 1, "", "cantavista: /dev/null: .*negato"},
        {"--export-musicxml buona.mel -o /dev/null", 1, "", "cantavista: /dev/null: .*negato"},
        {"--export-braille buona.mel -o /dev/null", 1, "", "cantavista: /dev/null: .*negato"},
        {"--export-pdf buona.mel -o /dev/null", 1, "", "cantavista: /dev/null: .*negato"},
        {"--export-midi --instrument 73 buona.mel -o a.mid", 0, "", ""},
        {"--export-midi buona.mel -o x.mid --key 1", 2, "", "--metre e --key non servono"},
        {"--export-musicxml buona.mel -o x.mid --metre 5/4", 2, "", "serve 2/4, 3/4, 4/4 o 6/8"},
        {"--export-musicxml buona.mel -o x.mid --key 8m", 2, "", "da -7 a 7"},
        {"--export-musicxml corta.mel -o x.mid", 1, "", "note: 2 .*\n.*divide.* 5 .*\n.*: 3 "},
        {"--export-musicxml buona.mel -o a.xml --metre 6/8 --key -1m", 0, "", ""},
        {"--export-musicxml buona.mel -o x.mid --metre none", 2, "", "none .non per MusicXML"},
        {"--export-braille buona.mel -o a.brf --metre none", 0, "", ""},
        {"--import a.xml -o b.mel", 0, "", ""},
        {"--import a.xml -o /dev/null", 1, "", "cantavista: /dev/null: .*negato"},
        {"--import a.xml -o ./a.xml", 1, "", "il file da importare"},
        {"--import buona.mel -o x.mid", 1, "", "non è un file MusicXML"},
        {"--import nulla.mxl -o x.mid", 1, "", "non trovato"},
        {"--import a.xml -o x.mid --instrument 3", 2, "", "--instrument non serve"},
        {"--export-pdf buona.mel -o a.pdf --metre none --paper LETTER", 0, "", ""},
        {"--export-pdf corta.mel -o a2.pdf --metre none", 0, "", ""},
        {"--export-pdf corta.mel -o x.pdf", 1, "", "durata delle note: 2 !!!"},
        {"--export-pdf buona.mel -o x.pdf --paper a5", 2, "", "a4 o letter"},
        {"--export-pdf buona.mel -o x.pdf --system 1", 2, "", "--system non serve"},
        {"--export-braille buona.mel -o x.brf --paper a4", 2, "", "--paper non serve"},
        {"--export-system buona.mel -o a.SVG --metre 3/4 --key 2m", 0, "", ""},
        {"--export-system buona.mel -o a.png --system 2", 0, "", ""},
        {"--export-system buona.mel -o x.png --system 3", 1, "", "buona.mel: il 3 manca"},
        {"--export-system buona.mel -o x.png --system 4", 1, "", "x.png: Lo spartito non è riusc"},
        {"--export-system buona.mel -o x.png --system 0", 2, "", "da 1 in su"},
        {"--export-system buona.mel -o x.pdf", 2, "", ".svg o .png"},
        {"--export-pdf buona.mel -o x.pdf --instrument 3", 2, "", "--instrument non serve"},
        {"--export-pdf vuota.mel -o x.pdf", 1, "", "vuota"},
        {"--export-midi corta.mel -o corta.mid", 0, "", "La nota 2 è troppo breve"},
    };
    for (const auto& [arguments, status, outWanted, errWanted] : cases) {
        const QStringList words = ("cantavista " + QString::fromUtf8(arguments)).split(' ');
        EXPECT_TRUE(CommandLine::isCommand(words)) << arguments;
        QString out;
        QString err;
        QTextStream outStream(&out);
        QTextStream errStream(&err);
        const auto makeSheet = [](const Composition&, const SheetRequest& wanted) {
            const auto& metre = wanted.notation.metre;
            const QString told = QStringLiteral("%1 %2 %3 %4 %5 %6")
                                     .arg(wanted.title)
                                     .arg(static_cast<int>(wanted.form))
                                     .arg(metre ? metre->beats : 0)
                                     .arg(wanted.notation.key.fifths)
                                     .arg(wanted.paper == Paper::Letter)
                                     .arg(wanted.system);
            return SheetFile{wanted.system == 4 ? QByteArray() : told.toUtf8(),
                             wanted.system == 3 ? "il 3 manca" : ""};
        };
        const CommandMachine machine{folders, *sound, outStream, errStream, makeSheet};
        EXPECT_EQ(commands::run(CommandLine::parse(words), machine), status) << arguments;
        for (const auto& [text, wanted] : {std::pair{out, outWanted}, {err, errWanted}})
            EXPECT_TRUE(*wanted ? text.contains(QRegularExpression(wanted)) : text.isEmpty())
                << arguments << ": " << text.toStdString();
    }
    EXPECT_EQ(contentOf("buona.mel"), kMelody);
    EXPECT_FALSE(QFile::exists("x.mid"));
    EXPECT_TRUE(contentOf("a.mid").contains(QByteArray("\0\xC0\x49", 3)));
    for (const char* part :
         {"<fifths>-1<", "<mode>minor<", "<beats>6<", "<step>D</step>", "measure number=\"1\""})
        EXPECT_TRUE(contentOf("a.xml").contains(part)) << part;
    EXPECT_EQ(contentOf("a.brf").simplified(), "BUONA ?7#FJ #A \"[:<K");
    EXPECT_EQ(contentOf("b.mel"), kMelody);
    EXPECT_EQ(contentOf("a.pdf"), "buona 0 0 0 1 1");
    EXPECT_EQ(contentOf("a.SVG"), "buona 1 3 2 0 1");
    EXPECT_EQ(contentOf("a.png"), "buona 2 4 0 0 2");
    EXPECT_TRUE(contentOf("corta.mid").contains(QByteArray("\0\xC0\0", 3)));
    QDir::setCurrent(QDir::rootPath());
}

TEST(CommandLine, LeavesTheWindowItsOwnArguments) {
    for (const char* words : {"", "a.mel", "-platform offscreen a.mel", "--style=Fusion -- -a.mel",
                              "-session 10_20 -reverse"}) {
        const QString line = QStringLiteral("cantavista ") + words;
        EXPECT_FALSE(CommandLine::isCommand(line.split(' ', Qt::SkipEmptyParts))) << words;
    }
}
