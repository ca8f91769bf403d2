#include "platform/linux/sound_code.h"

#include <algorithm>
#include <array>

namespace {

/// Leaves room for the longest text around a device's name.
constexpr int kNameLength = 60;

struct CodeText {
    SoundCode code;
    const char16_t* text;
};

constexpr std::array kTexts{
    CodeText{SoundCode::Ok, u"Nessun errore."},
    CodeText{SoundCode::NoAudioDevice,
             u"Nessuna uscita audio: il sintetizzatore interno non può suonare."},
    CodeText{SoundCode::NoSoundfont,
             u"Manca il file dei suoni (soundfont) del sintetizzatore interno."},
    CodeText{SoundCode::SoundfontDamaged,
             u"Il file dei suoni (soundfont) del sintetizzatore interno è danneggiato."},
    CodeText{SoundCode::UnknownDevice, u"Il dispositivo MIDI%1 non esiste."},
    CodeText{SoundCode::DeviceBusy, u"Il dispositivo MIDI%1 è occupato o non si lascia aprire."},
    CodeText{SoundCode::DeviceVanished, u"Il dispositivo MIDI%1 non è più collegato."},
    CodeText{SoundCode::InvalidHandle, u"Il dispositivo MIDI non è aperto."},
    CodeText{SoundCode::NotResponding, u"L'uscita audio non risponde."},
    CodeText{SoundCode::UnknownCommand, u"Comando multimediale sconosciuto."},
    CodeText{SoundCode::FileNotFound, u"Il file non esiste o non si può leggere."},
    CodeText{SoundCode::NotMidiFile, u"Il file non è un file MIDI."},
    CodeText{SoundCode::AliasInUse, u"Un file è già aperto con questo nome."},
    CodeText{SoundCode::AliasNotOpen, u"Nessun file è aperto con questo nome."},
};

}  // namespace

QString soundCodeText(int code, const QString& device) {
    const auto* found = std::find_if(kTexts.begin(), kTexts.end(), [code](const CodeText& entry) {
        return toInt(entry.code) == code;
    });
    if (found != kTexts.end()) {
        const QString name =
            device.isEmpty() ? QString() : QStringLiteral(" \"%1\"").arg(device.left(kNameLength));
        return QString::fromUtf16(found->text).replace(QLatin1String("%1"), name);
    }
    return QStringLiteral("Errore sconosciuto (codice %1).").arg(code);
}
