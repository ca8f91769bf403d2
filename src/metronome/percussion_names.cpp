#include "metronome/percussion_names.h"

#include <algorithm>
#include <array>

namespace percussion_names {
namespace {

struct Instrument {
    int note;
    const char* name;
};

constexpr std::array<Instrument, 29> kInstruments{{
    {27, "Suono acuto"},
    {31, "Bacchette"},
    {33, "Clic"},
    {34, "Campanella"},
    {35, "Grancassa"},
    {36, "Cassa"},
    {37, "Bordo rullante"},
    {38, "Rullante"},
    {40, "Rullante elettr."},
    {42, "Charleston chiuso"},
    {43, "Timpano"},
    {44, "Charleston pedale"},
    {45, "Tom grave"},
    {46, "Charleston aperto"},
    {48, "Tom medio"},
    {49, "Piatto crash"},
    {51, "Piatto ride"},
    {53, "Campana piatto"},
    {54, "Tamburello"},
    {61, "Bongo grave"},
    {65, "Timbale acuto"},
    {66, "Timbale grave"},
    {69, "Cabasa"},
    {75, "Legnetti"},
    {76, "Blocco acuto"},
    {77, "Blocco grave"},
    {81, "Triangolo"},
    {82, "Shaker"},
    {85, "Nacchere"},
}};

}  // namespace

QString nameOf(int note) {
    const auto* found =
        std::find_if(kInstruments.begin(), kInstruments.end(),
                     [note](const Instrument& instrument) { return instrument.note == note; });
    return found == kInstruments.end() ? QString() : QString::fromUtf8(found->name);
}

}  // namespace percussion_names
