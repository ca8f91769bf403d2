#include "composer/library/melody_file.h"

#include "composer/melody/rhythm.h"
#include "core/code_page.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

/// The reader a second time, in its plainest form.
std::optional<MelodyFile> readPlainly(const QByteArray& bytes) {
    const auto text = code_page::decode(bytes);
    static const QRegularExpression control("[\\x{0}-\\x{8}\\x{B}\\x{C}\\x{E}-\\x{1F}\\x{7F}]");
    if (!text || text->contains(control))
        return std::nullopt;
    QStringList lines = text->split(QRegularExpression("\\r\\n|\\r|\\n"));
    if (lines.back().isEmpty())
        lines.removeLast();
    if (lines.size() < 3)
        return std::nullopt;
    const auto fields = [](const QString& line) {
        QStringList parts = line.split(';');
        if (parts.back().isEmpty())
            parts.removeLast();
        return parts;
    };
    for (const QString& note : fields(lines[0])) {
        bool isNumber = false;
        const int number = note.toShort(&isNumber);
        if (!isNumber || (number != 0 && (number < 36 || number > 95)))
            return std::nullopt;
    }
    for (const QString& duration : fields(lines[1])) {
        if (!rhythm::numberFromText(duration))
            return std::nullopt;
    }
    const auto number = [&lines](int line, int otherwise) {
        static const QRegularExpression digits("^[+-]?[0-9]{1,6}");
        const auto match = digits.match(lines.value(line).trimmed());
        return match.hasMatch() ? match.captured().toInt() : otherwise;
    };
    MelodyFile file{{lines[0], lines[1], lines[2]}, {}, {}, number(3, 60), number(4, 16)};
    if (lines.size() > 5 && !lines[5].contains(QRegularExpression("^(con|ten|bas)")))
        file.bookmarks = lines[5].split(';').mid(0, lines[5].count(';'));
    return file;
}

QString writtenPlainly(const MelodyFile& file) {
    const QString text = QStringLiteral("%1\r\n%2\r\n%3\r\n %4 \r\n %5 \r\n")
                             .arg(file.texts.notes, file.texts.durations, file.texts.attributes)
                             .arg(file.tempo)
                             .arg(file.instrument);
    return file.bookmarks.isEmpty() ? text : text + file.bookmarks.join(';') + ";\r\n";
}

/// Lines as they should be and as they should not, perhaps hurt or cut off.
QByteArray anyFile(std::mt19937& random) {
    static const std::vector<std::vector<QByteArray>> lines{
        {"60;62;", "60;62", "", "36;95;00;", "35;", "96;62;", "-1;", "65596;", "60;;62;", "do;",
         "060; 61 ;"},
        {"1;0,75;", "1;1", "", " 0.5 ;1e-2;", "1;x;", "1,2,3;", "1;inf;", "1e999;", ",5;5.;",
         "-2;"},
        {"n;s;", "n;n", "", "?;nn;"},
        {" 60 ", "90", "", "presto", "120,7", "-3", "+70", " 999999"},
        {" 16 ", "40 ; 7", "", "-", "0", "-5"},
        {"1 \xF7 4 \xF7 Tutto;2 \xF7 3 \xF7 perch\xE9;", "ten;x;", "con;x;", "bas;x;", "Ten;x;",
         "uno;due", "", ";", "\x81;", "\x7F;", "\t;", "\x1F;"},
        {"x"}};
    QByteArray file;
    for (std::size_t i = 0; i < lines.size() && random() % 25 != 0; ++i) {
        const auto& line = lines[i];
        file += line[random() % 3 != 0 ? 0 : random() % line.size()];
        if (random() % 25 != 0)
            file += random() % 4 != 0 ? "\r\n" : random() % 2 != 0 ? "\n" : "\r";
    }
    if (random() % 8 == 0 && !file.isEmpty())
        file[static_cast<qsizetype>(random() % file.size())] = static_cast<char>(random());
    return file;
}

TEST(MelodyFile, IsReadAndWrittenAsItsPlainestFormIs) {
    std::mt19937 random(20041);
    int melodies = 0;
    for (int i = 0; i < 4000; ++i) {
        const QByteArray bytes = anyFile(random);
        const auto file = melody_file::read(bytes);
        const auto wanted = readPlainly(bytes);
        ASSERT_EQ(file.has_value(), wanted.has_value()) << bytes.toStdString();
        if (!file)
            continue;
        ++melodies;
        ASSERT_EQ(file->texts, wanted->texts);
        ASSERT_EQ(file->bookmarks, wanted->bookmarks) << bytes.toStdString();
        ASSERT_EQ(file->tempo, wanted->tempo) << bytes.toStdString();
        ASSERT_EQ(file->instrument, wanted->instrument) << bytes.toStdString();
        const auto written = melody_file::write(*file);
        ASSERT_EQ(*code_page::decode(written.bytes), writtenPlainly(*file));
    }
    EXPECT_GT(melodies, 500);
    const QByteArray small = "60;\r\n1;\r\nn;\r\n999999999999999999999\r\n";
    const QByteArray filling(melody_file::kLargestFile - small.size(), 'x');
    EXPECT_GT(melody_file::read(small + filling)->tempo, 250);
    EXPECT_FALSE(melody_file::read(small + filling + 'x')) << "too large";
    for (const char* refused : {"曲", "\n", "\x1B", "\u0081", "🎵"}) {
        const MelodyFile file{{"60;", "1;", "n;"}, {"1 ÷ 4 ÷ a" + QString(refused)}, {}};
        EXPECT_EQ(melody_file::write(file).refused, refused);
        EXPECT_TRUE(melody_file::write(file).bytes.isEmpty());
        EXPECT_FALSE(melody_file::canCarry(QString(refused)));
    }
    EXPECT_TRUE(melody_file::canCarry(u"perché\t÷"));
}

TEST(CodePage, EveryByteOfItGoesBothWaysAndNothingElseDoes) {
    const std::set<int> holes{0x81, 0x8D, 0x8F, 0x90, 0x9D};
    for (int code = 0; code < 256; ++code) {
        const QByteArray byte(1, static_cast<char>(code));
        const auto text = code_page::decode(byte);
        ASSERT_EQ(text ? code_page::encode(*text).bytes : QByteArray(),
                  holes.contains(code) ? QByteArray() : byte);
    }
    EXPECT_EQ(code_page::encode(u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ÷").bytes,
              "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x93\x94\x95\x96\x97"
              "\x98\x99\x9A\x9B\x9C\x9E\x9F\xF7");
}

TEST(Examples, AreMelodiesToTheByte) {
    QDirIterator files(MELODY_EXAMPLES, {"*.mel"});
    int count = 0;
    for (; files.hasNext(); ++count) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const auto melody = melody_file::read(bytes);
        ASSERT_TRUE(melody) << file.fileName().toStdString();
        EXPECT_EQ(Melody::read(melody->texts).result, Melody::ReadResult::Read);
        EXPECT_EQ(melody_file::write(*melody).bytes, bytes) << file.fileName().toStdString();
        for (const QString& item : melody->bookmarks)
            EXPECT_LE(Bookmark::fromText(item).value().end, melody->texts.notes.count(u';'));
    }
    EXPECT_GE(count, 6);
}

}  // namespace
