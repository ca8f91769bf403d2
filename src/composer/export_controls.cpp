#include "composer/export_controls.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_state.h"
#include "composer/export_progress.h"
#include "composer/frmCopyFromA.h"
#include "composer/melody_sheet.h"
#include "composer/panels/browser_panel.h"
#include "composer/side_panels.h"

ExportControls::ExportControls(QWidget& window, Runtime& runtime, ComposerModel& model,
                               const ComposerState& state, SidePanels& side,
                               ComposerKeyboard& keyboard, ComposerMenu& menu)
    : window_(window),
      runtime_(runtime),
      model_(model),
      state_(state),
      side_(side),
      keyboard_(keyboard) {
    connect(&menu, &ComposerMenu::exportAudioChosen, this, &ExportControls::mnuEsportaAudio_Click);
    connect(&menu, &ComposerMenu::exportMidiChosen, this, &ExportControls::mnuEsportaMidi_Click);
    connect(&menu, &ComposerMenu::exportPdfChosen, this, &ExportControls::mnuEsportaPdf_Click);
    connect(&menu, &ComposerMenu::printChosen, this, &ExportControls::mnuStampa_Click);
    connect(&menu, &ComposerMenu::exportMusicXmlChosen, this,
            &ExportControls::mnuEsportaMusicXml_Click);
    connect(&menu, &ComposerMenu::exportBrailleChosen, this,
            &ExportControls::mnuEsportaBraille_Click);
    connect(&menu, &ComposerMenu::saveToFloppyChosen, this, &ExportControls::mnuSalvaA_Click);
    connect(&menu, &ComposerMenu::copyFromFloppyChosen, this, &ExportControls::mnuCopyFromA_Click);
}

void ExportControls::mnuEsportaAudio_Click() {
    keyboard_.releaseHeldKeys();
    model_.playback.stop();
    ExportProgress progress(runtime_, window_);
    model_.exporter.exportAudio([&progress](double share) { return progress.show(share); });
}

void ExportControls::mnuEsportaMidi_Click() {
    keyboard_.releaseHeldKeys();
    model_.playback.stop();
    model_.exporter.exportMidi();
}

void ExportControls::mnuEsportaPdf_Click() {
    if (!askNotation(frmBattute::WithoutBars::Offered))
        return;
    model_.exporter.exportPdf(notation_, [this](const QString& title) {
        return sheet_painter::pdf(sheetOf(model_.composition, title, notation_), usualPaper());
    });
}

void ExportControls::mnuStampa_Click() {
    keyboard_.releaseHeldKeys();
    model_.playback.stop();
    if (!model_.exporter.canPrint() || !askNotation(frmBattute::WithoutBars::Offered))
        return;
    model_.exporter.print(
        notation_, [this](QPagedPaintDevice& device, const QString& title, bool lastPageFirst) {
            return sheet_painter::paint(device, sheetOf(model_.composition, title, notation_),
                                        lastPageFirst);
        });
}

/// The bars that the staff shows are proposed, or else the choice of the last time. Music without
/// bars is chosen for itself: where it is not offered, the metre that was chosen before is
/// proposed.
bool ExportControls::askNotation(frmBattute::WithoutBars withoutBars) {
    keyboard_.releaseHeldKeys();
    model_.playback.stop();
    const bool offered = withoutBars == frmBattute::WithoutBars::Offered;
    score::Notation proposed{metre_, notation_.key};
    if (state_.staff.metre)
        proposed = state_.staff;
    else if (offered && withoutBars_)
        proposed.metre.reset();
    frmBattute box(proposed, withoutBars, &window_);
    if (box.exec() != QDialog::Accepted)
        return false;
    notation_ = box.chosen();
    metre_ = notation_.metre.value_or(metre_);
    if (offered)
        withoutBars_ = !notation_.metre;
    return true;
}

void ExportControls::mnuEsportaMusicXml_Click() {
    if (askNotation(frmBattute::WithoutBars::NotOffered))
        model_.exporter.exportMusicXml(notation_);
}

void ExportControls::mnuEsportaBraille_Click() {
    if (askNotation(frmBattute::WithoutBars::Offered))
        model_.exporter.exportBraille(notation_);
}

void ExportControls::mnuSalvaA_Click() {
    keyboard_.releaseHeldKeys();
    model_.floppy.save();
}

void ExportControls::mnuCopyFromA_Click() {
    keyboard_.releaseHeldKeys();
    frmCopyFromA(model_.floppy, model_.library.pathLabel(), &window_).exec();
    side_.browser().showEntries(model_.library);
}
