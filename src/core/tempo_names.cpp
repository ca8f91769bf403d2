#include "core/tempo_names.h"

#include <algorithm>
#include <array>

namespace tempo_names {
namespace {

struct Range {
    int from;  ///< beats per minute
    QLatin1String name;
};

/// From the slowest on. The scale itself begins at 40; what is slower has the word that scores use.
constexpr std::array<Range, 9> kScale{{
    {0, QLatin1String("Grave")},
    {40, QLatin1String("Largo")},
    {60, QLatin1String("Larghetto")},
    {66, QLatin1String("Adagio")},
    {76, QLatin1String("Andante")},
    {108, QLatin1String("Moderato")},
    {120, QLatin1String("Allegro")},
    {168, QLatin1String("Presto")},
    {200, QLatin1String("Prestissimo")},
}};

}  // namespace

QLatin1String nameOf(int beatsPerMinute) {
    const auto* faster =
        std::find_if(kScale.begin() + 1, kScale.end(),
                     [beatsPerMinute](const Range& range) { return range.from > beatsPerMinute; });
    return (faster - 1)->name;
}

}  // namespace tempo_names
