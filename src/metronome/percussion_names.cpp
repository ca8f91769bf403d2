#include "metronome/percussion_names.h"

#include "platform/user_text.h"

#include <algorithm>
#include <array>

namespace percussion_names {
namespace {

struct Instrument {
    int note;
    const char* name;
};

constexpr std::array<Instrument, 29> kInstruments{{
    {27, QT_TRANSLATE_NOOP("UserText", "Suono acuto")},
    {31, QT_TRANSLATE_NOOP("UserText", "Bacchette")},
    {33, QT_TRANSLATE_NOOP("UserText", "Clic")},
    {34, QT_TRANSLATE_NOOP("UserText", "Campanella")},
    {35, QT_TRANSLATE_NOOP("UserText", "Grancassa")},
    {36, QT_TRANSLATE_NOOP("UserText", "Cassa")},
    {37, QT_TRANSLATE_NOOP("UserText", "Bordo rullante")},
    {38, QT_TRANSLATE_NOOP("UserText", "Rullante")},
    {40, QT_TRANSLATE_NOOP("UserText", "Rullante elettr.")},
    {42, QT_TRANSLATE_NOOP("UserText", "Charleston chiuso")},
    {43, QT_TRANSLATE_NOOP("UserText", "Timpano")},
    {44, QT_TRANSLATE_NOOP("UserText", "Charleston pedale")},
    {45, QT_TRANSLATE_NOOP("UserText", "Tom grave")},
    {46, QT_TRANSLATE_NOOP("UserText", "Charleston aperto")},
    {48, QT_TRANSLATE_NOOP("UserText", "Tom medio")},
    {49, QT_TRANSLATE_NOOP("UserText", "Piatto crash")},
    {51, QT_TRANSLATE_NOOP("UserText", "Piatto ride")},
    {53, QT_TRANSLATE_NOOP("UserText", "Campana piatto")},
    {54, QT_TRANSLATE_NOOP("UserText", "Tamburello")},
    {61, QT_TRANSLATE_NOOP("UserText", "Bongo grave")},
    {65, QT_TRANSLATE_NOOP("UserText", "Timbale acuto")},
    {66, QT_TRANSLATE_NOOP("UserText", "Timbale grave")},
    {69, QT_TRANSLATE_NOOP("UserText", "Cabasa")},
    {75, QT_TRANSLATE_NOOP("UserText", "Legnetti")},
    {76, QT_TRANSLATE_NOOP("UserText", "Blocco acuto")},
    {77, QT_TRANSLATE_NOOP("UserText", "Blocco grave")},
    {81, QT_TRANSLATE_NOOP("UserText", "Triangolo")},
    {82, QT_TRANSLATE_NOOP("UserText", "Shaker")},
    {85, QT_TRANSLATE_NOOP("UserText", "Nacchere")},
}};

}  // namespace

QString nameOf(int note) {
    const auto* found =
        std::find_if(kInstruments.begin(), kInstruments.end(),
                     [note](const Instrument& instrument) { return instrument.note == note; });
    return found == kInstruments.end() ? QString() : UserText::tr(found->name);
}

}  // namespace percussion_names
