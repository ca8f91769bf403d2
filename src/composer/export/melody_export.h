#pragma once

#include "composer/export/notation_export.h"
#include "composer/export/wave_file_writer.h"
#include "platform/printing.h"

#include <QByteArray>
#include <QString>

#include <functional>

class Dialogs;
class Folders;
class FunzioniMM;
class WaveRenderer;
struct Composition;
struct FileKind;
struct MelodyScore;
struct Services;

/// The composition as sound, as a MIDI file or as sheet music, for other programs. Asks where to,
/// and reports what went wrong.
class MelodyExport {
public:
    MelodyExport(const Services& services, const Composition& composition);

    /// Whether there is something to export, and something to do it with.
    bool canExportMidi() const;
    bool canExportAudio() const;

    void exportMidi();

    /// In a notation that the user has chosen. `makePdf` is given the sheet's title.
    void exportPdf(const score::Notation& notation,
                   const std::function<QByteArray(const QString& title)>& makePdf);

    /// Whether there is something to print with; says why not.
    bool canPrint() const;

    using PaintSheet =
        std::function<bool(QPagedPaintDevice& device, const QString& title, bool lastPageFirst)>;
    void print(const score::Notation& notation, const PaintSheet& paintSheet);

    void exportMusicXml(const score::Notation& notation);
    void exportBraille(const score::Notation& notation);

    /// `progress` interrupts it by answering false.
    void exportAudio(const wave_file::Progress& progress);

private:
    using NotationFormat = notation_export::Format (*)(const QString& fileName);

    MelodyScore score() const;
    bool canBePrinted(const score::Notation& notation) const;
    void exportNotation(const score::Notation& notation, const QString& title, const FileKind& kind,
                        NotationFormat formatOf);
    void write(const QString& path, const QByteArray& bytes);
    QString proposedName() const;
    QString askFile(const MelodyScore& score, const QString& title, const FileKind& kind) const;
    void report(const QString& fault, const QString& path, const MelodyScore& score) const;

    Dialogs& dialogs_;
    Folders& folders_;
    FunzioniMM& funzioniMM_;
    WaveRenderer* waveRenderer_;
    Printing* printing_;
    const Composition& composition_;
};

namespace melody_export {

QString noSynthesizer();

/// What is said where a sheet could not be painted.
QString noSheet();

/// What is wrong with a score that ends before its melody does.
QString tooShort(const MelodyScore& score);

/// Why nothing was written, in one line; the empty text if it was, or if the user did not want it.
QString faultOf(const wave_file::Outcome& outcome);

}  // namespace melody_export
