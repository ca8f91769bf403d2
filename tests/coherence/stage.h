#pragma once

#include "coherence/scenes.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QDialog>

#include <functional>

/// Opens a modal window, looks at it once the work is done, and closes it. The closing must come
/// after the look, which may have closed the window already.
void lookWhileOpen(TestWorld& world, QDialog& window, const std::function<void()>& work,
                   const Look& look, const std::function<void()>& close = {});

/// The same for a window that is opened elsewhere, as by a menu item.
void lookAtModal(TestWorld& world, const std::function<void()>& open, const Look& look);

void showComposerPlaying(const Look& look);
void showComposerLibrary(const Look& look);
void showComposerAllPanels(const Look& look);
void showCopyFromFloppy(const Look& look);

void showPitches(const Look& look);
void showPitchesStopped(const Look& look);
void showPitchReference(const Look& look);
void showIntervals(const Look& look);
void showChords(const Look& look);
void showChordsStopped(const Look& look);
void showEachExercise(const Look& look);
void showEarInstrument(const Look& look);

void showMain(const Look& look);
void showStatistics(const Look& look);
void showMetronome(const Look& look);
void showSequence(const Look& look);
void showNoteValues(const Look& look);
void showKeySignature(const Look& look);
void showDegrees(const Look& look);
void showIntervalTable(const Look& look);
void showMidiTest(const Look& look);
void showAbout(const Look& look);
void showHelp(const Look& look);
void showHelpSearch(const Look& look);
void showMessage(const Look& look);
void showQuestion(const Look& look);
void showInput(const Look& look);
