// A sound driver with one MIDI output that sounds nothing and logs each message with its time in
// microseconds to the file named by CANTAVISTA_MIDI_LOG. Wine loads it when the registry names it
// as its audio driver; the multimedia calls, the mapper and the sequencer above it are the
// system's own. It has no wave devices.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <windows.h>

// After the header that it needs.
#include <mmddk.h>

namespace {

constexpr int kNeutralPriority = 2;

template <typename... Values>
void log(const char* format, Values... values) {
    const char* const name = std::getenv("CANTAVISTA_MIDI_LOG");
    FILE* const file = name ? std::fopen(name, "ab") : nullptr;
    if (!file)
        return;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::fprintf(file, "%lld ", static_cast<long long>(now / std::chrono::microseconds(1)));
    std::fprintf(file, format, values...);
    std::fclose(file);
}

DWORD describe(DWORD_PTR caps, DWORD_PTR size) {
    MIDIOUTCAPSW description{};
    std::wcscpy(description.szPname, L"Uscita di prova");
    description.wTechnology = MOD_MIDIPORT;
    description.wChannelMask = 0xFFFF;
    std::memcpy(reinterpret_cast<void*>(caps), &description,
                size < sizeof description ? size : sizeof description);
    return MMSYSERR_NOERROR;
}

}  // namespace

extern "C" {

LRESULT CALLBACK DriverProc(DWORD_PTR, HDRVR, UINT, LPARAM, LPARAM) {
    return 1;
}

DWORD WINAPI modMessage(UINT, UINT message, DWORD_PTR, DWORD_PTR first, DWORD_PTR second) {
    switch (message) {
        case MODM_GETNUMDEVS:
            return 1;
        case MODM_GETDEVCAPS:
            return describe(first, second);
        case MODM_OPEN:
            log("open\n");
            return MMSYSERR_NOERROR;
        case MODM_CLOSE:
            log("close\n");
            return MMSYSERR_NOERROR;
        case MODM_DATA:
            log("data %02X %d %d\n", static_cast<unsigned>(first & 0xFF),
                static_cast<int>(first >> 8 & 0xFF), static_cast<int>(first >> 16 & 0xFF));
            return MMSYSERR_NOERROR;
        case MODM_RESET:
            log("reset\n");
            return MMSYSERR_NOERROR;
        default:
            return message == DRVM_INIT || message == DRVM_EXIT ? MMSYSERR_NOERROR
                                                                : MMSYSERR_NOTSUPPORTED;
    }
}

int WINAPI GetPriority() {
    return kNeutralPriority;
}

HRESULT WINAPI GetEndpointIDs(int, WCHAR*** ids, GUID** guids, UINT* count, UINT* usual) {
    *ids = nullptr;
    *guids = nullptr;
    *count = 0;
    *usual = 0;
    return S_OK;
}

HRESULT WINAPI GetAudioEndpoint(void*, void*, void*) {
    return E_NOTIMPL;
}

HRESULT WINAPI GetAudioSessionManager(void*, void*) {
    return E_NOTIMPL;
}

}  // extern "C"
