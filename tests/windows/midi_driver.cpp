// A sound driver with a MIDI input that sends some keys, and one MIDI output that sounds nothing
// and logs each message with its time in microseconds to the file named by CANTAVISTA_MIDI_LOG.
// Wine loads it when the registry names it as its audio driver; the multimedia calls, the mapper
// and the sequencer above it are the system's own. It has no wave devices.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <windows.h>

// After the header that it needs.
#include <mmddk.h>

/// Of the multimedia library; the cross compiler's headers leave it out.
extern "C" BOOL WINAPI DriverCallback(DWORD_PTR callback, UINT flags, HDRVR device, UINT message,
                                      DWORD_PTR user, DWORD_PTR first, DWORD_PTR second);

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

/// The input that was opened; it sends a fixed list of messages when it is started.
MIDIOPENDESC opened;
DWORD openFlags = 0;

void sendShort(DWORD message) {
    DriverCallback(opened.dwCallback, HIWORD(openFlags), reinterpret_cast<HDRVR>(opened.hMidi),
                   MIM_DATA, opened.dwInstance, message, 0);
}

/// Fifty keys down and up, and between them what no key sends.
DWORD WINAPI sendKeys(void*) {
    for (DWORD i = 0; i < 50; ++i) {
        sendShort(0x400090 | (40 + i) << 8);
        for (const DWORD odd : {0xF8u, 0xFEu, 0xF0u, 0x12345678u, 0xFFFFFFFFu, 0x0040C0u, 0u})
            sendShort(odd);
        sendShort(0x000080 | (40 + i) << 8);
        Sleep(2);
    }
    return 0;
}

DWORD describeInput(DWORD_PTR caps, DWORD_PTR size) {
    MIDIINCAPSW description{};
    std::wcscpy(description.szPname, L"Tastiera di prova");
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

DWORD WINAPI midMessage(UINT, UINT message, DWORD_PTR, DWORD_PTR first, DWORD_PTR second) {
    switch (message) {
        case MIDM_GETNUMDEVS:
            return 1;
        case MIDM_GETDEVCAPS:
            return describeInput(first, second);
        case MIDM_OPEN:
            opened = *reinterpret_cast<const MIDIOPENDESC*>(first);
            openFlags = static_cast<DWORD>(second);
            log("input open\n");
            return MMSYSERR_NOERROR;
        case MIDM_START:
            CloseHandle(CreateThread(nullptr, 0, sendKeys, nullptr, 0, nullptr));
            return MMSYSERR_NOERROR;
        case MIDM_CLOSE:
            log("input close\n");
            return MMSYSERR_NOERROR;
        case MIDM_STOP:
        case MIDM_RESET:
        case DRVM_INIT:
        case DRVM_EXIT:
            return MMSYSERR_NOERROR;
        default:
            return MMSYSERR_NOTSUPPORTED;
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
