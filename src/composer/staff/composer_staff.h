#pragma once

#include "composer/staff/composer_staff_view.h"

#include <QWidget>

#include <optional>

class ActiveNotePicture;
class ActiveSharpPicture;
class MusicFont;

/// The staff of the composer, `Regolo`: a card with both clefs that shows the melody's entries
/// around the current one, and in a column on its right the active note, `lblCursore`, with its
/// sharp, `lblAccidente`.
class ComposerStaff : public QWidget {
    Q_OBJECT

public:
    explicit ComposerStaff(QWidget* parent = nullptr);

    void setSource(ComposerStaffView::Source source);

    /// To be called when the melody has changed.
    void refresh();

    /// The entry that is played or stepped to, which is highlighted and comes into view; without
    /// one, the last entry of the melody is in view.
    void setCurrentEntry(std::optional<int> entry);

    /// The entries where playing begins and ends, which are marked.
    void setPlayRange(int first, int last);

    /// A note 36..95; any other number is none.
    void setActiveNote(int noteNumber);

    QSize sizeHint() const override { return {1100, 220}; }
    QSize minimumSizeHint() const override { return {420, 160}; }

Q_SIGNALS:
    /// The natural note where the left mouse button was pressed, and the same when it is released.
    void noteChosen(int noteNumber);
    void noteReleased(int noteNumber);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void arrange();
    void placeActiveNote();
    void setPointed(std::optional<int> noteNumber);
    void release();
    void describe();

    void paintCard(QPainter& painter) const;
    void paintPointed(QPainter& painter, const composer_staff_painter::Staves& staves) const;
    void paintNumber(QPainter& painter, const ComposerStaffView::Shown& entry) const;
    void paintRangeMarks(QPainter& painter, const ComposerStaffView::Shown& entry) const;

    const MusicFont& font_;
    ActiveNotePicture* cursor_;
    ActiveSharpPicture* accidental_;
    ComposerStaffView view_;
    std::optional<int> current_;
    int rangeFirst_ = -1;
    int rangeLast_ = -1;
    int activeNote_ = 0;
    std::optional<int> pointed_;
    std::optional<int> pressed_;
};
