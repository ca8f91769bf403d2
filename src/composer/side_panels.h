#pragma once

#include <QObject>

class BookmarkPanel;
class BrowserPanel;

namespace Ui {
class frmComposer;
}

/// The column beside the staff with the edit frame, the browser and the bookmarks.
///
/// It keeps its width, which hangs on the type alone, whether a panel is open or not, so that
/// opening one moves nothing else; panels that have no room below each other are scrolled. While
/// none is open, a hint stands there.
class SidePanels : public QObject {
    Q_OBJECT

public:
    explicit SidePanels(Ui::frmComposer& ui);

    BrowserPanel& browser() { return *browser_; }
    BookmarkPanel& bookmarks() { return *bookmarks_; }

    /// The hint: how to write the first note, or how to change one.
    void showHint(bool emptyMelody);

    /// A panel that opens is scrolled into view.
    void showEditFrame(bool on);
    void showBrowser(bool on);
    void showBookmarks(bool on);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void fit();
    void reveal(QWidget& panel);
    void showPanel(QWidget& panel, bool on);

    Ui::frmComposer& ui_;
    BrowserPanel* browser_;
    BookmarkPanel* bookmarks_;
};
