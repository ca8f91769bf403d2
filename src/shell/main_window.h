#pragma once

#include "composer/composer_state.h"
#include "core/midi_keyboard.h"
#include "core/pitch.h"
#include "core/services.h"
#include "eartraining/ear_training_state.h"
#include "metronome/metronome_host.h"
#include "metronome/metronome_state.h"
#include "shell/help_key.h"
#include "shell/start_up.h"

#include <QMainWindow>
#include <QString>

#include <memory>

class QLabel;
class QToolButton;
class ReadingDrill;
class frmMetro;

namespace Ui {
class MainWindow;
}

/// The main window, `main`. It holds the note-reading drill, the metronome's frame and
/// the menu that opens every other window; closing it ends the program, but is refused while the
/// metronome beats.
class MainWindow : public QMainWindow,
                   private StartUpView,
                   private MetronomeHost,
                   private MidiKeysListener {
    Q_OBJECT

public:
    explicit MainWindow(const Services& services);
    ~MainWindow() override;

    /// The composer opens with the melody of a file once the program has started up.
    void openMelodyAtStart(const QString& path) { melodyAtStart_ = path; }

    void Esci_Click();
    void mnuLettura_Click();
    void Intonazione_Click();
    void mnuRint_Click();
    void mnuRac_Click();
    void mnuComposer_Click();
    void mnuPromemoria_Click();
    void mnuMetro_Click();
    void mnuMidiTest_Click();
    void Nominote1_Click();
    void Nominote2_Click();
    void Suono1_Click();
    void Suono2_Click();
    void mnuOrgano_Click();
    void mnuPiano_Click();
    void mnuNormale_Click();
    void mnuAutomatico_Click();
    void mnuAiuto_Click();
    void mnuVersione_Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void connectMenu();
    void showEarTraining(ExerciseCode exercise);
    void showComposer(const QString& melodyFile);
    void showStatus();
    void addGuide();

    void enableStartUpControls(bool on) override;
    void focusStart() override;

    void setMetronomeRunning(bool running) override;
    const QWidget& startColourSource() const override;
    const QWidget& stopColourSource() const override;

    void keyDown(int note) override;
    void keyUp(int note) override;
    void keyboardsChanged() override;

    Services services_;
    std::unique_ptr<Ui::MainWindow> ui_;
    std::unique_ptr<ReadingDrill> drill_;
    EarTrainingState earTraining_;
    ComposerState composer_;
    MetronomeState metronomeState_;
    frmMetro* metronomeFrame_;
    QString noteFolder_;
    QString helpFile_;
    QString melodyAtStart_;
    HelpKey helpKey_;
    QLabel* status_;
    QToolButton* chooseOutput_;
    MidiKeyboard::Window keys_;
    bool activated_ = false;
};
