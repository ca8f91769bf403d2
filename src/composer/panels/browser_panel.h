#pragma once

#include <QGroupBox>
#include <QLabel>

#include <functional>
#include <memory>
#include <utility>

class MelodyLibrary;

namespace Ui {
class BrowserPanel;
}

/// A label that shows a long path with its middle left out; its text and its tooltip stay whole.
class PathLabel : public QLabel {
public:
    using QLabel::QLabel;

    void showPath(const QString& path);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The browser frame `Fr2`: the folders and melodies of the library. It shows and tells; a row is a
/// place in the library's entries, -1 if none is selected.
class BrowserPanel : public QGroupBox {
public:
    struct Handlers {
        std::function<void(int row)> play;  ///< `cmdEseguiFile`, a double click, or Enter
        std::function<void()> createFolder;
        std::function<void(int row)> remove;
        std::function<void(int row)> rename;
        std::function<void()> hide;
    };

    explicit BrowserPanel(QWidget* parent = nullptr);
    ~BrowserPanel() override;

    void setHandlers(Handlers handlers) { handlers_ = std::move(handlers); }

    /// Fills the list. As long as the folder is the same, its selected entry stays selected, and
    /// the arrow keys go on from where they were if it is gone.
    void showEntries(const MelodyLibrary& library);

    int row() const;
    void select(int row);
    void focusList();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void play();
    void markFolders(const MelodyLibrary& library);

    std::unique_ptr<Ui::BrowserPanel> ui_;
    Handlers handlers_;
    QString folder_;
};
