#include "manual/help_pages.h"

#include <QFile>
#include <QTextDocumentFragment>

#include <algorithm>

namespace {

constexpr qsizetype kSnippetBefore = 40;
constexpr qsizetype kSnippetLength = 130;
constexpr QChar kApostrophe(u'\u2019');
/// The character that stands for a picture in a plain text.
constexpr QChar kPicture = QChar::ObjectReplacementCharacter;

QString contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList listOf(const QString& text) {
    QStringList list;
    for (const QString& item : text.split(QLatin1Char(','), Qt::SkipEmptyParts))
        list << item.trimmed();
    list.removeAll(QString());
    return list;
}

/// Some text around a place, cut between words.
QString snippetAt(const QString& text, qsizetype place) {
    qsizetype from = std::max<qsizetype>(0, place - kSnippetBefore);
    if (const qsizetype blank = text.indexOf(QLatin1Char(' '), from); from > 0) {
        // A long word, such as a path, begins before all of that.
        from = blank < place ? blank + 1 : text.lastIndexOf(QLatin1Char(' '), place) + 1;
    }
    qsizetype to = std::min(text.size(), from + kSnippetLength);
    if (const qsizetype blank = text.lastIndexOf(QLatin1Char(' '), to);
        to < text.size() && blank > place)
        to = blank;
    const QString dots = QStringLiteral("…");
    return (from > 0 ? dots : QString()) + text.mid(from, to - from) +
           (to < text.size() ? dots : QString());
}

}  // namespace

HelpPages::HelpPages(const QString& folder) : folder_(folder) {
    if (!folder_.isEmpty())
        readContents();
}

/// Lines are "* section" or "page | title | windows | words of the index".
void HelpPages::readContents() {
    const QString contents = contentsOf(folder_ + QLatin1String("/contenuti.txt"));
    QString section;
    for (const QString& raw : contents.split(QLatin1Char('\n'))) {
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1Char('*'))) {
            section = line.mid(1).trimmed();
            continue;
        }
        const QStringList fields = line.split(QLatin1Char('|'));
        pages_.push_back({fields.value(0).trimmed(), fields.value(1).trimmed(), section,
                          listOf(fields.value(2))});
    }
}

QString HelpPages::pageOf(const QString& window) const {
    const auto found = std::find_if(pages_.begin(), pages_.end(), [&window](const HelpPage& page) {
        return page.windows.contains(window);
    });
    return found == pages_.end() ? QString() : found->file;
}

const std::vector<HelpPages::Text>& HelpPages::texts() const {
    if (!texts_.empty())
        return texts_;
    for (const HelpPage& page : pages_) {
        const QString html = contentsOf(folder_ + QLatin1Char('/') + page.file);
        QString plain = QTextDocumentFragment::fromHtml(html).toPlainText();
        plain = plain.replace(kPicture, QLatin1Char(' ')).simplified();
        texts_.push_back({plain, folded(plain)});
    }
    return texts_;
}

std::vector<HelpMatch> HelpPages::search(const QString& question) const {
    const QStringList words = wordsOf(question);
    if (words.isEmpty())
        return {};
    struct Ranked {
        HelpMatch match;
        bool inTitle;
        qsizetype times;
    };
    std::vector<Ranked> found;
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        const Text& text = texts()[i];
        const QString title = folded(pages_[i].title);
        const auto has = [&](const QString& word) {
            return text.folded.contains(word) || title.contains(word);
        };
        if (!std::all_of(words.begin(), words.end(), has))
            continue;
        const qsizetype place = std::max<qsizetype>(0, text.folded.indexOf(words.front()));
        const bool inTitle = std::any_of(words.begin(), words.end(),
                                         [&](const QString& word) { return title.contains(word); });
        found.push_back({{pages_[i].file, pages_[i].title, snippetAt(text.plain, place)},
                         inTitle,
                         text.folded.count(words.front())});
    }
    std::stable_sort(found.begin(), found.end(), [](const Ranked& a, const Ranked& b) {
        return a.inTitle != b.inTitle ? a.inTitle : a.times > b.times;
    });
    std::vector<HelpMatch> matches;
    matches.reserve(found.size());
    for (Ranked& ranked : found)
        matches.push_back(std::move(ranked.match));
    return matches;
}

QString HelpPages::folded(const QString& text) {
    QString folded = text;
    for (QChar& c : folded) {
        const QString parts = c.decomposition();
        c = c == kApostrophe ? QLatin1Char('\'') : (parts.isEmpty() ? c : parts.front()).toLower();
    }
    return folded;
}

QStringList HelpPages::wordsOf(const QString& question) {
    return folded(question).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
