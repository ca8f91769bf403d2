#pragma once

#include "manual/help_pages.h"

#include <QWidget>

#include <memory>

class QTreeWidgetItem;

namespace Ui {
class HelpWindow;
}

/// The built-in viewer of the manual: contents and search on the left, the page on the right.
///
/// It can be used while a modal window is open, whether that came before it or after, and what is
/// typed into it plays nothing elsewhere.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    explicit HelpWindow(const QString& folder);
    ~HelpWindow() override;

    const HelpPages& pages() const { return pages_; }

    /// Opens a page by its file name and comes to the front; without a name the page on show stays.
    void showPage(const QString& file);

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void fillContents();
    void connectControls();
    void addShortcuts();
    void openPage(const QString& file);
    void selectInContents(const QString& file);
    void search();
    void openMatch(int row);
    void joinModalWindow();

    std::unique_ptr<Ui::HelpWindow> ui_;
    HelpPages pages_;
    bool sized_ = false;
};
