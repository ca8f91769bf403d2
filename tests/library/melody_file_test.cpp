#include "composer/library/melody_file.h"

#include "core/code_page.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

/// The melody of the format's description, with two bookmarks.
const QByteArray kSample =
    "60;62;00;64;\r\n1;0,75;1;2;\r\nn;s;p;a;\r\n 60 \r\n 16 \r\n"
    "1 \xF7 4 \xF7 Tutto;2 \xF7 3 \xF7 perch\xE9;\r\n";

/// The sample with other lines; an empty array leaves one out, and those behind it.
QByteArray withLines(std::initializer_list<QByteArray> lines) {
    QByteArray file;
    for (const QByteArray& line : lines)
        file += line + "\r\n";
    return file;
}

/// What a file is worth: a melody, one whose lines do not match, or nothing.
enum class Worth { Melody, Damaged, Nothing };

Worth worthOf(const QByteArray& bytes) {
    const auto file = melody_file::read(bytes);
    if (!file)
        return Worth::Nothing;
    return Melody::read(file->texts).result == Melody::ReadResult::Read ? Worth::Melody
                                                                        : Worth::Damaged;
}

/// Whatever is read must be written so that it reads the same.
void expectStable(const QByteArray& bytes) {
    const auto file = melody_file::read(bytes);
    if (!file)
        return;
    const auto written = melody_file::write(*file);
    ASSERT_TRUE(written.refused.isEmpty());
    const auto again = melody_file::read(written.bytes);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->texts, file->texts);
    EXPECT_EQ(again->bookmarks, file->bookmarks);
    EXPECT_EQ(melody_file::write(*again).bytes, written.bytes);
}

TEST(MelodyFile, IsReadAndWrittenToTheByte) {
    const auto file = melody_file::read(kSample);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->texts.durations, "1;0,75;1;2;");
    EXPECT_EQ(file->bookmarks, (QStringList{"1 ÷ 4 ÷ Tutto", "2 ÷ 3 ÷ perché"}));
    EXPECT_EQ(melody_file::write(*file).bytes, kSample);

    MelodyFile plain = *file;
    plain.bookmarks.clear();
    EXPECT_EQ(melody_file::write(plain).bytes.count("\r\n"), 5);
    plain.bookmarks << "1 ÷ 4 ÷ 曲";
    EXPECT_EQ(melody_file::write(plain).refused, "曲");
    plain.bookmarks = QStringList{"a\nb"};
    EXPECT_EQ(melody_file::write(plain).refused, "\n");
}

TEST(MelodyFile, WhatIsNotAMelodyIsRefused) {
    const QByteArray notes = "60;62;";
    const QByteArray durations = "1;1;";
    const QByteArray letters = "n;n;";
    QByteArray large = withLines({"60;", "1;", "n;", "60", "16"});
    large += QByteArray(melody_file::kLargestFile, 'x');
    struct Row {
        const char* what;
        QByteArray bytes;
        Worth worth;
    };
    const Row rows[] = {
        {"as it should be", withLines({notes, durations, letters}), Worth::Melody},
        {"other line ends", "60;62;\n1;1;\rn;n;\r\n60", Worth::Melody},
        {"no melody yet", "\r\n\r\n\r\n 60 \r\n 16 \r\n", Worth::Melody},
        {"without the last semicolon", "60;62\r\n1;1\r\nn;n", Worth::Melody},
        {"an unknown letter", withLines({notes, durations, "n;?;"}), Worth::Melody},
        {"points and exponents", withLines({notes, " 0.5 ;1e-2;", letters}), Worth::Melody},
        {"one duration missing", withLines({notes, "1;", letters}), Worth::Damaged},
        {"one letter too many", withLines({notes, durations, "n;n;n;"}), Worth::Damaged},
        {"the last semicolon missing in one", withLines({"60;62", "1;1;", letters}),
         Worth::Damaged},
        {"nothing at all", {}, Worth::Nothing},
        {"two lines", withLines({notes, durations}), Worth::Nothing},
        {"a note outside", withLines({"60;35;", durations, letters}), Worth::Nothing},
        {"a note above", withLines({"96;62;", durations, letters}), Worth::Nothing},
        {"a negative note", withLines({"60;-1;", durations, letters}), Worth::Nothing},
        {"a note that overflows", withLines({"65596;62;", durations, letters}), Worth::Nothing},
        {"an empty field", withLines({"60;;62;", "1;1;1;", "n;n;n;"}), Worth::Nothing},
        {"a word", withLines({"do;re;", durations, letters}), Worth::Nothing},
        {"a duration that is none", withLines({notes, "1;x;", letters}), Worth::Nothing},
        {"two decimal points", withLines({notes, "1;1,2,3;", letters}), Worth::Nothing},
        {"an infinite duration", withLines({notes, "1;inf;", letters}), Worth::Nothing},
        {"a duration beyond all numbers", withLines({notes, "1;1e999;", letters}), Worth::Nothing},
        {"a zero byte", withLines({notes, durations, QByteArray("n;\0;", 4)}), Worth::Nothing},
        {"a byte without a character", withLines({notes, durations, letters, "60", "16", "\x81;"}),
         Worth::Nothing},
        {"too large", large, Worth::Nothing},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(worthOf(row.bytes), row.worth) << row.what;
        expectStable(row.bytes);
    }
}

