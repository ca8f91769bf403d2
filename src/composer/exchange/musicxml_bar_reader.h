#pragma once

#include "composer/exchange/imported_score.h"

class XmlCursor;

namespace musicxml {

struct NoteElement;

/// Reads the bars of a part one after the other; what an attribute changes holds for the bars
/// behind it.
class BarReader {
public:
    BarReader(XmlCursor& xml, imported::Score& score) : xml_(xml), score_(score) {}

    /// Reads the element of a bar that was entered and leaves it.
    void readBar();

private:
    void readChild();
    void readAttributes();
    void readTransposition();
    void readNote();
    void addNote(const NoteElement& element, std::int64_t ticks);
    void readBarline();
    void readEnding();
    void readDirection();
    void readMetronome();
    void readSound();
    void takeTempo(double tempo);
    void move(int sign);
    void fault(const QString& reason);
    double number(double otherwise);
    std::optional<std::int64_t> ticksOf(double duration) const;
    std::optional<std::int64_t> durationOf(const NoteElement& element) const;

    XmlCursor& xml_;
    imported::Score& score_;
    imported::Bar bar_;
    double divisions_ = 1;
    int transposition_ = 0;  ///< semitones from the written to the sounding note
    std::int64_t position_ = 0;
    std::uint32_t endings_ = 0;  ///< that the bar lies in
};

}  // namespace musicxml
