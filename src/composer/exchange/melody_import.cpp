#include "composer/exchange/melody_import.h"

#include "composer/exchange/melody_builder.h"
#include "composer/exchange/midi_melody.h"
#include "composer/exchange/musicxml_reader.h"
#include "composer/library/melody_names.h"
#include "core/funzioni_mm.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/user_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace melody_import {
namespace {

constexpr qsizetype kFaultsShown = 10;

constexpr std::array kNotationSuffixes{"musicxml", "mxl", "xml"};
constexpr std::array kMidiSuffixes{"mid", "midi"};

constexpr qint64 kLargestFile = std::max(musicxml::kLargestFile, midi_recording::kLargestFile);

/// By `imported::LeftOut`.
constexpr std::array kLeftOut{QT_TRANSLATE_NOOP("UserText", "abbellimenti"),
                              QT_TRANSLATE_NOOP("UserText", "testo cantato"),
                              QT_TRANSLATE_NOOP("UserText", "legature di frase"),
                              QT_TRANSLATE_NOOP("UserText", "dinamica"),
                              QT_TRANSLATE_NOOP("UserText", "altre articolazioni"),
                              QT_TRANSLATE_NOOP("UserText", "indicazioni a parole"),
                              QT_TRANSLATE_NOOP("UserText", "cambi di velocità"),
                              QT_TRANSLATE_NOOP("UserText", "piccoli stacchi tra le note"),
                              QT_TRANSLATE_NOOP("UserText", "altri segni")};
static_assert(kLeftOut.size() == static_cast<std::size_t>(imported::LeftOut::Others) + 1);

QString inWords(const std::vector<imported::LeftOut>& leftOut) {
    QStringList names;
    for (const imported::LeftOut what : leftOut)
        names += UserText::tr(kLeftOut[static_cast<std::size_t>(what)]);
    return names.isEmpty() ? QString()
                           : UserText::tr("Non fanno parte di una melodia e restano fuori: %1")
                                 .arg(names.join(QStringLiteral(", ")));
}

QString inWords(QStringList faults) {
    if (faults.size() > kFaultsShown) {
        faults.resize(kFaultsShown);
        faults += QStringLiteral("…");
    }
    return UserText::tr("Il file non può diventare una melodia !!!\n\n%1")
        .arg(faults.join(QLatin1Char('\n')));
}

MelodyFile fileOf(const std::vector<MelodyEntry>& entries, const imported::Score& score) {
    MelodyDelta delta;
    delta.others = entries;
    Melody melody;
    melody.exchange(delta);
    MelodyFile file;
    file.texts = melody.texts();
    file.tempo = static_cast<int>(std::lround(
        std::clamp(score.tempo.value_or(Composition::kDefaultTempo),
                   double{Composition::kLowestTempo}, double{Composition::kHighestTempo})));
    file.instrument = score.program.value_or(Composition::kDefaultInstrument);
    return file;
}

bool endsWith(const QString& path, const char* suffix) {
    return path.endsWith(QLatin1Char('.') + QString::fromUtf8(suffix), Qt::CaseInsensitive);
}

bool isMidi(const QString& path) {
    return std::any_of(kMidiSuffixes.begin(), kMidiSuffixes.end(),
                       [&path](const char* suffix) { return endsWith(path, suffix); });
}

/// The entries; of no use if the score has faults then.
std::vector<MelodyEntry> readMusicXml(const QByteArray& bytes, QChar decimalSeparator,
                                      imported::Score& score) {
    score = musicxml::read(bytes);
    std::vector<MelodyEntry> entries;
    if (score.faults.isEmpty())
        entries = entriesOf(score, decimalSeparator);
    if (score.faults.isEmpty() && entries.empty())
        score.faults += UserText::tr("non ha note");
    return entries;
}

std::vector<MelodyEntry> readMidi(const QByteArray& bytes, QChar decimalSeparator,
                                  imported::Score& score) {
    const midi_recording::Recording recording = midi_recording::read(bytes);
    if (!recording.fault.isEmpty()) {
        score.faults += recording.fault;
        return {};
    }
    midi_recording::Line line = midi_recording::lineOf(recording, decimalSeparator);
    score.faults = line.faults;
    score.tempo = line.tempo;
    score.program = recording.program;
    score.leftOut = recording.leftOut;
    for (const imported::LeftOut what : line.leftOut)
        score.leaveOut(what);
    return std::move(line.entries);
}

}  // namespace

bool isForeign(const QString& path) {
    return isMidi(path) ||
           std::any_of(kNotationSuffixes.begin(), kNotationSuffixes.end(),
                       [&path](const char* suffix) { return endsWith(path, suffix); });
}

Outcome read(const Folders& folders, const QString& path, QChar decimalSeparator) {
    const Folders::Content content = folders.readFile(path, kLargestFile + 1);
    Outcome outcome;
    outcome.error = content.error;
    if (outcome.error.failed())
        return outcome;
    imported::Score score;
    const std::vector<MelodyEntry> entries =
        isMidi(path) ? readMidi(content.bytes, decimalSeparator, score)
                     : readMusicXml(content.bytes, decimalSeparator, score);
    if (!score.faults.isEmpty()) {
        outcome.fault = inWords(score.faults);
        return outcome;
    }
    outcome.file = fileOf(entries, score);
    if (score.tempo && std::abs(*score.tempo - outcome.file->tempo) > 0)
        score.leaveOut(imported::LeftOut::TempoChanges);
    outcome.leftOut = inWords(score.leftOut);
    return outcome;
}

}  // namespace melody_import

MelodyImport::MelodyImport(const Services& services, Composition& composition, MelodyEditor& editor)
    : dialogs_(services.dialogs),
      folders_(services.folders),
      funzioniMM_(services.funzioniMM),
      composition_(composition),
      editor_(editor) {}

QString MelodyImport::askFile() const {
    QStringList suffixes;
    for (const char* suffix : melody_import::kNotationSuffixes)
        suffixes += QString::fromUtf8(suffix);
    for (const char* suffix : melody_import::kMidiSuffixes)
        suffixes += QString::fromUtf8(suffix);
    return dialogs_.openFile(UserText::tr("Importa"), UserText::tr("File di notazione e MIDI"),
                             suffixes);
}

bool MelodyImport::open(const QString& path) {
    melody_import::Outcome outcome =
        melody_import::read(folders_, path, composition_.decimalSeparator);
    if (!outcome.file) {
        dialogs_.message(outcome.error.failed() ? melody_names::failureText(outcome.error)
                                                : outcome.fault);
        return false;
    }
    outcome.file->name = melody_names::melodyName(path.section(melody_names::kBackslash, -1));
    // Undo restores the instrument that was in use, whatever the melody before it had.
    composition_.instrument = funzioniMM_.currentInstrument();
    editor_.recover(*outcome.file);
    funzioniMM_.chooseInstrument(composition_.instrument);
    if (!outcome.leftOut.isEmpty())
        dialogs_.message(outcome.leftOut);
    return true;
}
