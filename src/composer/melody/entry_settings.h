#pragma once

#include "composer/melody/melody.h"
#include "core/letter.h"
#include "core/note_values.h"
#include "platform/user_text.h"

#include <QString>

#include <array>
#include <cstdint>

/// What the next entry will be: the palette of note symbols and attributes.
class EntrySettings {
public:
    enum class Kind { Note, Rest };

    /// The attribute buttons, and the state in which none is chosen.
    enum Attribute : std::uint8_t {
        Punto,
        Staccato,
        Legato,
        Terzina,
        Tenuto,
        Accentato,
        NoAttribute,
    };
    static constexpr int kAttributeCount = NoAttribute;

    struct Computed {
        double duration = 0;  ///< in quarter notes
        QString letter;
        bool replacesLast = false;  ///< a tie: the last entry goes, its duration is in this one
    };

    /// The part of the settings that an insertion changes.
    struct Mode {
        std::uint8_t attribute = NoAttribute;
        std::uint8_t tripletCounter = 0;

        bool operator==(const Mode&) const = default;
    };

    std::uint8_t symbol() const { return symbol_; }
    std::uint8_t attribute() const { return mode_.attribute; }
    double baseDuration() const;

    /// Chooses a symbol 0..6, as `note_values::kAll` counts them.
    void chooseSymbol(std::uint8_t symbol) { symbol_ = symbol; }

    /// A click on an attribute button: chooses it, or chooses none if it was chosen. Giving up
    /// the triplet forgets how many of its entries were made.
    void clickAttribute(std::uint8_t attribute);

    /// Chooses no attribute.
    void clearAttribute() { mode_.attribute = NoAttribute; }

    /// "Conserva attributi": an insertion leaves the attribute chosen.
    void setKeepsAttributes(bool on) { keepsAttributes_ = on; }

    /// Works out the next entry at the end of a melody; an entry of a triplet is counted.
    Computed ComputeEntry(Kind kind, const Melody& melody);

    /// After an insertion the attribute is given up, but a triplet only after its third entry.
    void resetAfterInsertion();

    const Mode& mode() const { return mode_; }
    void setMode(const Mode& mode) { mode_ = mode; }

private:
    std::uint8_t symbol_ = static_cast<std::uint8_t>(note_values::Duration::Quarter);
    Mode mode_;
    bool keepsAttributes_ = false;
};

/// An attribute button: one that changes the duration has a tooltip of its own and leaves the
/// letter "n"; any other chooses a letter, whose tooltip and sign it shows.
struct AttributeButton {
    EntrySettings::Attribute attribute;
    const letter::EntryLetter* letter;
    const char* toolTip = letter->toolTip;
};

constexpr auto kAttributeButtons = std::to_array<AttributeButton>({
    {EntrySettings::Punto, &letter::rowOf('n'), QT_TRANSLATE_NOOP("UserText", "Punto")},
    {EntrySettings::Staccato, &letter::rowOf('s')},
    {EntrySettings::Legato, &letter::rowOf('n'),
     QT_TRANSLATE_NOOP("UserText", "Legato con la nota precedente")},
    {EntrySettings::Terzina, &letter::rowOf('n'), QT_TRANSLATE_NOOP("UserText", "Terzina")},
    {EntrySettings::Tenuto, &letter::rowOf('t')},
    {EntrySettings::Accentato, &letter::rowOf('a')},
});

static_assert(
    [] {
        for (std::size_t i = 0; i < kAttributeButtons.size(); ++i) {
            const AttributeButton& button = kAttributeButtons[i];
            const bool hasPicture = button.letter == &letter::rowOf('n') || button.letter->sign;
            if (button.attribute != i || !button.toolTip || !hasPicture)
                return false;
        }
        return kAttributeButtons.size() == EntrySettings::kAttributeCount;
    }(),
    "a row with tooltip and picture for each attribute, in the order of the enum");
