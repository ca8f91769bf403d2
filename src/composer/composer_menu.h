#pragma once

#include <QObject>

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

/// The composer's menu bar and its context menu.
class ComposerMenu : public QObject {
    Q_OBJECT

public:
    explicit ComposerMenu(QWidget& window);

    QMenuBar& bar() { return *bar_; }
    QMenu& context() { return *context_; }

    void enableUndo(bool undo, bool redo);
    /// `notes` is for the exports that need no sound.
    void enableExport(bool audio, bool notes);

    void setInsertsDirectly(bool on);
    void setSilent(bool on);

Q_SIGNALS:
    void openChosen();
    void saveChosen();
    void saveAsChosen();
    void importChosen();
    void exportAudioChosen();
    void exportMidiChosen();
    void exportPdfChosen();
    void printChosen();
    void exportMusicXmlChosen();
    void exportBrailleChosen();
    void saveToFloppyChosen();
    void copyFromFloppyChosen();
    void closeChosen();
    void undoChosen();
    void redoChosen();
    void addBookmarkChosen();
    void delayedPlayChosen();
    void organChosen();
    void pianoChosen();
    void directInsertionChosen(bool on);
    void barsChosen();
    void silenceChosen(bool silent);

private:
    struct Item;

    QAction* add(const Item& item, QMenu& menu);
    void addDirectInsertion(QMenu& menu);
    void addSilence(QMenu& menu);

    QMenuBar* bar_;
    QMenu* context_;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* exportAudio_ = nullptr;
    QAction* exportMidi_ = nullptr;
    QAction* directInsertion_ = nullptr;
    QAction* silence_ = nullptr;
    QAction* exportPdf_ = nullptr;
    QAction* print_ = nullptr;
    QAction* exportMusicXml_ = nullptr;
    QAction* exportBraille_ = nullptr;
};
