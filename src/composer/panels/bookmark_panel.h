#pragma once

#include "composer/library/bookmark_commands.h"

#include <QGroupBox>
#include <QStringList>

#include <functional>
#include <memory>
#include <utility>

namespace Ui {
class BookmarkPanel;
}

/// The bookmarks' frame `frBookMark`. It shows and tells; a row is a place in the list, -1 if none
/// is selected.
class BookmarkPanel : public QGroupBox {
public:
    struct Handlers {
        std::function<void()> add;
        std::function<void(int row)> play;  ///< `cmdPlayBm`, a double click, or Enter
        std::function<void(int row)> rename;
        std::function<void(int row)> modify;
        std::function<void(int row, BookmarkCommands::Direction)> move;
        std::function<void(int row)> remove;
        std::function<void()> hide;
    };

    explicit BookmarkPanel(QWidget* parent = nullptr);
    ~BookmarkPanel() override;

    void setHandlers(Handlers handlers) { handlers_ = std::move(handlers); }

    /// Fills the list; a call with the same items costs nothing. In a list of the same length the
    /// selected place stays selected, otherwise the selected text if it is still there.
    void showBookmarks(const QStringList& items);

    int row() const;
    void select(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void play();
    int rowAfter(const QStringList& items) const;

    std::unique_ptr<Ui::BookmarkPanel> ui_;
    Handlers handlers_;
    QStringList shown_;
};
