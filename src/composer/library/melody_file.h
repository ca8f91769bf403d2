#pragma once

#include "composer/melody/melody_editor.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

/// The melody file, as bytes. Lines end with CR LF and are written in Windows-1252:
///
///     60;62;00;64;       note numbers, 00 = rest
///     1;0,75;1;2;        durations in quarter notes, with a comma or a point
///     n;s;p;a;           how each entry is played
///      60                tempo, with a blank before and after
///      16                instrument, the same
///     1 ÷ 4 ÷ Tutto;…    bookmarks, if there are any
///
/// Tokens are carried as they are: a file that was written here and read again is written the same.
namespace melody_file {

/// Melodies of the greatest length take a fifth of this.
constexpr qint64 kLargestFile = qint64{8} * 1024 * 1024;

/// Reads a file; the melody gets no name. Lines may also end with LF or CR alone, and the lines of
/// tempo and instrument may be missing. Nothing if the bytes are no melody: more than
/// `kLargestFile`, fewer than three lines, no text, a note that is neither a rest nor of the five
/// octaves, a duration that is no number. Lines with different numbers of fields are read;
/// `Melody::read` decides what becomes of them.
std::optional<MelodyFile> read(const QByteArray& bytes);

struct Written {
    QByteArray bytes;
    QString refused;  ///< the first character that a file cannot hold; empty if there is none
};
Written write(const MelodyFile& file);

/// Whether a name or a line can stand in a file: it has no control characters and every character
/// has a code.
bool canCarry(QStringView line);

}  // namespace melody_file
