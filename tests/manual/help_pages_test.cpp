#include "manual/help_pages.h"

#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

const QString kPages = QStringLiteral(HELP_PAGES);

/// A text as the search compares it: without accents, in lower case, with straight apostrophes and
/// a full stop for dots.
QString plainest(const QString& text) {
    static const QRegularExpression accents(QStringLiteral("\\p{M}"));
    return text.normalized(QString::NormalizationForm_D)
        .remove(accents)
        .toLower()
        .replace(u'\u2019', u'\'')
        .replace(u'…', u'.');
}

/// The words of a page, taken from its file without a parser.
QString wordsOfPage(const HelpPage& page) {
    static const QRegularExpression inLine(
        QStringLiteral("</?(a|b|i|em|code|kbd|strong)\\b[^>]*>"));
    static const QRegularExpression marks(QStringLiteral("^.*<body[^>]*>|<[^>]*>"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QFile file(kPages + '/' + page.file);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll()).remove(inLine).replace(marks, " ");
    for (const auto& [name, sign] :
         {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&nbsp;", " "}, {"&amp;", "&"}})
        text.replace(QLatin1String(name), QLatin1String(sign));
    return text.simplified();
}

}  // namespace

TEST(HelpPages, SearchFindsThePagesThatHaveAllWordsTheTitledFirst) {
    const HelpPages manual(kPages);
    std::map<QString, QString> texts;
    for (const HelpPage& page : manual.pages())
        texts[page.file] = plainest(wordsOfPage(page));
    std::mt19937 random(5);
    for (int i = 0; i < 1000; ++i) {
        const HelpPage& origin = manual.pages()[random() % manual.pages().size()];
        const QStringList offered = (i % 3 ? wordsOfPage(origin) : origin.title).split(' ');
        QStringList words;
        for (auto count = random() % 3 + 1; count > 0; --count)
            words << offered[static_cast<qsizetype>(random() % offered.size())];
        const QString question = words.join(QStringLiteral("  "));
        SCOPED_TRACE(qPrintable(question));
        for (QString& word : words)
            word = plainest(word);
        const auto hasAll = [&words](const QString& text) {
            return std::all_of(words.begin(), words.end(),
                               [&](const QString& word) { return text.contains(word); });
        };
        const auto found = manual.search(random() % 2 ? question.toUpper() : plainest(question));
        EXPECT_EQ(
            found.size(),
            std::count_if(manual.pages().begin(), manual.pages().end(), [&](const HelpPage& page) {
                return hasAll(texts[page.file] + ' ' + plainest(page.title));
            }));
        std::pair<bool, qsizetype> before{true, 1'000'000};
        for (const HelpMatch& match : found) {
            const QString title = plainest(match.title);
            const QString& text = texts[match.file];
            EXPECT_TRUE(hasAll(text + ' ' + title));
            const std::pair rank{
                std::any_of(words.begin(), words.end(),
                            [&](const QString& word) { return title.contains(word); }),
                text.count(words.front())};
            EXPECT_LE(rank, before) << "the titled first, then by how often";
            before = rank;
            // Whole words around the first match, and dots where the text goes on.
            const bool dotsBefore = match.snippet.startsWith(u'…');
            const bool dotsAfter = match.snippet.endsWith(u'…');
            const QString snippet = plainest(match.snippet.mid(dotsBefore).chopped(dotsAfter));
            EXPECT_TRUE(snippet.size() <= 130 && (snippet.size() > 60 || !dotsAfter))
                << qPrintable(snippet);
            EXPECT_TRUE(snippet.contains(words.front()) || rank.second == 0) << qPrintable(snippet);
            EXPECT_EQ(dotsBefore, !text.startsWith(snippet));
            EXPECT_EQ(dotsAfter, !text.endsWith(snippet));
            EXPECT_TRUE((' ' + text + ' ').contains(' ' + snippet + ' ')) << qPrintable(snippet);
        }
    }
    EXPECT_TRUE(manual.search(QStringLiteral("  ")).empty());
    EXPECT_TRUE(HelpPages(kPages + QStringLiteral("/nessuna")).pages().empty());
}
