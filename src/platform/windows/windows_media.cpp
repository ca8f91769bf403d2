#include "platform/windows/windows_media.h"

#include "platform/folders.h"
#include "platform/user_text.h"
#include "platform/windows/media_player.h"

#include <QDir>

int WindowsMedia::command(const QString& text) {
    return media_player::command(text.toStdWString());
}

QString WindowsMedia::errorText(int code) const {
    const QString text = QString::fromStdWString(media_player::errorText(code));
    return text.isEmpty() ? UserText::tr("Errore sconosciuto (codice %1).").arg(code) : text;
}

bool WindowsMedia::playSound(const QString& path, std::uint32_t flags) {
    const QString native = QDir::toNativeSeparators(folders_.nativePath(path));
    return media_player::playSound(native.toStdWString(), flags);
}
