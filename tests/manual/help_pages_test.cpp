#include "manual/help_pages.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocumentFragment>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

const QString kPages = QStringLiteral(HELP_PAGES);

/// A text as the search compares it: without accents, in lower case, with straight apostrophes and
/// a full stop for dots.
QString plainest(const QString& text) {
    static const QRegularExpression accents(QStringLiteral("\\p{M}"));
    const QString base = text.normalized(QString::NormalizationForm_D).remove(accents);
    return base.toLower().replace(u'\u2019', u'\'').replace(u'…', u'.');
}

/// A picture counts as a blank.
QString wordsOfPage(const HelpPage& page) {
    QFile file(kPages + '/' + page.file);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const auto text = QTextDocumentFragment::fromHtml(QString::fromUtf8(file.readAll()));
    return text.toPlainText().replace(QChar(QChar::ObjectReplacementCharacter), u' ').simplified();
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
        const auto found = manual.search(random() % 2 ? question.toUpper() : plainest(question));
        words = plainest(question).simplified().split(' ');
        const auto hasAll = [&](const HelpPage& page) {
            const QString text = texts[page.file] + ' ' + plainest(page.title);
            return std::ranges::all_of(words, [&](auto& word) { return text.contains(word); });
        };
        EXPECT_EQ(found.size(), std::ranges::count_if(manual.pages(), hasAll));
        std::pair<bool, qsizetype> before{true, 1'000'000};
        for (const HelpMatch& match : found) {
            const QString title = plainest(match.title);
            const QString& text = texts[match.file];
            const std::pair rank{
                std::ranges::any_of(words, [&](auto& word) { return title.contains(word); }),
                text.count(words.front())};
            EXPECT_LE(rank, before) << "the titled first, then by how often";
            before = rank;
            // Whole words around the first match, and dots where the text goes on.
            const bool dotsAfter = match.snippet.endsWith(u'…');
            const bool dotsBefore = match.snippet.startsWith(u'…');
            const QString snippet = plainest(match.snippet.mid(dotsBefore).chopped(dotsAfter));
            EXPECT_TRUE(snippet.size() <= 130 && (snippet.size() > 60 || !dotsAfter));
            EXPECT_TRUE(snippet.contains(words.front()) || rank.second == 0);
            EXPECT_TRUE(dotsBefore != text.startsWith(snippet) &&
                        dotsAfter != text.endsWith(snippet));
            EXPECT_TRUE((' ' + text + ' ').contains(' ' + snippet + ' ')) << qPrintable(snippet);
        }
    }
    EXPECT_TRUE(manual.search(QStringLiteral("  ")).empty());
}
