#include "coherence/scenes.h"

#include "coherence/stage.h"

#include <QApplication>

using namespace std::chrono_literals;

void lookWhileOpen(TestWorld& world, QDialog& window, const std::function<void()>& work,
                   const Look& look, const std::function<void()>& close) {
    world.runtime.at(world.runtime.now() + 10ms, work);
    world.runtime.at(world.runtime.now() + 6s, [&] {
        look(window);
        if (close)
            close();
        if (window.isVisible())
            window.done(QDialog::Rejected);
    });
    window.exec();
}

void lookAtModal(TestWorld& world, const std::function<void()>& open, const Look& look) {
    world.runtime.at(world.runtime.now() + 1s, [&look] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!window)
            return;
        look(*window);
        if (window->isVisible())
            window->done(QDialog::Rejected);
    });
    open();
}

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> all{
        {"main", false, showMain},
        {"statistics", false, showStatistics},
        {"metronome", false, showMetronome},
        {"sequence", true, showSequence},
        {"composer", true, showComposerPlaying},
        {"library", true, showComposerLibrary},
        {"all-panels", true, showComposerAllPanels},
        {"copy-from-floppy", true, showCopyFromFloppy},
        {"pitches", false, showPitches},
        {"pitches-stopped", true, showPitchesStopped},
        {"pitch-reference", false, showPitchReference},
        {"intervals", false, showIntervals},
        {"chords", false, showChords},
        {"chords-stopped", true, showChordsStopped},
        {"each-exercise", true, showEachExercise},
        {"ear-instrument", true, showEarInstrument},
        {"reference-values", true, showNoteValues},
        {"reference-keys", true, showKeySignature},
        {"reference-degrees", true, showDegrees},
        {"reference-intervals", true, showIntervalTable},
        {"midi-test", true, showMidiTest},
        {"about", true, showAbout},
        {"help", true, showHelp},
        {"help-search", true, showHelpSearch},
        {"message", true, showMessage},
        {"question", true, showQuestion},
        {"input", true, showInput},
    };
    return all;
}
