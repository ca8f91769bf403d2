#pragma once

#include <QString>
#include <QStringView>

struct FileError;

/// The names of melodies and folders, and how paths and failures read.
namespace melody_names {

constexpr QChar kBackslash(u'\\');

/// "…\Melodie\" of a program folder.
QString rootOf(const QString& programFolder);

/// "..\" and the path from where "melodie" first stands in it.
QString pathLabel(const QString& folder);

/// A melody's usual file name, and the name of a file's melody: what stands before the last ".".
QString fileName(const QString& melody);
QString melodyName(const QString& fileName);

/// A melody's name without the folder that it may begin with.
QString lastPart(const QString& name);

/// Whether a name has one of the characters that neither a new folder nor a renamed melody may
/// have, or a renamed bookmark.
bool isForbiddenForFile(QStringView name);
bool isForbiddenForBookmark(QStringView name);

/// Composed letters, as the file's code page has them.
QString composed(const QString& name);

/// "Errore: 61", an empty line and the description.
QString failureText(const FileError& error);

/// The messages about names.
QString invalidName();
QString unknownCharacter();

}  // namespace melody_names
