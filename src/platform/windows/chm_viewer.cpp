#include "platform/chm_viewer.h"

#include <QDir>
#include <QString>

#include <string>
#include <windows.h>

bool openChm(const QString& file) {
    const std::wstring path = QDir::toNativeSeparators(file).toStdWString();
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI;
    request.lpFile = path.c_str();
    request.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&request) != FALSE;
}
