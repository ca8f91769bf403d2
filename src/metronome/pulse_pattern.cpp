#include "metronome/pulse_pattern.h"

#include <algorithm>

namespace pulse_pattern {

std::optional<Kind> kindOf(QChar letter) {
    switch (letter.unicode()) {
        case u'a':
            return Kind::A;
        case u'b':
            return Kind::B;
        case u'c':
            return Kind::C;
        default:
            return std::nullopt;
    }
}

Colour colourOf(Kind kind) {
    constexpr std::array<Colour, 3> kColours{lamp_colours::kRed, lamp_colours::kGreen,
                                             lamp_colours::kBlue};
    return kColours[static_cast<std::size_t>(kind)];
}

const BuiltIn& builtInAfter(const QString& timeSig) {
    const auto* found = std::find_if(kBuiltIn.begin(), kBuiltIn.end(),
                                     [&](const BuiltIn& item) { return item.timeSig == timeSig; });
    if (found == kBuiltIn.end() || found + 1 == kBuiltIn.end())
        return kBuiltIn.front();
    return *(found + 1);
}

bool isBuiltIn(const QString& pattern) {
    return std::any_of(kBuiltIn.begin(), kBuiltIn.end(),
                       [&](const BuiltIn& item) { return item.pattern == pattern; });
}

}  // namespace pulse_pattern
