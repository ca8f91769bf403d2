#include "platform/windows/windows_sound.h"

std::unique_ptr<Sound> openSound(const Folders& folders, Runtime* runtime) {
    return std::make_unique<WindowsSound>(folders, runtime);
}
