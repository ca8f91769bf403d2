#include "manual/help_pages.h"

#include "core/intervals.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

const QString kPages = QStringLiteral(HELP_PAGES);
const QString kSources = QStringLiteral(PROGRAM_SOURCES);

QString read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList captured(const QString& text, const char* pattern) {
    QStringList found;
    const QRegularExpression expression(QLatin1String(pattern),
                                        QRegularExpression::DotMatchesEverythingOption);
    for (auto it = expression.globalMatch(text); it.hasNext();)
        found << it.next().captured(1);
    return found;
}

QString unescaped(QString text) {
    return text.replace(QLatin1String("&lt;"), QLatin1String("<"))
        .replace(QLatin1String("&gt;"), QLatin1String(">"))
        .replace(QLatin1String("&quot;"), QLatin1String("\""))
        .replace(QLatin1String("&amp;"), QLatin1String("&"));
}

/// All texts of the program's sources in one, without the marks of mnemonics and line breaks.
QString textsOfTheProgram() {
    QString all;
    QDirIterator files(kSources, {"*.ui", "*.cpp", "*.h"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QString text = read(path);
        if (path.endsWith(QLatin1String(".ui")))
            text = unescaped(unescaped(text));
        all += text;
    }
    for (const intervals::Interval& interval : intervals::kAll)
        all += intervals::nameOf(interval);
    return all.replace(QRegularExpression(QStringLiteral("\"\\s*\n\\s*u?\"")), QString())
        .remove(QLatin1Char('&'))
        .simplified();
}

QStringList filesOf(const std::vector<HelpMatch>& matches) {
    QStringList files;
    for (const HelpMatch& match : matches)
        files << match.file;
    return files;
}

TEST(Manual, HasThePagesOfItsContentsAndEveryLinkAndPictureLeadsSomewhere) {
    const HelpPages manual(kPages);
    QStringList listed;
    for (const HelpPage& page : manual.pages())
        listed << page.file;
    QStringList present = QDir(kPages).entryList({"*.html"});
    std::sort(present.begin(), present.end());
    QStringList sorted = listed;
    std::sort(sorted.begin(), sorted.end());
    ASSERT_EQ(sorted, present);

    QStringList reached{listed.front()};
    for (int i = 0; i < reached.size(); ++i) {
        const QString text = read(kPages + '/' + reached[i]);
        for (const QString& target : captured(text, "(?:href|src)=\"([^\"]+)\"")) {
            EXPECT_TRUE(QFile::exists(kPages + '/' + target))
                << qPrintable(reached[i]) << ": " << qPrintable(target);
            if (target.endsWith(QLatin1String(".html")) && !reached.contains(target))
                reached << target;
        }
    }
    EXPECT_EQ(reached.size(), listed.size()) << "some page cannot be reached from the first one";
}

TEST(Manual, PagesDeclareTheirCharactersAndTheTitleOfTheContents) {
    const HelpPages manual(kPages);
    for (const HelpPage& page : manual.pages()) {
        const QString text = read(kPages + '/' + page.file);
        EXPECT_TRUE(text.contains(QLatin1String("charset=utf-8"))) << qPrintable(page.file);
        EXPECT_EQ(captured(text, "<title>(.*?)</title>"), QStringList(page.title));
        EXPECT_EQ(captured(text, "<h1>(.*?)</h1>"), QStringList(page.title));
    }
}

TEST(Manual, EveryWindowHasAPage) {
    const HelpPages manual(kPages);
    QDirIterator forms(kSources, {"frm*.ui"}, QDir::Files, QDirIterator::Subdirectories);
    int windows = 0;
    for (; forms.hasNext(); ++windows) {
        forms.next();
        const QString window = forms.fileInfo().completeBaseName();
        EXPECT_FALSE(manual.pageOf(window).isEmpty()) << qPrintable(window);
    }
    EXPECT_GT(windows, 5);
    EXPECT_EQ(manual.pageOf(QStringLiteral("main")), QStringLiteral("principale.html"));
}

/// What a page shows in bold is a text of the program, to the letter.
TEST(Manual, QuotesTheProgramExactly) {
    const QString program = textsOfTheProgram();
    const HelpPages manual(kPages);
    int quotes = 0;
    for (const HelpPage& page : manual.pages()) {
        for (const QString& quote : captured(read(kPages + '/' + page.file), "<b>(.*?)</b>")) {
            ++quotes;
            EXPECT_TRUE(program.contains(unescaped(quote).remove('&').simplified()))
                << qPrintable(page.file) << ": " << qPrintable(quote);
        }
    }
    EXPECT_GT(quotes, 100);
}

TEST(HelpPages, SearchDoesNotMindAccentsAndCase) {
    const HelpPages manual(kPages);
    const QStringList found = filesOf(manual.search(QStringLiteral("tonalità")));
    EXPECT_THAT(found, testing::Contains(QStringLiteral("promemoria.html")));
    EXPECT_EQ(filesOf(manual.search(QStringLiteral("TONALITA"))), found);
    EXPECT_EQ(filesOf(manual.search(QStringLiteral("  tonalita' ").remove('\''))), found);
    // The page that is about it comes first, and a typewriter's apostrophe finds the printed one.
    EXPECT_EQ(filesOf(manual.search(QStringLiteral("accordi"))).front(),
              QStringLiteral("accordi.html"));
    EXPECT_FALSE(manual.search(QStringLiteral("un'ottava")).empty());
}

TEST(HelpPages, SearchWantsAllWordsAndShowsOne) {
    const HelpPages manual(kPages);
    const auto both = manual.search(QStringLiteral("terzina staccato"));
    ASSERT_FALSE(both.empty());
    EXPECT_EQ(both.front().file, QStringLiteral("composizione.html"));
    EXPECT_TRUE(HelpPages::folded(both.front().snippet).contains(QStringLiteral("terzina")))
        << qPrintable(both.front().snippet);
    EXPECT_TRUE(manual.search(QStringLiteral("terzina supercalifragilistico")).empty());
    EXPECT_TRUE(manual.search(QStringLiteral("  ")).empty());
    EXPECT_TRUE(HelpPages(kPages + QStringLiteral("/nessuna")).pages().empty());
}

}  // namespace
