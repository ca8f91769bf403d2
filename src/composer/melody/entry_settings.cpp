#include "composer/melody/entry_settings.h"

#include "composer/melody/rhythm.h"

namespace {

constexpr int kTripletEntries = 3;

QLatin1String letterOf(std::uint8_t attribute) {
    if (attribute >= kAttributeButtons.size())
        return letter::kNormale;
    return letter::tokenOf(*kAttributeButtons[attribute].letter);
}

}  // namespace

double EntrySettings::baseDuration() const {
    return note_values::kAll[symbol_].quarters;
}

void EntrySettings::clickAttribute(std::uint8_t attribute) {
    if (mode_.attribute != attribute) {
        mode_.attribute = attribute;
        return;
    }
    if (attribute == Terzina)
        mode_.tripletCounter = 0;
    clearAttribute();
}

EntrySettings::Computed EntrySettings::ComputeEntry(Kind kind, const Melody& melody) {
    const double base = baseDuration();
    const bool note = kind == Kind::Note;
    Computed entry{base, note ? letterOf(mode_.attribute) : letter::kPausa};
    if (mode_.attribute == Punto) {
        entry.duration = note_values::dotted(base);
    } else if (mode_.attribute == Terzina) {
        ++mode_.tripletCounter;
        entry.duration = rhythm::tripletOf(base);
    } else if (mode_.attribute == Legato && note && !melody.empty()) {
        entry.duration = melody.entries().back().quarters() + base;
        entry.replacesLast = true;
    }
    return entry;
}

void EntrySettings::resetAfterInsertion() {
    if (mode_.attribute == Terzina && mode_.tripletCounter < kTripletEntries)
        return;
    if (mode_.tripletCounter == kTripletEntries)
        mode_ = {};
    if (!keepsAttributes_)
        clearAttribute();
}
