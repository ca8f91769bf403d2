#include "composer/composer_menu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include <array>

/// An item of the menu bar. The context menu shows the same action, or one of its own with the name
/// "…Cont" and the same effect, or none.
struct ComposerMenu::Item {
    enum class InContext { No, SameAction, OwnAction };

    const char* name;
    const char* caption;  ///< to be shown by `tr`
    const char* shortcut;
    void (ComposerMenu::*chosen)();
    InContext inContext = InContext::No;
    bool separatorBefore = false;
};

ComposerMenu::ComposerMenu(QWidget& window)
    : bar_(new QMenuBar(&window)), context_(new QMenu(&window)) {
    using InContext = Item::InContext;
    bar_->setObjectName(QStringLiteral("menu"));
    context_->setObjectName(QStringLiteral("mnuContestuale"));

    QMenu& file = *bar_->addMenu(tr("&File"));
    QMenu& edit = *bar_->addMenu(tr("&Modifica"));
    QMenu& play = *bar_->addMenu(tr("&Esecuzione"));

    undo_ = add({"mnuAnnulla", QT_TR_NOOP("Annulla"), "Ctrl+Z", &ComposerMenu::undoChosen,
                 InContext::SameAction},
                edit);
    redo_ = add({"mnuRipeti", QT_TR_NOOP("Ripeti"), "Ctrl+Y", &ComposerMenu::redoChosen,
                 InContext::SameAction},
                edit);
    for (QAction* action : {undo_, redo_})
        action->setAutoRepeat(true);
    add({"mnuMemorizza", QT_TR_NOOP("Memorizza riferimento…"), "Ctrl+B",
         &ComposerMenu::addBookmarkChosen, InContext::SameAction, true},
        edit);
    addDirectInsertion(edit);
    add({"mnuBattute", QT_TR_NOOP("Battute…"), "", &ComposerMenu::barsChosen}, edit);
    const std::array<Item, 3> files{{
        {"mnuApri", QT_TR_NOOP("Apri…"), "Ctrl+O", &ComposerMenu::openChosen, InContext::OwnAction,
         true},
        {"mnuSalva", QT_TR_NOOP("Salva"), "Ctrl+S", &ComposerMenu::saveChosen,
         InContext::OwnAction},
        {"mnuSaveAs", QT_TR_NOOP("Salva con nome…"), "Ctrl+Shift+S", &ComposerMenu::saveAsChosen,
         InContext::OwnAction},
    }};
    for (const Item& item : files)
        add(item, file);
    exportAudio_ = add({"mnuEsportaAudio", QT_TR_NOOP("Esporta audio (WAV)…"), "Ctrl+E",
                        &ComposerMenu::exportAudioChosen, InContext::No, true},
                       file);
    exportMidi_ = add(
        {"mnuEsportaMidi", QT_TR_NOOP("Esporta MIDI…"), "", &ComposerMenu::exportMidiChosen}, file);
    exportPdf_ = add(
        {"mnuEsportaPdf", QT_TR_NOOP("Esporta PDF…"), "", &ComposerMenu::exportPdfChosen}, file);
    print_ = add({"mnuStampa", QT_TR_NOOP("Stampa…"), "", &ComposerMenu::printChosen}, file);
    exportMusicXml_ = add({"mnuEsportaMusicXml", QT_TR_NOOP("Esporta MusicXML…"), "",
                           &ComposerMenu::exportMusicXmlChosen},
                          file);
    exportBraille_ = add({"mnuEsportaBraille", QT_TR_NOOP("Esporta braille…"), "",
                          &ComposerMenu::exportBrailleChosen},
                         file);
    add({"mnuImporta", QT_TR_NOOP("Importa…"), "", &ComposerMenu::importChosen}, file);
    const std::array<Item, 3> others{{
        {"mnuSalvaA", QT_TR_NOOP("Salva su dischetto A:"), "", &ComposerMenu::saveToFloppyChosen,
         InContext::No, true},
        {"mnuCopyFromA", QT_TR_NOOP("Copia files da dischetto…"), "",
         &ComposerMenu::copyFromFloppyChosen},
        {"mnuChiudi", QT_TR_NOOP("Chiudi"), "Ctrl+W", &ComposerMenu::closeChosen, InContext::No,
         true},
    }};
    for (const Item& item : others)
        add(item, file);
    const std::array<Item, 3> plays{{
        {"mnuPlayRitardo", QT_TR_NOOP("Play (ritardo 3 Sec.)"), "Ctrl+P",
         &ComposerMenu::delayedPlayChosen, InContext::SameAction, true},
        {"mnuOrgano", QT_TR_NOOP("Organo"), "", &ComposerMenu::organChosen, InContext::SameAction,
         true},
        {"mnuPiano", QT_TR_NOOP("Pianoforte"), "", &ComposerMenu::pianoChosen,
         InContext::SameAction},
    }};
    for (const Item& item : plays)
        add(item, play);
    addSilence(play);
    enableUndo(false, false);
}

QAction* ComposerMenu::add(const Item& item, QMenu& menu) {
    if (item.separatorBefore && !menu.isEmpty())
        menu.addSeparator();
    if (item.separatorBefore && item.inContext != Item::InContext::No)
        context_->addSeparator();

    const auto make = [&](const QString& name, QMenu& owner) {
        QAction* action = owner.addAction(tr(item.caption));
        action->setObjectName(name);
        action->setAutoRepeat(false);
        connect(action, &QAction::triggered, this, item.chosen);
        return action;
    };
    const QString name = QString::fromUtf8(item.name);
    QAction* action = make(name, menu);
    action->setShortcut(QKeySequence(QString::fromUtf8(item.shortcut)));
    if (item.inContext == Item::InContext::OwnAction)
        make(name + QStringLiteral("Cont"), *context_);
    else if (item.inContext == Item::InContext::SameAction)
        context_->addAction(action);
    return action;
}

void ComposerMenu::addDirectInsertion(QMenu& menu) {
    menu.addSeparator();
    directInsertion_ = menu.addAction(tr("Inserimento diretto"));
    directInsertion_->setObjectName(QStringLiteral("mnuInsDiretto"));
    directInsertion_->setCheckable(true);
    directInsertion_->setAutoRepeat(false);
    directInsertion_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_I));
    directInsertion_->setStatusTip(
        tr("Ogni tasto di un pianoforte e ogni clic sul pentagramma inserisce la sua nota"));
    connect(directInsertion_, &QAction::triggered, this, &ComposerMenu::directInsertionChosen);
}

void ComposerMenu::setInsertsDirectly(bool on) {
    directInsertion_->setChecked(on);
}

void ComposerMenu::addSilence(QMenu& menu) {
    menu.addSeparator();
    silence_ = menu.addAction(tr("Silenzio"));
    silence_->setObjectName(QStringLiteral("mnuSilenzio"));
    silence_->setCheckable(true);
    silence_->setStatusTip(tr("Nessun annuncio per chi usa un lettore di schermo"));
    connect(silence_, &QAction::toggled, this, &ComposerMenu::silenceChosen);
}

void ComposerMenu::setSilent(bool on) {
    silence_->setChecked(on);
}

void ComposerMenu::enableUndo(bool undo, bool redo) {
    undo_->setEnabled(undo);
    redo_->setEnabled(redo);
}

void ComposerMenu::enableExport(bool audio, bool notes) {
    exportAudio_->setEnabled(audio);
    for (QAction* action : {exportMidi_, exportPdf_, print_, exportMusicXml_, exportBraille_})
        action->setEnabled(notes);
}
