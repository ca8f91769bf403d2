#include "composer/export/melody_export.h"

#include "composer/exchange/score_heading.h"
#include "composer/export/melody_score.h"
#include "composer/export/midi_file_writer.h"
#include "composer/library/melody_names.h"
#include "composer/melody/composition.h"
#include "core/funzioni_mm.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/folders.h"
#include "platform/user_text.h"

namespace melody_export {

using wave_file::Result;

QString noSynthesizer() {
    return UserText::tr("Manca il sintetizzatore interno !!!");
}

QString noSheet() {
    return UserText::tr("Lo spartito non è riuscito !!!");
}

QString tooShort(const MelodyScore& score) {
    return UserText::tr("La nota %1 è troppo breve per questa velocità: la melodia si ferma lì !!!")
        .arg(score.entries + 1);
}

QString faultOf(const wave_file::Outcome& outcome) {
    switch (outcome.result) {
        case Result::NoInstruments:
            return UserText::tr("Manca il file dei suoni (soundfont) !!!");
        case Result::DamagedInstruments:
            return UserText::tr("Il file dei suoni (soundfont) è danneggiato !!!");
        case Result::TooLong:
            return UserText::tr("La melodia è troppo lunga per un file WAV !!!");
        case Result::Failed:
            return outcome.error.text;
        case Result::Written:
        case Result::Interrupted:
            break;
    }
    return {};
}

}  // namespace melody_export

MelodyExport::MelodyExport(const Services& services, const Composition& composition)
    : dialogs_(services.dialogs),
      folders_(services.folders),
      funzioniMM_(services.funzioniMM),
      waveRenderer_(services.waveRenderer),
      printing_(services.printing),
      composition_(composition) {}

bool MelodyExport::canExportMidi() const {
    return !composition_.melody.empty();
}

bool MelodyExport::canExportAudio() const {
    return canExportMidi() && waveRenderer_;
}

QString MelodyExport::proposedName() const {
    const QString& name = composition_.source.name;
    return name.isEmpty() ? UserText::tr("Melodia") : melody_names::lastPart(name);
}

MelodyScore MelodyExport::score() const {
    return scoreOf(composition_.melody, composition_.tempo, funzioniMM_.currentInstrument());
}

void MelodyExport::report(const QString& fault, const QString& path,
                          const MelodyScore& score) const {
    if (!fault.isEmpty()) {
        dialogs_.message(fault);
        return;
    }
    QString done = UserText::tr("Esportato: %1").arg(melody_names::lastPart(path));
    if (score.entries < composition_.melody.EntryCount())
        done += QLatin1Char('\n') + melody_export::tooShort(score);
    dialogs_.message(done);
}

/// Empty if there is nothing to write, or nowhere.
QString MelodyExport::askFile(const MelodyScore& score, const QString& title,
                              const FileKind& kind) const {
    if (score.entries > 0)
        return dialogs_.saveFile(title, proposedName(), kind);
    dialogs_.message(melody_export::tooShort(score));
    return {};
}

void MelodyExport::exportMidi() {
    if (!canExportMidi())
        return;
    const MelodyScore played = score();
    const QString path = askFile(played, UserText::tr("Esporta MIDI"),
                                 {UserText::tr("File MIDI"), QStringLiteral("mid")});
    if (path.isEmpty())
        return;
    const FileError error =
        folders_.writeFile(path, midi_file::write(played, composition_.tempo, proposedName()));
    report(error.failed() ? melody_names::failureText(error) : QString(), path, played);
}

/// Says what cannot.
bool MelodyExport::canBePrinted(const score::Notation& notation) const {
    const QString fault = notation_export::sheetFault(composition_.melody, notation);
    if (!fault.isEmpty())
        dialogs_.message(fault);
    return fault.isEmpty();
}

void MelodyExport::exportPdf(const score::Notation& notation,
                             const std::function<QByteArray(const QString& title)>& makePdf) {
    if (!canBePrinted(notation))
        return;
    const FileKind kind{UserText::tr("File PDF"), QStringLiteral("pdf")};
    const QString path = dialogs_.saveFile(UserText::tr("Esporta PDF"), proposedName(), kind);
    if (!path.isEmpty())
        write(path, makePdf(proposedName()));
}

bool MelodyExport::canPrint() const {
    using Readiness = Printing::Readiness;
    const Readiness ready = printing_ ? printing_->readiness() : Readiness::NotInstalled;
    if (ready == Readiness::Ready)
        return true;
    const QString fault = ready == Readiness::NoPrinter
                              ? UserText::tr("Non c'è nessuna stampante !!!")
                              : UserText::tr("Manca il modulo per la stampa !!!");
    dialogs_.message(fault + QLatin1Char('\n') +
                     UserText::tr("Lo spartito si può scrivere con Esporta PDF."));
    return false;
}

void MelodyExport::print(const score::Notation& notation, const PaintSheet& paintSheet) {
    if (!canBePrinted(notation))
        return;
    const QString title = proposedName();
    const auto paintPages = [&](QPagedPaintDevice& device, bool lastPageFirst) {
        return paintSheet(device, title, lastPageFirst);
    };
    if (printing_->print(title, paintPages) == Printing::Outcome::Failed)
        dialogs_.message(UserText::tr("La stampa non è riuscita !!!"));
}

void MelodyExport::exportMusicXml(const score::Notation& notation) {
    exportNotation(notation, UserText::tr("Esporta MusicXML"),
                   {UserText::tr("File MusicXML"), QStringLiteral("musicxml")},
                   notation_export::musicXmlFormat);
}

void MelodyExport::exportBraille(const score::Notation& notation) {
    exportNotation(notation, UserText::tr("Esporta braille"),
                   {UserText::tr("File braille"), QStringLiteral("brf")},
                   notation_export::brailleFormat);
}

void MelodyExport::exportNotation(const score::Notation& notation, const QString& title,
                                  const FileKind& kind, NotationFormat formatOf) {
    const score::BarView view = score::barsOf(composition_.melody, notation);
    if (const QString fault = notation_export::faultOf(view); !fault.isEmpty()) {
        dialogs_.message(fault);
        return;
    }
    const QString path = dialogs_.saveFile(title, proposedName(), kind);
    if (path.isEmpty())
        return;
    const ScoreHeading heading{proposedName(), composition_.tempo, funzioniMM_.currentInstrument()};
    write(path, notation_export::bytesOf(view, heading, formatOf(path)));
}

/// A sheet that could not be painted is empty.
void MelodyExport::write(const QString& path, const QByteArray& bytes) {
    if (bytes.isEmpty()) {
        dialogs_.message(melody_export::noSheet());
        return;
    }
    const FileError error = folders_.writeFile(path, bytes);
    dialogs_.message(error.failed()
                         ? melody_names::failureText(error)
                         : UserText::tr("Esportato: %1").arg(melody_names::lastPart(path)));
}

void MelodyExport::exportAudio(const wave_file::Progress& progress) {
    if (!canExportAudio())
        return;
    const MelodyScore played = score();
    const QString path = askFile(played, UserText::tr("Esporta audio"),
                                 {UserText::tr("File WAV"), QStringLiteral("wav")});
    if (path.isEmpty())
        return;
    const wave_file::Outcome outcome =
        wave_file::write(*waveRenderer_, played, folders_, path, progress);
    if (outcome.result == wave_file::Result::Interrupted)
        return;
    report(outcome.error.failed() ? melody_names::failureText(outcome.error)
                                  : melody_export::faultOf(outcome),
           path, played);
}
