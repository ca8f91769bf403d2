#pragma once

#include "composer/library/bookmark_commands.h"

#include <QGroupBox>
#include <QStringList>

#include <memory>

namespace Ui {
class BookmarkPanel;
}

/// The bookmarks' frame `frBookMark`. A row is a place in the list, -1 if none is
/// selected.
class BookmarkPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit BookmarkPanel(QWidget* parent = nullptr);
    ~BookmarkPanel() override;

    /// Fills the list; a call with the same items costs nothing. In a list of the same length the
    /// selected place stays selected, otherwise the selected text if it is still there.
    void showBookmarks(const QStringList& items);

    int row() const;
    void select(int row);

Q_SIGNALS:
    void addRequested();
    void playRequested(int row);  ///< `cmdPlayBm`, a double click, or Enter
    void renameRequested(int row);
    void modifyRequested(int row);
    void moveRequested(int row, BookmarkCommands::Direction direction);
    void removeRequested(int row);
    void hideRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void play();
    int rowAfter(const QStringList& items) const;

    std::unique_ptr<Ui::BookmarkPanel> ui_;
    QStringList shown_;
};
