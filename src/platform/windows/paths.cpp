#include "platform/windows/paths.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <windows.h>

namespace paths {
namespace {

namespace fs = std::filesystem;

/// The longest name that leaves room for that of a temporary file beside it.
constexpr std::size_t kLongestName = 240;
constexpr std::wstring_view kForbidden = L"<>:\"/\\|?*";
constexpr std::array<std::wstring_view, 8> kDevices{L"CON",    L"PRN",     L"AUX",  L"NUL",
                                                    L"CONIN$", L"CONOUT$", L"COM#", L"LPT#"};

/// In a device's name "#" stands for a digit; what follows a full stop does not count.
bool isDevice(std::wstring_view name) {
    std::wstring stem(name.substr(0, name.find(L'.')));
    stem.erase(stem.find_last_not_of(L' ') + 1);
    CharUpperBuffW(stem.data(), static_cast<DWORD>(stem.size()));
    return std::any_of(kDevices.begin(), kDevices.end(), [&stem](std::wstring_view device) {
        return std::equal(
            stem.begin(), stem.end(), device.begin(), device.end(),
            [](wchar_t c, wchar_t d) { return c == d || (d == L'#' && c >= L'0' && c <= L'9'); });
    });
}

bool isPossibleName(const std::wstring& name) {
    if (name == L"." || name == L"..")
        return true;
    return !name.empty() && name.size() <= kLongestName &&
           std::none_of(name.begin(), name.end(),
                        [](wchar_t c) {
                            return c < L' ' || kForbidden.find(c) != std::wstring_view::npos;
                        }) &&
           name.back() != L' ' && name.back() != L'.' && !isDevice(name);
}

/// The true path of what exists; empty if nothing does.
std::wstring finalPath(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    std::wstring text(GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
    text.resize(GetFinalPathNameByHandleW(file, text.data(), static_cast<DWORD>(text.size()), 0));
    CloseHandle(file);
    return text;
}

}  // namespace

bool isPossible(const std::wstring& path) {
    const fs::path names = fs::path(path).relative_path();
    return std::all_of(names.begin(), names.end(), [](const fs::path& name) {
        return name.empty() || isPossibleName(name.native());
    });
}

std::wstring followed(const std::wstring& path) {
    std::array<wchar_t, 4096> whole{};
    const DWORD length = GetFullPathNameW(path.c_str(), whole.size(), whole.data(), nullptr);
    if (length == 0 || length >= whole.size())
        return {};
    fs::path existing(whole.data());
    fs::path missing;
    if (!existing.has_filename())
        existing = existing.parent_path();
    for (;;) {
        if (const std::wstring known = finalPath(existing.native()); !known.empty())
            return missing.empty() ? known : (fs::path(known) / missing).native();
        if (!existing.has_relative_path())
            return {};
        missing = missing.empty() ? existing.filename() : existing.filename() / missing;
        existing = existing.parent_path();
    }
}

bool isReady(const std::wstring& root) {
    DWORD mode = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
    const DWORD attributes = GetFileAttributesW(root.c_str());
    SetThreadErrorMode(mode, nullptr);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace paths
