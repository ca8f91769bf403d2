#pragma once

#include <functional>

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

/// The composer's menu bar and its context menu. An item without a handler is there but disabled.
class ComposerMenu {
public:
    struct Handlers {
        std::function<void()> open;
        std::function<void()> save;
        std::function<void()> saveAs;
        std::function<void()> exportAudio;
        std::function<void()> exportMidi;
        std::function<void()> saveToFloppy;
        std::function<void()> copyFromFloppy;
        std::function<void()> close;
        std::function<void()> undo;
        std::function<void()> redo;
        std::function<void()> addBookmark;
        std::function<void()> delayedPlay;
        std::function<void()> organ;
        std::function<void()> piano;
    };

    ComposerMenu(QWidget& window, Handlers handlers);

    QMenuBar& bar() { return *bar_; }
    QMenu& context() { return *context_; }

    void enableUndo(bool undo, bool redo);
    void enableExport(bool audio, bool midi);

private:
    struct Item;

    QAction* add(const Item& item, QMenu& menu);

    Handlers handlers_;
    QMenuBar* bar_;
    QMenu* context_;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* exportAudio_ = nullptr;
    QAction* exportMidi_ = nullptr;
};
