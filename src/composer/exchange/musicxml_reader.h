#pragma once

#include "composer/exchange/imported_score.h"

#include <QByteArray>

/// Reads MusicXML of any version, plain or compressed, as far as it can become a melody: one part
/// of one voice. A file of unknown origin costs no more time and memory than one of its size that
/// means well.
namespace musicxml {

/// No larger file is read, as it is or uncompressed.
constexpr qint64 kLargestFile = qint64{32} * 1024 * 1024;

/// The score with its faults, among them that the bytes are no MusicXML.
imported::Score read(const QByteArray& bytes);

}  // namespace musicxml
