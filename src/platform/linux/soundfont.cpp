#include "platform/linux/soundfont.h"

#include <array>
#include <cstdlib>
#include <filesystem>

std::string findSoundfont() {
    if (const char* named = std::getenv("CANTAVISTA_SOUNDFONT"); named && *named)
        return named;
    std::error_code ignored;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored);
    const auto beside = program.parent_path() / "TimGM6mb.sf2";
    if (std::filesystem::exists(beside, ignored))
        return beside.string();
    constexpr std::array kPlaces{
        "/usr/share/sounds/sf2/TimGM6mb.sf2",       "/usr/share/soundfonts/TimGM6mb.sf2",
        "/usr/local/share/sounds/sf2/TimGM6mb.sf2", "/usr/share/sounds/sf2/default-GM.sf2",
        "/usr/share/soundfonts/default.sf2",        "/usr/share/sounds/sf3/default-GM.sf3",
    };
    for (const char* place : kPlaces) {
        if (std::filesystem::exists(place, ignored))
            return place;
    }
    return {};
}
