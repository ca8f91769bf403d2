#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// A page of the manual.
struct HelpPage {
    QString file;         ///< its name in the folder of the pages
    QString title;        ///< as the contents call it
    QString section;      ///< the heading that it stands under, or empty
    QStringList windows;  ///< the objectNames of the windows and frames that it explains
};

/// A page that has all words of a question.
struct HelpMatch {
    QString file;
    QString title;
    QString snippet;  ///< the text around the first match
};

/// The manual's contents, from the list "contenuti.txt" in the folder of its pages, and a search of
/// their text. Upper case and accents make no difference to a search.
class HelpPages {
public:
    /// A folder without a list, or an empty path, has no pages.
    explicit HelpPages(const QString& folder);

    const QString& folder() const { return folder_; }
    const std::vector<HelpPage>& pages() const { return pages_; }

    /// The page about a window, or nothing.
    QString pageOf(const QString& window) const;

    /// The pages that have all words of the question, those with one in the title first. Nothing
    /// for a question without words.
    std::vector<HelpMatch> search(const QString& question) const;

    /// The text as the search compares it: as long as the text, in lower case, without accents.
    static QString folded(const QString& text);
    static QStringList wordsOf(const QString& question);

private:
    struct Text {
        QString plain;
        QString folded;
    };

    void readContents();
    const std::vector<Text>& texts() const;

    QString folder_;
    std::vector<HelpPage> pages_;
    mutable std::vector<Text> texts_;  ///< of each page, read at the first search
};
