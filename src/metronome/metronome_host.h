#pragma once

class QWidget;

/// What the metronome's frame asks of the window that holds it.
class MetronomeHost {
public:
    virtual ~MetronomeHost() = default;

    /// While the metronome runs, the menus `f1`, `es` and `Opzioni` and the button `cmdEsci` are
    /// disabled; only the help menu stays usable.
    virtual void setMetronomeRunning(bool running) = 0;

    /// Gives the drill's start button the focus. When the frame is hidden, the toolkit would pass
    /// it on to the button that ends the program.
    virtual void focusStart() = 0;

    /// The controls whose colours `cmdSSmetro` takes: `pdo` on a start, `cmdEsci` on a stop.
    virtual const QWidget& startColourSource() const = 0;
    virtual const QWidget& stopColourSource() const = 0;
};
