#pragma once

#include "composer/frmBattute.h"

#include <QObject>

class ComposerKeyboard;
class ComposerMenu;
class QWidget;
class Runtime;
class SidePanels;
struct ComposerModel;
struct ComposerState;

/// The menu items that take melodies elsewhere and back: the exports and the floppy disk.
class ExportControls : public QObject {
    Q_OBJECT

public:
    ExportControls(QWidget& window, Runtime& runtime, ComposerModel& model,
                   const ComposerState& state, SidePanels& side, ComposerKeyboard& keyboard,
                   ComposerMenu& menu);

private Q_SLOTS:
    void mnuEsportaAudio_Click();
    void mnuEsportaMidi_Click();
    void mnuEsportaPdf_Click();
    void mnuStampa_Click();
    void mnuEsportaMusicXml_Click();
    void mnuEsportaBraille_Click();
    void mnuSalvaA_Click();
    void mnuCopyFromA_Click();

private:
    bool askNotation(frmBattute::WithoutBars withoutBars);

    QWidget& window_;
    Runtime& runtime_;
    ComposerModel& model_;
    const ComposerState& state_;
    SidePanels& side_;
    ComposerKeyboard& keyboard_;
    score::Notation notation_;  ///< as it was chosen last
    score::Metre metre_;        ///< as it was chosen last
    bool withoutBars_ = false;  ///< as it was chosen last where it was offered
};
