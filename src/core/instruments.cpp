#include "core/instruments.h"

#include "platform/user_text.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace instruments {
namespace {

constexpr std::array<const char*, kCount> kNames{
    QT_TRANSLATE_NOOP("UserText", "Acoustic Grand Piano"),
    QT_TRANSLATE_NOOP("UserText", "Bright Acoustic Piano"),
    QT_TRANSLATE_NOOP("UserText", "Electric Grand Piano"),
    QT_TRANSLATE_NOOP("UserText", "Honky-tonk Piano"),
    QT_TRANSLATE_NOOP("UserText", "Rhodes Piano"),
    QT_TRANSLATE_NOOP("UserText", "Chorused Piano"),
    QT_TRANSLATE_NOOP("UserText", "Harpsichord"),
    QT_TRANSLATE_NOOP("UserText", "Clavinet"),
    QT_TRANSLATE_NOOP("UserText", "Celesta"),
    QT_TRANSLATE_NOOP("UserText", "Glockenspiel"),
    QT_TRANSLATE_NOOP("UserText", "Music box"),
    QT_TRANSLATE_NOOP("UserText", "Vibraphone"),
    QT_TRANSLATE_NOOP("UserText", "Marimba"),
    QT_TRANSLATE_NOOP("UserText", "Xylophone"),
    QT_TRANSLATE_NOOP("UserText", "Tubular Bells"),
    QT_TRANSLATE_NOOP("UserText", "Dulcimer"),
    QT_TRANSLATE_NOOP("UserText", "Hammond Organ"),
    QT_TRANSLATE_NOOP("UserText", "Percussive Organ"),
    QT_TRANSLATE_NOOP("UserText", "Rock Organ"),
    QT_TRANSLATE_NOOP("UserText", "Church Organ"),
    QT_TRANSLATE_NOOP("UserText", "Reed Organ"),
    QT_TRANSLATE_NOOP("UserText", "Accordion"),
    QT_TRANSLATE_NOOP("UserText", "Harmonica"),
    QT_TRANSLATE_NOOP("UserText", "Tango Accordian"),
    QT_TRANSLATE_NOOP("UserText", "Acoustic Guitar (nylon)"),
    QT_TRANSLATE_NOOP("UserText", "Acoustic Guitar (steel)"),
    QT_TRANSLATE_NOOP("UserText", "Electric Guitar (jazz)"),
    QT_TRANSLATE_NOOP("UserText", "Electric Guitar (clean)"),
    QT_TRANSLATE_NOOP("UserText", "Electric Guitar (muted)"),
    QT_TRANSLATE_NOOP("UserText", "Overdriven Guitar"),
    QT_TRANSLATE_NOOP("UserText", "Distortion Guitar"),
    QT_TRANSLATE_NOOP("UserText", "Guitar Harmonics"),
    QT_TRANSLATE_NOOP("UserText", "Acoustic Bass"),
    QT_TRANSLATE_NOOP("UserText", "Electric Bass (finger)"),
    QT_TRANSLATE_NOOP("UserText", "Electric Bass (pick)"),
    QT_TRANSLATE_NOOP("UserText", "Fretless Bass"),
    QT_TRANSLATE_NOOP("UserText", "Slap Bass"),
    QT_TRANSLATE_NOOP("UserText", "Slap Bass"),
    QT_TRANSLATE_NOOP("UserText", "Synth Bass"),
    QT_TRANSLATE_NOOP("UserText", "Synth Bass"),
    QT_TRANSLATE_NOOP("UserText", "Violin"),
    QT_TRANSLATE_NOOP("UserText", "Viola"),
    QT_TRANSLATE_NOOP("UserText", "Cello"),
    QT_TRANSLATE_NOOP("UserText", "Contrabass"),
    QT_TRANSLATE_NOOP("UserText", "Tremolo Strings"),
    QT_TRANSLATE_NOOP("UserText", "Pizzicato Strings"),
    QT_TRANSLATE_NOOP("UserText", "Orchestral Harp"),
    QT_TRANSLATE_NOOP("UserText", "Timpani"),
    QT_TRANSLATE_NOOP("UserText", "String Ensemble"),
    QT_TRANSLATE_NOOP("UserText", "String Ensemble"),
    QT_TRANSLATE_NOOP("UserText", "Synth Strings"),
    QT_TRANSLATE_NOOP("UserText", "Synth Strings"),
    QT_TRANSLATE_NOOP("UserText", "Choir Aahs"),
    QT_TRANSLATE_NOOP("UserText", "Voice Oohs"),
    QT_TRANSLATE_NOOP("UserText", "Synth Voice"),
    QT_TRANSLATE_NOOP("UserText", "Orchestra Hit"),
    QT_TRANSLATE_NOOP("UserText", "Trumpet"),
    QT_TRANSLATE_NOOP("UserText", "Trombone"),
    QT_TRANSLATE_NOOP("UserText", "Tuba"),
    QT_TRANSLATE_NOOP("UserText", "Muted Trumpet"),
    QT_TRANSLATE_NOOP("UserText", "French Horn"),
    QT_TRANSLATE_NOOP("UserText", "Brass Section"),
    QT_TRANSLATE_NOOP("UserText", "Synth Brass"),
    QT_TRANSLATE_NOOP("UserText", "Synth Brass"),
    QT_TRANSLATE_NOOP("UserText", "Soprano Sax"),
    QT_TRANSLATE_NOOP("UserText", "Alto Sax"),
    QT_TRANSLATE_NOOP("UserText", "Tenor Sax"),
    QT_TRANSLATE_NOOP("UserText", "Baritone Sax"),
    QT_TRANSLATE_NOOP("UserText", "Oboe"),
    QT_TRANSLATE_NOOP("UserText", "English Horn"),
    QT_TRANSLATE_NOOP("UserText", "Bassoon"),
    QT_TRANSLATE_NOOP("UserText", "Clarinet"),
    QT_TRANSLATE_NOOP("UserText", "Piccolo"),
    QT_TRANSLATE_NOOP("UserText", "Flute"),
    QT_TRANSLATE_NOOP("UserText", "Recorder"),
    QT_TRANSLATE_NOOP("UserText", "Pan Flute"),
    QT_TRANSLATE_NOOP("UserText", "Bottle Blow"),
    QT_TRANSLATE_NOOP("UserText", "Shakuhachi"),
    QT_TRANSLATE_NOOP("UserText", "Whistle"),
    QT_TRANSLATE_NOOP("UserText", "Ocarina"),
    QT_TRANSLATE_NOOP("UserText", "Lead (square)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (sawtooth)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (caliope lead)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (chiff lead)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (charang)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (voice)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (fifths)"),
    QT_TRANSLATE_NOOP("UserText", "Lead (brass + lead)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (new age)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (warm)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (polysynth)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (choir)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (bowed)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (metallic)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (halo)"),
    QT_TRANSLATE_NOOP("UserText", "Pad (sweep)"),
    QT_TRANSLATE_NOOP("UserText", "FX (rain)"),
    QT_TRANSLATE_NOOP("UserText", "FX (soundtrack)"),
    QT_TRANSLATE_NOOP("UserText", "FX (crystal)"),
    QT_TRANSLATE_NOOP("UserText", "FX (atmosphere)"),
    QT_TRANSLATE_NOOP("UserText", "FX (brightness)"),
    QT_TRANSLATE_NOOP("UserText", "FX (goblins)"),
    QT_TRANSLATE_NOOP("UserText", "FX (echoes)"),
    QT_TRANSLATE_NOOP("UserText", "FX (sci-fi)"),
    QT_TRANSLATE_NOOP("UserText", "Sitar"),
    QT_TRANSLATE_NOOP("UserText", "Banjo"),
    QT_TRANSLATE_NOOP("UserText", "Shamisen"),
    QT_TRANSLATE_NOOP("UserText", "Koto"),
    QT_TRANSLATE_NOOP("UserText", "Kalimba"),
    QT_TRANSLATE_NOOP("UserText", "Bagpipe"),
    QT_TRANSLATE_NOOP("UserText", "Fiddle"),
    QT_TRANSLATE_NOOP("UserText", "Shanai"),
    QT_TRANSLATE_NOOP("UserText", "Tinkle Bell"),
    QT_TRANSLATE_NOOP("UserText", "Agogo"),
    QT_TRANSLATE_NOOP("UserText", "Steel Drums"),
    QT_TRANSLATE_NOOP("UserText", "Woodblock"),
    QT_TRANSLATE_NOOP("UserText", "Taiko Drum"),
    QT_TRANSLATE_NOOP("UserText", "Melodic Tom"),
    QT_TRANSLATE_NOOP("UserText", "Synth Drum"),
    QT_TRANSLATE_NOOP("UserText", "Reverse Cymbal"),
    QT_TRANSLATE_NOOP("UserText", "Guitar Fret Noise"),
    QT_TRANSLATE_NOOP("UserText", "Breath Noise"),
    QT_TRANSLATE_NOOP("UserText", "Seashore"),
    QT_TRANSLATE_NOOP("UserText", "Bird Tweet"),
    QT_TRANSLATE_NOOP("UserText", "Telephone Ring"),
    QT_TRANSLATE_NOOP("UserText", "Helicopter"),
    QT_TRANSLATE_NOOP("UserText", "Applause"),
    QT_TRANSLATE_NOOP("UserText", "Gunshot"),
};

constexpr std::array<const char*, kFamilies> kFamilyNames{
    QT_TRANSLATE_NOOP("UserText", "Pianoforti"),
    QT_TRANSLATE_NOOP("UserText", "Percussioni intonate"),
    QT_TRANSLATE_NOOP("UserText", "Organi"),
    QT_TRANSLATE_NOOP("UserText", "Chitarre"),
    QT_TRANSLATE_NOOP("UserText", "Bassi"),
    QT_TRANSLATE_NOOP("UserText", "Archi"),
    QT_TRANSLATE_NOOP("UserText", "Insiemi e voci"),
    QT_TRANSLATE_NOOP("UserText", "Ottoni"),
    QT_TRANSLATE_NOOP("UserText", "Ance"),
    QT_TRANSLATE_NOOP("UserText", "Flauti"),
    QT_TRANSLATE_NOOP("UserText", "Sintetizzatori"),
    QT_TRANSLATE_NOOP("UserText", "Tappeti sonori"),
    QT_TRANSLATE_NOOP("UserText", "Effetti sintetici"),
    QT_TRANSLATE_NOOP("UserText", "Strumenti etnici"),
    QT_TRANSLATE_NOOP("UserText", "Percussioni"),
    QT_TRANSLATE_NOOP("UserText", "Rumori")};

}  // namespace

QString InstrumentName(int program) {
    if (program < 0 || program >= kCount)
        return {};
    return UserText::tr(kNames[static_cast<std::size_t>(program)]);
}

QString caption(int program) {
    return QString::number(program) + QLatin1Char('-') + InstrumentName(program);
}

QString familyName(int family) {
    return UserText::tr(kFamilyNames[static_cast<std::size_t>(family)]);
}

std::vector<int> find(const QString& words) {
    const QStringList all = words.split(u' ', Qt::SkipEmptyParts);
    std::vector<int> found;
    for (int program = 0; program < kCount; ++program) {
        const QString names =
            caption(program) + QLatin1Char('\n') + familyName(program / kProgramsInFamily);
        if (std::all_of(all.begin(), all.end(), [&names](const QString& word) {
                return names.contains(word, Qt::CaseInsensitive);
            }))
            found.push_back(program);
    }
    return found;
}

}  // namespace instruments
