#include "platform/windows/windows_media.h"

#include "platform/folders.h"
#include "platform/windows/media_player.h"

#include <QDir>

int WindowsMedia::command(const QString& text) {
    return media_player::command(text.toStdWString());
}

QString WindowsMedia::errorText(int code) const {
    return QString::fromStdWString(media_player::errorText(code));
}

bool WindowsMedia::playSound(const QString& path, std::uint32_t flags) {
    const QString native = QDir::toNativeSeparators(folders_.nativePath(path));
    return media_player::playSound(native.toStdWString(), flags);
}
