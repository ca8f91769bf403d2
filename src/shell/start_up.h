#pragma once

#include <QString>

class FunzioniMM;
class Runtime;

/// What start-up asks of the main window.
class StartUpView {
public:
    virtual ~StartUpView() = default;

    /// `Start`, `cmdEsci`, `Intonazione` and `mnuRint`, which are disabled while the tune plays.
    virtual void enableStartUpControls(bool on) = 0;
    virtual void focusStart() = 0;
};

namespace start_up {

/// Paths of the program's own files, from the program folder.
QString noteFolder(const QString& programFolder);
QString helpFile(const QString& programFolder);

/// The main window's first activation: plays the introductory tune for 2.2 s, opens the default
/// MIDI output and sends it the instrument.
void firstActivation(Runtime& runtime, FunzioniMM& funzioniMM, const QString& noteFolder,
                     StartUpView& view);

}  // namespace start_up
