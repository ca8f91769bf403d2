#include "shell/start_up.h"

#include "core/funzioni_mm.h"
#include "platform/midi_out.h"
#include "platform/runtime.h"

namespace start_up {
namespace {

constexpr double kTuneSeconds = 2.2;

}  // namespace

QString noteFolder(const QString& programFolder) {
    return programFolder + QStringLiteral("\\note\\");
}

QString helpFile(const QString& programFolder) {
    return programFolder + QStringLiteral("\\cantavista.chm");
}

void firstActivation(Runtime& runtime, FunzioniMM& funzioniMM, const QString& noteFolder,
                     StartUpView& view) {
    funzioniMM.MediaOpen(noteFolder + QStringLiteral("ap.mid"));
    if (!funzioniMM.mediaOpenFailed())
        funzioniMM.MediaPlay();
    runtime.yield();
    view.enableStartUpControls(false);
    funzioniMM.WaitSeconds(kTuneSeconds);
    view.enableStartUpControls(true);
    if (!funzioniMM.mediaOpenFailed())
        funzioniMM.MediaClose();
    if (!funzioniMM.output().isOpen() && !runtime.ending() && funzioniMM.MidiOpen(kMidiMapper))
        funzioniMM.ProgramChange(funzioniMM.currentInstrument());
    view.focusStart();
}

}  // namespace start_up
