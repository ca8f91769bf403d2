#include "platform/windows/media_player.h"

#include <array>
#include <windows.h>

namespace media_player {
namespace {

constexpr int kErrorTextBuffer = 255;

/// The media interface refuses longer paths, which the file system knows by a short name too.
constexpr std::size_t kLongestPath = 120;

std::wstring shortened(const std::wstring& path) {
    std::array<wchar_t, MAX_PATH> text{};
    const DWORD length = GetShortPathNameW(path.c_str(), text.data(), MAX_PATH);
    return length == 0 || length >= MAX_PATH ? path : std::wstring(text.data(), length);
}

int command(const std::wstring& text) {
    return static_cast<int>(mciSendStringW(text.c_str(), nullptr, 0, nullptr));
}

}  // namespace

static_assert(kUnknownCommand == MCIERR_UNRECOGNIZED_COMMAND);

/// The path stands in quotation marks, because blanks separate the words of a command. No path
/// contains a quotation mark.
int open(const std::wstring& path, const std::wstring& alias) {
    const std::wstring shortPath = path.size() > kLongestPath ? shortened(path) : path;
    return command(L"OPEN \"" + shortPath + L"\" ALIAS " + alias);
}

int play(const std::wstring& alias) {
    return command(L"PLAY " + alias);
}

int close(const std::wstring& alias) {
    return command(L"CLOSE " + alias);
}

std::wstring errorText(int code) {
    std::array<wchar_t, kErrorTextBuffer> text{};
    if (mciGetErrorStringW(static_cast<MCIERROR>(code), text.data(), kErrorTextBuffer) == FALSE)
        return {};
    return text.data();
}

bool playSound(const std::wstring& path, std::uint32_t flags) {
    return sndPlaySoundW(path.c_str(), flags) != FALSE;
}

}  // namespace media_player
