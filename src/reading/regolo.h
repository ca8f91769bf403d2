#pragma once

#include "reading/staff_layout.h"
#include "reading/staff_step.h"

#include <QWidget>

#include <array>
#include <optional>

class RegoloMarker;

/// The ruler along the edge of the staff: a line, and a marker for each step. It reports where it
/// was pressed; what a press chooses is decided by its listener.
///
/// With the keyboard, Up, Down, Page Up, Page Down, Home and End move a cursor among the steps,
/// Home going to the highest; Space and Enter press the cursor's step.
class Regolo : public QWidget {
    Q_OBJECT

public:
    explicit Regolo(QWidget* parent = nullptr);

    /// To be called after each change of the ruler's size.
    void setScale(const staff_layout::Scale& scale);

    /// A hidden marker leaves a sign that its step is taken.
    void hideMarker(int step);
    void showAllMarkers();

    int cursorStep() const { return cursor_; }
    void moveCursor(int step);

    /// The same as a press on the middle of the step's band.
    void pressStep(int step);

Q_SIGNALS:
    /// The distance from the ruler's top in twips; it may lie outside every band.
    void pressed(double twips);
    /// The step that a press would choose has changed; nothing when there is none.
    void pointed(std::optional<int> step);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    RegoloMarker& markerOf(int step) const;
    double twipsAt(double y) const;
    QRectF bandRect(int step) const;
    void setHovered(std::optional<int> step);
    void reportPointed();
    void arrange();

    staff_layout::Scale scale_;
    std::array<RegoloMarker*, staff_step::kCount> markers_{};
    QWidget* line_;
    std::optional<int> hovered_;
    std::optional<int> lastPointed_;
    int cursor_;
};
