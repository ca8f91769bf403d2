#include "composer/composer_menu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include <array>
#include <utility>

/// An item of the menu bar. With a twin's name the context menu has an item of its own that does
/// the same; otherwise it shows this one, if at all.
struct ComposerMenu::Item {
    enum class InContext { No, Same, Twin };

    const char* name;
    const char* caption;
    const char* shortcut;
    std::function<void()> Handlers::*handler;
    InContext inContext = InContext::No;
    bool separatorBefore = false;
};

ComposerMenu::ComposerMenu(QWidget& window, Handlers handlers)
    : handlers_(std::move(handlers)), bar_(new QMenuBar(&window)), context_(new QMenu(&window)) {
    using InContext = Item::InContext;
    bar_->setObjectName(QStringLiteral("menu"));
    context_->setObjectName(QStringLiteral("mnuContestuale"));

    QMenu& file = *bar_->addMenu(QStringLiteral("&File"));
    QMenu& edit = *bar_->addMenu(QStringLiteral("&Modifica"));
    QMenu& play = *bar_->addMenu(QStringLiteral("&Esecuzione"));

    undo_ = add({"mnuAnnulla", "Annulla", "Ctrl+Z", &Handlers::undo, InContext::Same}, edit);
    redo_ = add({"mnuRipeti", "Ripeti", "Ctrl+Y", &Handlers::redo, InContext::Same}, edit);
    add({"mnuMemorizza", "Memorizza riferimento…", "Ctrl+B", &Handlers::addBookmark,
         InContext::Same, true},
        edit);
    const std::array<Item, 3> files{{
        {"mnuApri", "Apri…", "Ctrl+O", &Handlers::open, InContext::Twin, true},
        {"mnuSalva", "Salva", "Ctrl+S", &Handlers::save, InContext::Twin},
        {"mnuSaveAs", "Salva con nome…", "Ctrl+Shift+S", &Handlers::saveAs, InContext::Twin},
    }};
    for (const Item& item : files)
        add(item, file);
    exportAudio_ = add({"mnuEsportaAudio", "Esporta audio (WAV)…", "Ctrl+E", &Handlers::exportAudio,
                        InContext::No, true},
                       file);
    exportMidi_ = add({"mnuEsportaMidi", "Esporta MIDI…", "", &Handlers::exportMidi}, file);
    const std::array<Item, 3> others{{
        {"mnuSalvaA", "Salva su dischetto A:", "", &Handlers::saveToFloppy, InContext::No, true},
        {"mnuCopyFromA", "Copia files da dischetto…", "", &Handlers::copyFromFloppy},
        {"mnuChiudi", "Chiudi", "Ctrl+W", &Handlers::close, InContext::No, true},
    }};
    for (const Item& item : others)
        add(item, file);
    const std::array<Item, 3> plays{{
        {"mnuPlayRitardo", "Play (ritardo 3 Sec.)", "Ctrl+P", &Handlers::delayedPlay,
         InContext::Same, true},
        {"mnuOrgano", "Organo", "", &Handlers::organ, InContext::Same, true},
        {"mnuPiano", "Pianoforte", "", &Handlers::piano, InContext::Same},
    }};
    for (const Item& item : plays)
        add(item, play);
    enableUndo(false, false);
}

QAction* ComposerMenu::add(const Item& item, QMenu& menu) {
    if (item.separatorBefore && !menu.isEmpty())
        menu.addSeparator();
    if (item.separatorBefore && item.inContext != Item::InContext::No)
        context_->addSeparator();

    const auto make = [&](const QString& name, QMenu& owner) {
        QAction* action = owner.addAction(QString::fromUtf8(item.caption));
        action->setObjectName(name);
        const auto& handler = handlers_.*item.handler;
        action->setEnabled(handler != nullptr);
        if (handler)
            QObject::connect(action, &QAction::triggered, action, [handler] { handler(); });
        return action;
    };
    const QString name = QString::fromUtf8(item.name);
    QAction* action = make(name, menu);
    action->setShortcut(QKeySequence(QLatin1String(item.shortcut)));
    if (item.inContext == Item::InContext::Twin)
        make(name + QStringLiteral("Cont"), *context_);
    else if (item.inContext == Item::InContext::Same)
        context_->addAction(action);
    return action;
}

void ComposerMenu::enableUndo(bool undo, bool redo) {
    undo_->setEnabled(undo);
    redo_->setEnabled(redo);
}

void ComposerMenu::enableExport(bool audio, bool midi) {
    exportAudio_->setEnabled(audio);
    exportMidi_->setEnabled(midi);
}
