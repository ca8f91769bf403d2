#include "platform/windows/media_player.h"

#include <array>
#include <string_view>
#include <windows.h>

namespace media_player {
namespace {

constexpr int kErrorTextBuffer = 255;
constexpr std::wstring_view kOpen = L"OPEN ";
constexpr std::wstring_view kAlias = L" ALIAS ";

/// The media interface refuses longer paths, which the file system knows by a short name too.
constexpr std::size_t kLongestPath = 120;

std::wstring shortened(const std::wstring& path) {
    std::array<wchar_t, MAX_PATH> text{};
    const DWORD length = GetShortPathNameW(path.c_str(), text.data(), MAX_PATH);
    return length == 0 || length >= MAX_PATH ? path : std::wstring(text.data(), length);
}

/// Blanks part the words of a command, so a path stands in quotation marks, which no path holds.
std::wstring withQuotedPath(const std::wstring& text) {
    const std::size_t alias = text.rfind(kAlias);
    if (text.compare(0, kOpen.size(), kOpen) != 0 || alias == std::wstring::npos ||
        alias <= kOpen.size() || text[kOpen.size()] == L'"')
        return text;
    std::wstring path = text.substr(kOpen.size(), alias - kOpen.size());
    if (path.size() > kLongestPath)
        path = shortened(path);
    return std::wstring(kOpen) + L'"' + path + L'"' + text.substr(alias);
}

}  // namespace

int command(const std::wstring& text) {
    return static_cast<int>(mciSendStringW(withQuotedPath(text).c_str(), nullptr, 0, nullptr));
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
