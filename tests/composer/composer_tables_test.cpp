#include "composer/melody/melody.h"
#include "composer/melody/play_range.h"
#include "composer/melody/rhythm.h"
#include "composer/playback/articulation.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

TEST(Rhythm, NamesAndTextsOfDurations) {
    EXPECT_EQ(rhythm::ValueNameToDuration(u"(1/8).", u"3"), 2.25);
    EXPECT_EQ(rhythm::ValueNameToDuration(u"na", u"4"), 4);
    EXPECT_EQ(rhythm::DurationToValueName(0.75), QStringLiteral("(1/8)."));
    EXPECT_EQ(rhythm::namedValues().size(), 13U);
    EXPECT_EQ(rhythm::DurationToValueName(5), QStringLiteral("na"));

    const std::vector<std::pair<double, const char*>> texts{
        {1.5, "1,5"},       {2.0 / 3, "0,666666666666667"},    {0.1 + 0.2, "0,3"},
        {12345.0, "12345"}, {0.125 / 3, "0,0416666666666667"}, {0.0625, "0,0625"},
    };
    for (const auto& [duration, text] : texts)
        EXPECT_EQ(rhythm::durationText(duration, u','), QLatin1String(text));
    EXPECT_EQ(rhythm::numberFromText(u"1,5"), 1.5);
    EXPECT_EQ(rhythm::numberFromText(u" 1.5 "), 1.5);
    for (const char16_t* text : {u"", u"x", u"1,5;", u"1.234,5", u"nan", u"inf"})
        EXPECT_FALSE(rhythm::numberFromText(text)) << QString::fromUtf16(text).toStdString();
}

TEST(Melody, TextsStayAsTheyWereRead) {
    struct Case {
        MelodyTexts texts;
        Melody::ReadResult result;
        int count;
    };
    const auto big = [](int count) { return QStringLiteral("1;").repeated(count); };
    const std::vector<Case> cases{
        {{{}, {}, {}}, Melody::ReadResult::Read, 0},
        {{"060;x;00;", "1.50;0,75;y;", "n;;zz;"}, Melody::ReadResult::Read, 3},
        {{"60;62;", "1;", "n;n;"}, Melody::ReadResult::Damaged, 0},
        {{"60;", "1;", {}}, Melody::ReadResult::Damaged, 0},
        {{big(32767), big(32767), big(32767)}, Melody::ReadResult::Read, 32767},
    };
    for (const Case& c : cases) {
        Melody::Reading reading = Melody::read(c.texts);
        EXPECT_EQ(reading.result, c.result);
        MelodyDelta delta{0, 0, std::move(reading.entries), true, std::move(reading.damaged)};
        Melody melody;
        melody.exchange(delta);
        EXPECT_EQ(melody.EntryCount(), c.count);
        EXPECT_EQ(melody.consistent(), c.result != Melody::ReadResult::Damaged);
        EXPECT_TRUE(melody.texts() == c.texts) << melody.texts().notes.toStdString();
    }
    EXPECT_EQ(Melody::read({big(32768), big(32768), big(32768)}).result,
              Melody::ReadResult::TooLong);
    EXPECT_EQ(Melody::read({"60;62", "1;1", "n;n"}).entries.size(), 2U);
}

TEST(Articulation, LettersAndTempos) {
    // letter, duration, tempo: velocity, sounding, silence
    const std::vector<std::tuple<QString, double, int, int, int, int>> cases{
        {"n", 1, 60, 100, 970, 0},     {"a", 1, 60, 127, 970, 0},
        {"s", 1, 60, 120, 250, 720},   {"t", 1, 60, 100, 500, 470},
        {"p", 0.5, 120, 100, 0, 220},  {"n", 0.0625, 121, 100, 0, 0},
        {"n", 0.0625, 120, 100, 1, 0}, {"s", 0.0625, 250, 120, 3, 0},
        {"t", 0.0625, 250, 100, 7, 0}, {"t", 0.25, 250, 100, 30, 0},
        {"p", 0.0625, 250, 100, 0, 0}, {"s", 1.0 / 3, 70, 120, 71, 184},
        {"x", 1, 60, 100, 0, 0},
    };
    for (const auto& [attribute, duration, tempo, velocity, sounding, silence] : cases) {
        Articulation articulation;
        articulation.articulate(attribute, duration, tempo);
        const std::string label = attribute.toStdString() + " " + std::to_string(tempo);
        EXPECT_EQ(articulation.velocity, velocity) << label;
        EXPECT_EQ(std::max<std::int64_t>(articulation.soundingMs, 0), sounding) << label;
        EXPECT_EQ(articulation.silenceMs, silence) << label;
    }
    Articulation articulation;
    articulation.articulate(u"s", 1, 60);
    articulation.articulate(u"p", 2, 60);
    articulation.articulate(u"?", 4, 60);
    EXPECT_EQ(articulation.velocity, 120);
    EXPECT_EQ(articulation.soundingMs, 250);
    EXPECT_EQ(articulation.silenceMs, 1970);
}

TEST(PlayRange, BoxesAndTheirAsymmetry) {
    struct Case {
        bool startBox;
        const char* typed;
        int start;
        int end;
        const char* shown;
    };
    // Each on a range of entries 4..7 in a melody of 10.
    const std::vector<Case> cases{
        {true, "x", 3, 7, "4"},    {true, "", 3, 7, "4"},
        {true, "1", 0, 7, "1"},    {true, "8", 7, 7, "8"},
        {true, "9", 4, 7, "5"},    {true, "0", 4, 7, "5"},
        {true, "-2", 4, 7, "5"},   {true, "2,5", 2, 7, "3"},
        {false, "x", 4, 7, "8"},   {false, "", 4, 7, "8"},
        {false, "5", 4, 4, "5"},   {false, "4", 4, 7, "8"},
        {false, "10", 4, 9, "10"}, {false, "11", 4, 7, "8"},
        {false, "4,2", 4, 4, "5"}, {false, "99999999999", 4, 7, "8"},
    };
    for (const Case& c : cases) {
        PlayRange range;
        range.select(4, 7, 10);
        const QString typed = QLatin1String(c.typed);
        const QString shown =
            c.startBox ? range.validateStart(typed) : range.validateEnd(typed, 10);
        EXPECT_EQ(shown, QLatin1String(c.shown)) << c.startBox << c.typed;
        EXPECT_EQ(range.start(), c.start) << c.startBox << c.typed;
        EXPECT_EQ(range.end(), c.end) << c.startBox << c.typed;
    }
    PlayRange range;
    range.coverAll(3);
    EXPECT_EQ(range.validateStart(QStringLiteral("x")), QStringLiteral("1"));
}

TEST(PlayRange, ArrowsStopAtTheirLimits) {
    using Arrow = PlayRange::Arrow;
    const std::vector<std::tuple<Arrow, int, int>> cases{{Arrow::StartDown, 0, 3},
                                                         {Arrow::StartUp, 2, 3},
                                                         {Arrow::EndDown, 1, 2},
                                                         {Arrow::EndUp, 1, 4}};
    for (const auto& [arrow, start, end] : cases) {
        PlayRange range;
        range.select(1, 3, 5);
        for (int i = 0; i < 5; ++i)
            range.move(arrow, 5);
        EXPECT_EQ(range.start(), start);
        EXPECT_EQ(range.end(), end);
        EXPECT_FALSE(range.move(arrow, 5));
    }
}
