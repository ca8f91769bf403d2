#pragma once

#include "composer/score/bar_view.h"

#include <QByteArray>
#include <QString>

class Melody;
struct ScoreHeading;

/// A melody as a file of notes for other programs and readers.
namespace notation_export {

enum class Format {
    MusicXml,            ///< ".musicxml"
    CompressedMusicXml,  ///< ".mxl"
    Braille,             ///< Unicode cells, ".txt"
    AsciiBraille,        ///< for embossers and displays, ".brf"
};

/// The formats of a file's name: what it does not tell is plain MusicXML or Unicode braille.
Format musicXmlFormat(const QString& fileName);
Format brailleFormat(const QString& fileName);

/// The bytes of a melody in bars.
QByteArray bytesOf(const score::BarView& view, const ScoreHeading& heading, Format format);

/// The message about entries that cannot be written, and why; empty if there are none.
QString faultOf(const score::BarView& view);

/// The same for a printed sheet. Without a metre it writes every melody: a sign stands beside what
/// no note values give.
QString sheetFault(const Melody& melody, const score::Notation& notation);

}  // namespace notation_export
