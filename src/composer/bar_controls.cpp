#include "composer/bar_controls.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_state.h"
#include "composer/composer_view.h"
#include "composer/export/notation_export.h"
#include "composer/frmBattute.h"
#include "composer/melody/composition.h"
#include "platform/dialogs.h"

BarControls::BarControls(QWidget& window, Dialogs& dialogs, const Composition& composition,
                         ComposerState& state, ComposerView& view, ComposerKeyboard& keyboard,
                         ComposerMenu& menu)
    : window_(window),
      dialogs_(dialogs),
      composition_(composition),
      state_(state),
      view_(view),
      keyboard_(keyboard) {
    view_.setNotation(state_.staff);
    connect(&menu, &ComposerMenu::barsChosen, this, &BarControls::mnuBattute_Click);
}

void BarControls::mnuBattute_Click() {
    keyboard_.releaseHeldKeys();
    frmBattute box(state_.staff, frmBattute::WithoutBars::Offered, &window_);
    if (box.exec() != QDialog::Accepted)
        return;
    state_.staff = box.chosen();
    view_.setNotation(state_.staff);
    if (state_.staff.metre)
        tellWhatHasNoBars();
}

/// The staff has bars up to the first entry that cannot be written in them.
void BarControls::tellWhatHasNoBars() {
    const score::BarView bars = score::barsOf(composition_.melody, state_.staff);
    const QString fault = notation_export::faultOf(bars);
    if (!fault.isEmpty()) {
        dialogs_.message(fault + QLatin1Char('\n') +
                         tr("Le battute sono segnate fino alla prima di queste note."));
    }
}
