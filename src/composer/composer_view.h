#pragma once

#include "composer/composer_speech.h"
#include "composer/melody/change_log.h"
#include "composer/playback/playback.h"
#include "composer/playback/range_arrows.h"
#include "composer/score/bar_view.h"

#include <QObject>

class SidePanels;
struct Composition;

namespace Ui {
class frmComposer;
}

/// Shows in the window's controls what plays, the range, the active note and the current entry, and
/// gives the controls what they announce.
class ComposerView : public QObject, public PlaybackView, public RangeView {
    Q_OBJECT

public:
    ComposerView(Ui::frmComposer& ui, SidePanels& side, const Composition& composition);

    ComposerSpeech& speech() { return speech_; }

    void showRange() override;
    void showRangeMarks();
    void showActiveNote();

    /// Shows the palette's choice, and the note that it would insert.
    void showSettings();

    /// Chooses how the staff shows the melody.
    void setNotation(const score::Notation& notation);

    /// Shows the entries that changed since the last time.
    void showEntries();
    void showCurrentEntry();

    /// After a change at the step index the edit frame names the note that now stands there.
    void showStepIndex();

    void showPlaying(bool playing) override;
    void enableCanc(bool enabled) override;
    void showEntryNumber(const QString& text) override;
    void showEntryName(const QString& text) override;
    void markKey(pitch::NoteIndex key, bool on) override;
    void focusPlay() override;
    void openEditFrame() override;
    void hideEditFrame() override;
    void showStepEntry(const StepEntry& entry) override;
    void untickLoop() override;
    void announceStep() override;

Q_SIGNALS:
    void playingShown();  ///< the playback began or ended

private:
    void showPreview();

    Ui::frmComposer& ui_;
    SidePanels& side_;
    const Composition& composition_;
    ComposerSpeech speech_{composition_};
    ChangeLog::Revision shownRevision_ = 0;
    int shownNumber_ = 0;  ///< of the entry in `lblNe`, 0 = none
};
