#include "command/commands.h"

#include "command/command_line.h"
#include "composer/exchange/melody_import.h"
#include "composer/exchange/score_heading.h"
#include "composer/export/melody_export.h"
#include "composer/export/melody_score.h"
#include "composer/export/midi_file_writer.h"
#include "composer/export/notation_export.h"
#include "composer/export/sheet_request.h"
#include "composer/export/wave_file_writer.h"
#include "composer/library/melody_file.h"
#include "composer/library/melody_names.h"
#include "composer/library/melody_reader.h"
#include "composer/melody/melody_editor.h"
#include "platform/folders.h"
#include "platform/midi_in.h"
#include "platform/midi_out.h"
#include "platform/sound.h"
#include "platform/user_text.h"

#include <QFileInfo>
#include <QTextStream>

namespace commands {
namespace {

using Action = CommandLine::Action;

constexpr const char* kUsage =
    QT_TRANSLATE_NOOP("UserText",
                      "Uso: cantavista [MELODIA]\n"
                      "     cantavista --check MELODIA…\n"
                      "     cantavista --render MELODIA -o FILE.wav [--instrument N]\n"
                      "     cantavista --export-midi MELODIA -o FILE.mid [--instrument N]\n"
                      "     cantavista --export-pdf MELODIA -o FILE.pdf\n"
                      "                [--metre M|none] [--key T] [--paper a4|letter]\n"
                      "     cantavista --export-system MELODIA -o FILE.svg|FILE.png [--system N]\n"
                      "                [--metre M|none] [--key T] [--paper a4|letter]\n"
                      "     cantavista --export-musicxml MELODIA -o FILE.musicxml|FILE.mxl\n"
                      "                [--metre M] [--key T] [--instrument N]\n"
                      "     cantavista --export-braille MELODIA -o FILE.brf|FILE.txt\n"
                      "                [--metre M|none] [--key T]\n"
                      "     cantavista --import FILE.musicxml|FILE.mxl|FILE.mid -o MELODIA\n"
                      "     cantavista --list-devices | --version | --help\n");

constexpr const char* kExplanation = QT_TRANSLATE_NOOP(
    "UserText",
    "\n"
    "Senza opzioni apre il programma; con una MELODIA, un file \".mel\", la apre nel\n"
    "compositore. Con un comando lavora senza finestra:\n"
    "\n"
    "  --check           dice di ogni file se è una melodia valida\n"
    "  --render          suona la melodia in un file WAV, con il sintetizzatore interno\n"
    "  --export-midi     scrive la melodia in un file MIDI\n"
    "  --export-pdf      scrive lo spartito della melodia in un file PDF\n"
    "  --export-system   scrive un rigo (sistema) dello spartito in un'immagine SVG o PNG\n"
    "  --export-musicxml scrive la melodia in battute per i programmi di notazione;\n"
    "                    compressa, se il nome finisce in \".mxl\"\n"
    "  --export-braille  scrive la melodia in musica braille: \".brf\" per stampanti e\n"
    "                    barre braille, altrimenti caratteri braille Unicode\n"
    "  --import          fa una melodia di un file MusicXML o MIDI a una voce\n"
    "  --list-devices    elenca le uscite MIDI; -1 è il sintetizzatore interno. Dice anche\n"
    "                    quali tastiere MIDI sono collegate e se il sistema concede al\n"
    "                    suono una priorità in tempo reale\n"
    "  -o, --output      il file da scrivere\n"
    "  --instrument N    lo strumento, da 0 a 127, al posto di quello della melodia\n"
    "  --metre M         il tempo delle battute: 2/4, 3/4, 4/4 o 6/8; senza, 4/4;\n"
    "                    in braille e nello spartito anche none, senza battute\n"
    "  --key T           la tonalità: le alterazioni in chiave, da -7 (bemolli) a 7\n"
    "                    (diesis), con \"m\" per il modo minore; senza, Do maggiore\n"
    "  --paper a4|letter la carta dello spartito; senza, quella del paese\n"
    "  --system N        il rigo da scrivere, da 1 in poi; senza, il primo\n"
    "  -v, --version     la versione del programma\n"
    "  -h, --help        questo testo\n"
    "\n"
    "Esce con 0 se è riuscito, con 1 se un file non va o non si può scrivere, con 2 se\n"
    "il comando è sbagliato.\n");

/// Paths are the user's own; the program's begin at the root.
QString pathOf(const QString& file) {
    return QFileInfo(file).absoluteFilePath();
}

/// Reads a melody; answers what is wrong with it, or the empty text.
QString load(const Folders& folders, const QString& file, Composition& composition) {
    const MelodyReading reading = readMelody(folders, pathOf(file));
    if (reading.error.failed())
        return reading.error.text;
    if (!reading.file)
        return damagedMelodyText();
    return MelodyEditor(composition).open(*reading.file).message;
}

int check(const CommandLine& line, const CommandMachine& machine) {
    int status = kDone;
    for (const QString& file : line.files) {
        Composition composition;
        const QString fault = load(machine.folders, file, composition);
        machine.out << file << ": "
                    << (fault.isEmpty() ? UserText::tr("melodia valida, note e pause: %1")
                                              .arg(composition.melody.EntryCount())
                                        : fault)
                    << '\n';
        if (!fault.isEmpty())
            status = kFailed;
    }
    return status;
}

QString nameOf(const QString& file) {
    return melody_names::melodyName(QFileInfo(file).fileName());
}

/// Writes the bars of a melody; answers why not, or the empty text.
QString writeBars(const CommandLine& line, const CommandMachine& machine,
                  const Composition& composition, const score::BarView& view) {
    const notation_export::Format format = line.action == Action::ExportBraille
                                               ? notation_export::brailleFormat(line.output)
                                               : notation_export::musicXmlFormat(line.output);
    const ScoreHeading heading{nameOf(line.files.front()), composition.tempo,
                               line.instrument.value_or(composition.instrument)};
    const QByteArray bytes = notation_export::bytesOf(view, heading, format);
    return machine.folders.writeFile(pathOf(line.output), bytes).text;
}

QString writeOutput(const CommandLine& line, const CommandMachine& machine,
                    const MelodyScore& score, int tempo) {
    const QString path = pathOf(line.output);
    if (line.action == Action::ExportMidi) {
        const QByteArray bytes = midi_file::write(score, tempo, nameOf(line.files.front()));
        return machine.folders.writeFile(path, bytes).text;
    }
    WaveRenderer* const renderer = machine.sound.waveRenderer();
    if (!renderer)
        return melody_export::noSynthesizer();
    return melody_export::faultOf(
        wave_file::write(*renderer, score, machine.folders, path, [](double) { return true; }));
}

/// A sheet of the melody, or why there is none.
SheetFile sheetOf(const CommandLine& line, const CommandMachine& machine,
                  const Composition& composition) {
    if (const QString fault = notation_export::sheetFault(composition.melody, line.notation);
        !fault.isEmpty())
        return {{}, fault};
    using Form = SheetRequest::Form;
    const bool isPicture = line.action == Action::ExportSystem;
    const Form form = !isPicture ? Form::Pdf : line.writes("svg") ? Form::Svg : Form::Png;
    return machine.makeSheet(
        composition, {form, nameOf(line.files.front()), line.notation, line.paper, line.system});
}

int write(const CommandLine& line, const CommandMachine& machine) {
    const QString& file = line.files.front();
    const auto fail = [&machine](const QString& about, const QString& fault) {
        machine.err << "cantavista: " << about << ": " << fault << '\n';
        return kFailed;
    };
    if (QFileInfo::exists(line.output) && QFileInfo(file) == QFileInfo(line.output))
        return fail(line.output, UserText::tr("è la melodia stessa"));
    Composition composition;
    if (const QString fault = load(machine.folders, file, composition); !fault.isEmpty())
        return fail(file, fault);
    const Melody& melody = composition.melody;
    if (melody.empty())
        return fail(file, UserText::tr("la melodia è vuota"));
    if (line.action == Action::ExportPdf || line.action == Action::ExportSystem) {
        const SheetFile sheet = sheetOf(line, machine, composition);
        if (!sheet.fault.isEmpty())
            return fail(file, sheet.fault);
        if (sheet.bytes.isEmpty())
            return fail(line.output, melody_export::noSheet());
        const FileError error = machine.folders.writeFile(pathOf(line.output), sheet.bytes);
        return error.failed() ? fail(line.output, error.text) : kDone;
    }
    if (line.action == Action::ExportMusicXml || line.action == Action::ExportBraille) {
        const score::BarView view = score::barsOf(melody, line.notation);
        if (const QString fault = notation_export::faultOf(view); !fault.isEmpty())
            return fail(file, fault);
        const QString fault = writeBars(line, machine, composition, view);
        return fault.isEmpty() ? kDone : fail(line.output, fault);
    }
    const MelodyScore score =
        scoreOf(melody, composition.tempo, line.instrument.value_or(composition.instrument));
    if (score.entries == 0)
        return fail(file, melody_export::tooShort(score));
    if (const QString fault = writeOutput(line, machine, score, composition.tempo);
        !fault.isEmpty())
        return fail(line.output, fault);
    if (score.entries < melody.EntryCount())
        machine.err << "cantavista: " << file << ": " << melody_export::tooShort(score) << '\n';
    return kDone;
}

/// Makes a melody of a file of another program.
int importMelody(const CommandLine& line, const CommandMachine& machine) {
    const QString& file = line.files.front();
    const auto tell = [&machine](const QString& about, const QString& text) {
        machine.err << "cantavista: " << about << ": " << text << '\n';
    };
    if (QFileInfo::exists(line.output) && QFileInfo(file) == QFileInfo(line.output)) {
        tell(line.output, UserText::tr("è il file da importare"));
        return kFailed;
    }
    const melody_import::Outcome outcome =
        melody_import::read(machine.folders, pathOf(file), Composition().decimalSeparator);
    QString fault = outcome.error.failed() ? outcome.error.text : outcome.fault;
    if (outcome.file)
        fault =
            machine.folders.writeFile(pathOf(line.output), melody_file::write(*outcome.file).bytes)
                .text;
    if (!fault.isEmpty()) {
        tell(outcome.file ? line.output : file, fault);
        return kFailed;
    }
    if (!outcome.leftOut.isEmpty())
        tell(file, outcome.leftOut);
    return kDone;
}

int listDevices(const CommandMachine& machine) {
    MidiOut& midiOut = machine.sound.midiOut();
    const int count = midiOut.deviceCount();
    for (int id = kMidiMapper; id < count; ++id) {
        machine.out << QString::number(id).rightJustified(3) << "  "
                    << midiOut.deviceName(id).value_or(UserText::tr("(senza nome)")) << '\n';
    }
    for (const QString& input : machine.sound.midiIn().inputNames())
        machine.out << UserText::tr("Tastiera MIDI: %1").arg(input) << '\n';
    if (const QString priority = machine.sound.renderingPriority(); !priority.isEmpty())
        machine.out << UserText::tr("Priorità del suono: %1").arg(priority) << '\n';
    return kDone;
}

}  // namespace

int run(const CommandLine& line, const CommandMachine& machine) {
    switch (line.action) {
        case Action::Misused:
            machine.err << "cantavista: " << line.fault << '\n' << UserText::tr(kUsage);
            return kMisused;
        case Action::Help:
            machine.out << UserText::tr(kUsage) << UserText::tr(kExplanation);
            return kDone;
        case Action::Version:
            machine.out << "Cantavista " CANTAVISTA_VERSION "\n";
            return kDone;
        case Action::Check:
            return check(line, machine);
        case Action::Render:
        case Action::ExportMidi:
        case Action::ExportPdf:
        case Action::ExportSystem:
        case Action::ExportMusicXml:
        case Action::ExportBraille:
            return write(line, machine);
        case Action::Import:
            return importMelody(line, machine);
        case Action::ListDevices:
            return listDevices(machine);
    }
    return kMisused;
}

}  // namespace commands
