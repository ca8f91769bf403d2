#include "composer/melody/rhythm.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

TEST(Rhythm, ValuesHaveTheNamesOfTheirFractions) {
    std::vector<double> values;
    for (const auto& [name, duration] : rhythm::namedValues()) {
        EXPECT_EQ(rhythm::DurationToValueName(duration), name);
        EXPECT_EQ(rhythm::ValueNameToDuration(name, u"3"), 3 * duration);
        const QStringList fraction = QString(name).remove(u'(').section(u')', 0, 0).split(u'/');
        EXPECT_EQ(duration, 4 * fraction[0].toDouble() / fraction[1].toDouble() *
                                (name.endsWith(u").") ? 1.5 : 1));
        values.push_back(duration);
    }
    EXPECT_EQ(values, (std::vector{4.0, 6.0, 2.0, 3.0, 1.0, 1.5, 0.5, 0.75, 0.25, 0.375, 0.125,
                                   0.1875, 0.0625}));
    EXPECT_EQ(rhythm::DurationToValueName(5), "na");
    EXPECT_EQ(rhythm::ValueNameToDuration(u"na", u"4"), 4);
    EXPECT_EQ(rhythm::ValueNameToDuration(u"2/4", u"99999"), 2);
}

TEST(Rhythm, TextsSayNumbersInTheLocalesWay) {
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        const double number = std::ldexp(random() % 100'000, static_cast<int>(random() % 20) - 10) /
                              static_cast<double>(1 + 2 * (random() % 6));
        const QString text = QString::asprintf("%.15G", number);
        ASSERT_EQ(rhythm::durationText(number, u'.'), text);
        ASSERT_EQ(rhythm::durationText(number, u','), QString(text).replace(u'.', u','));
        ASSERT_EQ(rhythm::numberFromText(u' ' + text + u' '), text.toDouble());
        ASSERT_EQ(rhythm::numberFromText(QString(text).replace(u'.', u',')), text.toDouble());
    }
    for (const char* text : {"", "x", "1,5;", "1.234,5", "nan", "inf", "1e999"})
        EXPECT_FALSE(rhythm::numberFromText(QString(text))) << text;
    EXPECT_EQ(rhythm::decimalSeparator(QLocale(QLocale::Italian, QLocale::Italy)), u',');
    EXPECT_EQ(rhythm::decimalSeparator(QLocale(QLocale::English)), u'.');
    EXPECT_EQ(rhythm::decimalSeparator(QLocale(QLocale::Persian)), u',');
}
