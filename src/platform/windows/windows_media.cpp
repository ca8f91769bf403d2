#include "platform/windows/windows_media.h"

#include "platform/folders.h"
#include "platform/user_text.h"
#include "platform/windows/media_player.h"

#include <QDir>

int WindowsMedia::open(const QString& path, const QString& alias) {
    return media_player::open(systemPath(path), alias.toStdWString());
}

int WindowsMedia::play(const QString& alias) {
    return media_player::play(alias.toStdWString());
}

int WindowsMedia::close(const QString& alias) {
    return media_player::close(alias.toStdWString());
}

int WindowsMedia::unknownCommand() const {
    return media_player::kUnknownCommand;
}

QString WindowsMedia::errorText(int code) const {
    const QString text = QString::fromStdWString(media_player::errorText(code));
    return text.isEmpty() ? UserText::tr("Errore sconosciuto (codice %1).").arg(code) : text;
}

bool WindowsMedia::playSound(const QString& path, std::uint32_t flags) {
    return media_player::playSound(systemPath(path), flags);
}

std::wstring WindowsMedia::systemPath(const QString& path) const {
    return QDir::toNativeSeparators(folders_.nativePath(path)).toStdWString();
}
