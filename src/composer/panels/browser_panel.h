#pragma once

#include <QGroupBox>
#include <QLabel>

#include <memory>

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

/// The browser frame `Fr2`: the folders and melodies of the library. A row is a place in the
/// library's entries, -1 if none is selected.
class BrowserPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit BrowserPanel(QWidget* parent = nullptr);
    ~BrowserPanel() override;

    /// Fills the list. As long as the folder is the same, its selected entry stays selected, and
    /// the arrow keys go on from where they were if it is gone.
    void showEntries(const MelodyLibrary& library);

    int row() const;
    void select(int row);
    void focusList();

Q_SIGNALS:
    void playRequested(int row);  ///< `cmdEseguiFile`, a double click, or Enter
    void createFolderRequested();
    void removeRequested(int row);
    void renameRequested(int row);
    void hideRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void play();
    void markFolders(const MelodyLibrary& library);

    std::unique_ptr<Ui::BrowserPanel> ui_;
    QString folder_;
};