TEST(MelodyFile, TheLinesBehindTheMelodyMayBeMissingOrStrange) {
    struct Row {
        std::initializer_list<QByteArray> lines;
        int tempo;
        int instrument;
        QStringList bookmarks;
    };
    const Row rows[] = {
        {{}, 60, 16, {}},
        {{" 90 "}, 90, 16, {}},
        {{"90", "16;"}, 90, 16, {}},
        {{"90", " 40 ; 7"}, 90, 40, {}},
        {{"", ""}, 60, 16, {}},
        {{"presto", "-"}, 60, 16, {}},
        {{"120,7", "-3"}, 120, -3, {}},
        {{"60", "0", "tenuto;x;"}, 60, 0, {}},
        {{"60", "0", "condensato;x;"}, 60, 0, {}},
        {{"60", "0", "basso;x;"}, 60, 0, {}},
        {{"60", "0", "Tenore;x;"}, 60, 0, {"Tenore", "x"}},
        {{"60", "0", "uno;due"}, 60, 0, {"uno"}},
        {{"60", "0", ""}, 60, 0, {}},
        {{"60", "0", "uno;", "due;"}, 60, 0, {"uno"}},
    };
    for (const Row& row : rows) {
        const QByteArray bytes = "60;\r\n1;\r\nn;\r\n" + withLines(row.lines);
        const auto file = melody_file::read(bytes);
        ASSERT_TRUE(file) << bytes.constData();
        EXPECT_EQ(file->tempo, row.tempo) << bytes.constData();
        EXPECT_EQ(file->instrument, row.instrument) << bytes.constData();
        EXPECT_EQ(file->bookmarks, row.bookmarks) << bytes.constData();
    }
    const auto endless = melody_file::read("60;\n1;\nn;\n99999999999999999999");
    EXPECT_GT(endless->tempo, Composition::kHighestTempo);
}

TEST(MelodyFile, HurtFilesAreRefusedOrReadSoThatTheyCanBeWritten) {
    std::mt19937 random(20041);
    for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
        QByteArray hurt = kSample.left(static_cast<qsizetype>(random() % (kSample.size() + 1)));
        for (int k = 0; k < i % 3 && !hurt.isEmpty(); ++k)
            hurt[static_cast<qsizetype>(random() % hurt.size())] = static_cast<char>(random());
        expectStable(hurt);
    }
}

TEST(CodePage, EveryByteOfItGoesBothWaysAndNothingElseDoes) {
    const std::set<int> holes{0x81, 0x8D, 0x8F, 0x90, 0x9D};
    for (int code = 0; code < 256; ++code) {
        const QByteArray byte(1, static_cast<char>(code));
        const auto text = code_page::decode(byte);
        ASSERT_EQ(text.has_value(), holes.count(code) == 0) << code;
        if (text) {
            EXPECT_EQ(code_page::encode(*text).bytes, byte) << code;
        }
    }
    EXPECT_EQ(code_page::encode(u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ÷").bytes,
              "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x93\x94\x95\x96\x97"
              "\x98\x99\x9A\x9B\x9C\x9E\x9F\xF7");
    EXPECT_EQ(code_page::encode(u"Do diesis ♯").refused, "♯");
    EXPECT_EQ(code_page::encode(u"\u0081").refused, "\u0081");
    EXPECT_EQ(code_page::encode(u"a\U0001F3B5").refused, "\U0001F3B5");
    EXPECT_EQ(code_page::encode(u"e\u0300").refused, "\u0300");
}

TEST(Examples, AreMelodiesToTheByte) {
    const QDir folder(MELODY_EXAMPLES);
    const QStringList names = folder.entryList({"*.mel"}, QDir::Files);
    ASSERT_GE(names.size(), 6);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_EQ(worthOf(bytes), Worth::Melody) << name.toStdString();
        const auto melody = melody_file::read(bytes);
        EXPECT_EQ(melody_file::write(*melody).bytes, bytes) << name.toStdString();
        for (const QString& item : melody->bookmarks) {
            const auto bookmark = Bookmark::fromText(item);
            EXPECT_TRUE(bookmark && bookmark->end <= melody->texts.notes.count(u';'));
        }
    }
}

}  // namespace
