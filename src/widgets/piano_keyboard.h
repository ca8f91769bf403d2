#pragma once

#include "widgets/piano_key_layout.h"
#include "widgets/piano_key_painting.h"

#include <QWidget>

#include <array>
#include <optional>

/// The place of one key, `lb_0` … `lb_59`, for the mouse and for screen readers. The keyboard
/// paints it (`piano_key_painting`) and answers its events.
class PianoKey : public QWidget {
    Q_OBJECT

public:
    PianoKey(int index, QWidget* parent);

    int index() const { return index_; }

private:
    int index_;
};

/// A piano keyboard of five octaves from note number 36; a key's index is its note number - 36.
///
/// A press of the left mouse button is a key going down, its release anywhere the same key going
/// up, and a click if it is released over that key. While `keyDoubleClick` is connected, a double
/// click gives down, up, click, double click, up; otherwise it is two clicks. With the keyboard,
/// Left, Right, Page Up, Page Down, Home and End move a cursor, Space and Enter hold the cursor's
/// key down for as long as the keyboard has the focus. All other keys go to the window.
class PianoKeyboard : public QWidget {
    Q_OBJECT

public:
    static constexpr int kKeys = piano_key_layout::kKeys;

    explicit PianoKeyboard(QWidget* parent = nullptr);

    /// A marked key looks pressed, at once. An index that is no key changes nothing.
    void setMarked(int index, bool on);
    bool marked(int index) const;

    /// So does one that is held on an instrument, whether it is marked or not.
    void setHeld(int index, bool on);
    bool pressed(int index) const;

    /// The bars `lbr_0` … `lbr_59` below the naturals and above the sharps. They have room only
    /// after `showRangeMarks(true)`.
    void setRangeMark(int index, bool on);
    bool rangeMark(int index) const;
    void showRangeMarks(bool on);

    /// The blue square on middle C.
    QRect middleCSquare() const;

    /// Where the keys are, and the part of a key that no other one lies over.
    const QRectF& keyArea() const { return keyArea_; }

    /// Of the row of range marks below the keys, and of that above them.
    int markRowHeight() const;
    QRect keyFace(int index) const {
        return piano_key_layout::faceRect(index, keyArea_).toAlignedRect();
    }

    /// A key is held down on the keyboard that has the focus.
    bool playsWithFocus() const { return press_ && hasFocus(); }

    int cursorKey() const { return cursor_; }
    void moveCursor(int index);

    /// A short press, as a screen reader asks for: down at once, up and click a moment later.
    void tap(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void keyDown(int index);
    void keyUp(int index);
    void keyClick(int index);
    void keyDoubleClick(int index);
    void keyEntered(int index);  ///< Enter, after the key went down
    void arranged();             ///< the keys are in other places now

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// What holds a key down.
    enum class Holder { Mouse, DoubleClick, Keyboard, ScreenReader };
    struct Press {
        int key;
        Holder holder;
    };

    piano_key_painting::Look lookOf(int index) const;

    static bool isKey(int index) { return index >= 0 && index < kKeys; }
    QWidget* keyWidget(int index) const { return keys_[static_cast<std::size_t>(index)]; }
    QWidget* markWidget(int index) const { return rangeMarks_[static_cast<std::size_t>(index)]; }
    std::optional<int> keyTarget(int key) const;

    void setHovered(std::optional<int> key);
    void setShown(std::array<bool, kKeys>& keys, int index, bool on);
    void begin(int index, Holder holder);
    void end(bool click);
    bool heldByMouse() const;
    bool reportsDoubleClicks() const;
    void arrange();
    void repaintKey(int index);

    std::array<PianoKey*, kKeys> keys_{};
    std::array<QWidget*, kKeys> rangeMarks_{};
    std::array<bool, kKeys> marked_{};
    std::array<bool, kKeys> held_{};
    std::array<bool, kKeys> rangeMarked_{};
    QRectF keyArea_;  ///< the rectangle that the keys fill
    std::optional<Press> press_;
    std::optional<int> lastClicked_;
    std::optional<int> hovered_;
    int cursor_;
    int taps_ = 0;
    bool showsRangeMarks_ = false;
};
