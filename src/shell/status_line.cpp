#include "shell/status_line.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "core/midi_keyboard.h"
#include "platform/user_text.h"

namespace status_line {

QString keyboards(const MidiKeyboard* keyboard) {
    const auto joined = [](const QStringList& names) { return names.join(QStringLiteral(", ")); };
    if (keyboard && !keyboard->names().isEmpty())
        return UserText::tr("Tastiera MIDI: %1").arg(joined(keyboard->names()));
    if (keyboard && !keyboard->lost().isEmpty())
        return UserText::tr("Tastiera MIDI: nessuna (scollegata: %1)")
            .arg(joined(keyboard->lost()));
    return {};
}

QString text(const FunzioniMM& funzioniMM, const MidiKeyboard* keyboard) {
    const OpenOutput& open = funzioniMM.output();
    QString output = open.deviceName().value_or(UserText::tr("sconosciuta"));
    if (open.isLost())
        output = UserText::tr("nessuna (interrotta: %1)").arg(output);
    else if (!open.isOpen())
        output = open.wasTried() ? UserText::tr("nessuna") : UserText::tr("in preparazione");
    const QString sound = UserText::tr("Uscita: %1   ·   Strumento: %2")
                              .arg(output, instruments::caption(funzioniMM.currentInstrument()));
    const QString keys = keyboards(keyboard);
    return keys.isEmpty() ? sound : sound + QStringLiteral("   ·   ") + keys;
}

}  // namespace status_line
