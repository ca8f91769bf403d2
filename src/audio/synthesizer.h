#pragma once

#include <cstdint>
#include <memory>
#include <string>

/// The General MIDI synthesizer, with two sets of 16 channels: one for the MIDI output and one for
/// the tune, so that a soundfont is in memory once and neither can disturb the other.
class Synthesizer {
public:
    enum class Part { Output, Tune };

    static constexpr int kBlockFrames = 64;  ///< messages take effect at multiples of this

    /// Nothing if the soundfont cannot be loaded.
    static std::unique_ptr<Synthesizer> load(const std::string& soundfont, double rate);
    ~Synthesizer();
    Synthesizer(const Synthesizer&) = delete;
    Synthesizer& operator=(const Synthesizer&) = delete;

    /// Note on, note off and program change for either part; for the tune also controllers and
    /// bends. Anything else is ignored.
    void message(Part part, std::uint32_t packed);

    /// Ends every note of a part at once. The programs stay.
    void silence(Part part);

    /// Gives a part the state that a MIDI file expects at its start.
    void restore(Part part);

    /// Renders a block of kBlockFrames.
    void render(float* left, float* right);

    bool anyVoice() const;

    /// Chooses the instruments of another one.
    void takePrograms(const Synthesizer& other);

private:
    struct Engine;
    explicit Synthesizer(std::unique_ptr<Engine> engine);
    std::unique_ptr<Engine> engine_;
};

/// Whether the file exists; if it does and does not load, it is damaged.
bool soundfontExists(const std::string& soundfont);
