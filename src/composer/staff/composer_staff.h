#pragma once

#include "composer/staff/composer_staff_painter.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class ActiveNotePicture;
class ActiveSharpPicture;
class MusicFont;

/// The staff of the composer, `Regolo`: a card with both clefs that shows the melody's entries
/// around the current one, and in a column on its right the active note, `lblCursore`, with its
/// sharp, `lblAccidente`. It reports which note was clicked and knows nothing of what that means.
///
/// It asks for the entries that it shows only, so that its cost does not grow with the melody.
class ComposerStaff : public QWidget {
public:
    struct Source {
        std::function<int()> count;
        std::function<staff_entry::Entry(int)> entryAt;  ///< 0..count - 1
    };
    using NoteHandler = std::function<void(int noteNumber)>;

    explicit ComposerStaff(QWidget* parent = nullptr);

    void setSource(Source source);

    /// To be called when the melody has changed.
    void refresh();

    /// The entry that is played or stepped to, which is highlighted and comes into view; without
    /// one, the last entry of the melody is in view.
    void setCurrentEntry(std::optional<int> entry);

    /// The entries where playing begins and ends, which are marked.
    void setPlayRange(int first, int last);

    /// A note 36..95; any other number is none.
    void setActiveNote(int noteNumber);

    /// The natural note where the left mouse button was pressed, and the same when it is released.
    void onNoteChosen(NoteHandler handler) { chosen_ = std::move(handler); }
    void onNoteReleased(NoteHandler handler) { released_ = std::move(handler); }

    QSize sizeHint() const override { return {1100, 220}; }
    QSize minimumSizeHint() const override { return {420, 160}; }

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
    struct Shown {
        composer_staff_layout::Placed place;
        composer_staff_painter::Engraved engraved;
    };

    void arrange();
    void placeActiveNote();
    void layOutEntries();
    void fetch(const composer_staff_layout::View& view, int count);
    composer_staff_layout::System systemOf(int index, const staff_entry::Entry& entry) const;
    const Shown* shown(int entry) const;
    qreal leftOf(const Shown& entry) const;
    QRectF cellRect(const Shown& entry) const;
    QRectF column() const;
    int noteAt(qreal y) const;
    void setPointed(std::optional<int> noteNumber);
    void release();
    void describe();

    void paintCard(QPainter& painter) const;
    void paintPointed(QPainter& painter, const composer_staff_painter::Staves& staves) const;
    void paintNumber(QPainter& painter, const Shown& entry) const;
    void paintRangeMarks(QPainter& painter, const Shown& entry) const;

    const MusicFont& font_;
    Source source_;
    NoteHandler chosen_;
    NoteHandler released_;
    ActiveNotePicture* cursor_;
    ActiveSharpPicture* accidental_;

    composer_staff_painter::Staves staves_;
    qreal top_ = 0;  ///< y of place 0
    qreal entriesLeft_ = 0;
    qreal entriesRight_ = 0;
    composer_staff_layout::View view_;
    std::vector<Shown> shown_;

    std::optional<int> current_;
    int rangeFirst_ = -1;
    int rangeLast_ = -1;
    int activeNote_ = 0;
    std::optional<int> pointed_;
    std::optional<int> pressed_;
};
