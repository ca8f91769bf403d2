#include "eartraining/ear_prompt.h"

#include <array>

namespace {

constexpr std::array kTexts{
    "Scegli la nota inferiore dell'intervallo",
    "Scegli la nota superiore dell'intervallo",
    "Scegli la nota di riferimento e premi Start",
    "Riconosci la nota suonata",
    "Riconosci intervallo suonato",
    "Riconosci tipo accordo suonato",
    "Reimposta l'intervallo",
};

}  // namespace

QString textOf(EarPrompt prompt) {
    static_assert(kTexts.size() == static_cast<std::size_t>(EarPrompt::ResetRange) + 1);
    return QLatin1String(kTexts[static_cast<std::size_t>(prompt)]);
}
