#pragma once

#include <QImage>
#include <QMap>
#include <QTextBrowser>

/// Shows a page of the manual in the window's own colours, its pictures no wider than the page. For
/// those who listen to it, Tab names each link, H and Shift+H go from heading to heading, and while
/// a screen reader runs the arrow keys move a cursor that it reads at.
class HelpBrowser : public QTextBrowser {
    Q_OBJECT

public:
    explicit HelpBrowser(QWidget* parent = nullptr);

    /// Marks every place where one of the words stands, and brings the first into view. The words
    /// are as the search compares them; without words no place is marked.
    void markWords(const QStringList& words);

    void zoomBy(int steps);
    void resetZoom();

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString styleSheetOfPage() const;
    QImage fitted(const QImage& picture) const;
    void goToHeading(bool next);

    QMap<QUrl, QImage> pictures_;  ///< of the page on show, as they are in their files
    int zoom_ = 0;
};
