#pragma once

#include "composer/entry_menu.h"

#include <QObject>

#include <cstdint>
#include <functional>

class ComposerKeyboard;
class ComposerMenu;
class ComposerSpeech;
class ComposerView;
class MelodyPresenter;
class Runtime;
struct ComposerModel;
struct EditOutcome;

namespace Ui {
class frmComposer;
}

/// The controls that enter and edit the melody: the palette, the edit frame, undo and redo.
class EntryControls : public QObject {
    Q_OBJECT

public:
    EntryControls(Ui::frmComposer& ui, Runtime& runtime, ComposerModel& model, ComposerView& view,
                  MelodyPresenter& presenter, ComposerKeyboard& keyboard, ComposerMenu& menu);

private Q_SLOTS:
    void cmdSimbNote_Click(std::uint8_t index);
    void cmdAttrNota_Click(std::uint8_t index);
    void ckConsAtt_Click();
    void lb_DblClick();
    void lblActNote_DblClick();
    void cmdInsNota_Click();
    void cmdInsPausa_Click();
    void cmdCanc_Click();
    void cmdReset_Click();

    void cmdModifica_Click();
    void cmdInsertNote_Click();
    void cmdCancNota_Click();
    void cmdDuplica_Click();
    void mnuCanc_Click();
    void mnuAnnulla_Click();
    void mnuRipeti_Click();

private:
    void connectPalette();
    void connectMenu();
    void connectEditFrame();
    void afterKeys(const std::function<void()>& act);
    void presentAtStep(const EditOutcome& outcome);
    void presentRestored(const EditOutcome& outcome, void (ComposerSpeech::*say)());

    Ui::frmComposer& ui_;
    Runtime& runtime_;
    ComposerModel& model_;
    ComposerView& view_;
    MelodyPresenter& presenter_;
    ComposerKeyboard& keyboard_;
    EntryMenu entryMenu_;
};
