#include "platform/linux/sound_code.h"

#include "platform/user_text.h"

#include <algorithm>
#include <array>

namespace {

/// Leaves room for the longest text around a device's name.
constexpr int kNameLength = 60;

struct CodeText {
    SoundCode code;
    const char* text;
};

constexpr std::array kTexts{
    CodeText{SoundCode::Ok, QT_TRANSLATE_NOOP("UserText", "Nessun errore.")},
    CodeText{SoundCode::NoAudioDevice,
             QT_TRANSLATE_NOOP("UserText",
                               "Nessuna uscita audio: il sintetizzatore interno non può suonare.")},
    CodeText{SoundCode::NoSoundfont,
             QT_TRANSLATE_NOOP("UserText",
                               "Manca il file dei suoni (soundfont) del sintetizzatore interno.")},
    CodeText{
        SoundCode::SoundfontDamaged,
        QT_TRANSLATE_NOOP(
            "UserText", "Il file dei suoni (soundfont) del sintetizzatore interno è danneggiato.")},
    CodeText{SoundCode::UnknownDevice,
             QT_TRANSLATE_NOOP("UserText", "Il dispositivo MIDI%1 non esiste.")},
    CodeText{
        SoundCode::DeviceBusy,
        QT_TRANSLATE_NOOP("UserText", "Il dispositivo MIDI%1 è occupato o non si lascia aprire.")},
    CodeText{SoundCode::DeviceVanished,
             QT_TRANSLATE_NOOP("UserText", "Il dispositivo MIDI%1 non è più collegato.")},
    CodeText{SoundCode::InvalidHandle,
             QT_TRANSLATE_NOOP("UserText", "Il dispositivo MIDI non è aperto.")},
    CodeText{SoundCode::NotResponding,
             QT_TRANSLATE_NOOP("UserText", "L'uscita audio non risponde.")},
    CodeText{SoundCode::UnknownCommand,
             QT_TRANSLATE_NOOP("UserText", "Comando multimediale sconosciuto.")},
    CodeText{SoundCode::FileNotFound,
             QT_TRANSLATE_NOOP("UserText", "Il file non esiste o non si può leggere.")},
    CodeText{SoundCode::NotMidiFile, QT_TRANSLATE_NOOP("UserText", "Il file non è un file MIDI.")},
    CodeText{SoundCode::AliasInUse,
             QT_TRANSLATE_NOOP("UserText", "Un file è già aperto con questo nome.")},
    CodeText{SoundCode::AliasNotOpen,
             QT_TRANSLATE_NOOP("UserText", "Nessun file è aperto con questo nome.")},
};

}  // namespace

QString soundCodeText(int code, const QString& device) {
    const auto* found = std::find_if(kTexts.begin(), kTexts.end(), [code](const CodeText& entry) {
        return toInt(entry.code) == code;
    });
    if (found != kTexts.end()) {
        const QString name =
            device.isEmpty() ? QString() : QStringLiteral(" \"%1\"").arg(device.left(kNameLength));
        return UserText::tr(found->text).replace(QLatin1String("%1"), name);
    }
    return UserText::tr("Errore sconosciuto (codice %1).").arg(code);
}
