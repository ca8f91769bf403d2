#pragma once

#include "composer/staff/composer_staff_cursor.h"
#include "composer/staff/staff_marks.h"
#include "composer/staff/staff_page.h"

#include <QWidget>

#include <optional>

class MusicFont;
class QScrollBar;

/// The staff of the composer, `Regolo`: a card with the melody as engraved systems, which is
/// scrolled up and down. Behind the last entry, or over the one that was stepped to, stands the
/// note that would be written, `lblCursore`, with its sharp, `lblAccidente`.
class ComposerStaff : public QWidget {
    Q_OBJECT

public:
    /// The note that would be written.
    struct Preview {
        staff_entry::Entry entry;  ///< of no note 36..95 if there is no active note
        bool tied = false;
        bool overCurrent = false;  ///< in place of the current entry
    };

    explicit ComposerStaff(QWidget* parent = nullptr);

    void setSource(const notation::Source& source);

    /// To be called when the entries from one on may be others than before; they come into view.
    void changedFrom(int entry);

    /// The entry that is played or stepped to, which is highlighted and comes into view.
    void setCurrentEntry(std::optional<int> entry);

    /// The entries where playing begins and ends, which are marked.
    void setPlayRange(int first, int last);

    /// A note that is new comes into view, unless there is a current entry.
    void setPreview(const Preview& preview);

    /// Scrolls by what is in view.
    void scrollPage(bool forward);

    QSize sizeHint() const override { return {1100, 420}; }
    QSize minimumSizeHint() const override { return {420, 160}; }

Q_SIGNALS:
    /// The natural note where the left mouse button was pressed, and the same when it is released.
    void noteChosen(int noteNumber);
    void noteReleased(int noteNumber);

    /// The second press of a double click has chosen a note.
    void noteDoubleClicked();

    /// A written entry was clicked.
    void entryChosen(int entry);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    /// The page as it was when a drag of it began.
    struct Drag {
        qreal y = 0;
        qreal offset = 0;
    };

    void arrange();
    void scrollTo(qreal offset);
    void updatePage();
    void placePreview();
    void setPointed(std::optional<StaffPage::Pointed> pointed, qreal x);
    void release();
    void endDrag();
    void letGo();
    void describe();
    void paintPointed(QPainter& painter) const;

    const MusicFont& font_;
    QScrollBar* bar_;
    ActiveNotePicture* cursor_;
    ActiveSharpPicture* accidental_;
    notation::Source source_;
    StaffPage page_;
    std::optional<int> current_;
    staff_marks::PlayRange range_;
    Preview preview_;
    std::optional<StaffPage::Pointed> pointed_;
    qreal pointedX_ = 0;
    std::optional<int> pressed_;  ///< the note that the mouse holds
    std::optional<Drag> drag_;
};
