#pragma once

#include "reading/reading_verdict.h"
#include "reading/staff_layout.h"
#include "widgets/engraving.h"

#include <QWidget>

#include <array>
#include <optional>

class MusicFont;
class NotePicture;
class Regolo;
class VerdictBadge;

/// The staff of the reading drill: a card with both clefs, a picture of a note for each step, and
/// the ruler along its right edge. It shows no note until it is told to. Screen readers that come
/// to it are told the place of the note on show, never its name.
class ReadingStaff : public QWidget {
    Q_OBJECT

public:
    explicit ReadingStaff(QWidget* parent = nullptr);
    ~ReadingStaff() override;

    Regolo& ruler() { return *ruler_; }

    /// Shows the picture of a step, and leaves the others as they are; a step that carries no note
    /// changes nothing.
    void showNote(int step);
    void hideNotes();

    /// Marks the place of the note that was answered, and gives the note the verdict's colour as
    /// long as it is on show.
    void showVerdict(const std::optional<ReadingVerdict::Shown>& shown);

    /// The place of the note on show.
    QString inWords() const;

    QSize sizeHint() const override { return {560, 480}; }
    QSize minimumSizeHint() const override { return {300, 300}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();
    const engraving::Stave& staveOf(int step) const;
    QRect verdictPlace(int step) const;

    const MusicFont& font_;
    Regolo* ruler_;
    VerdictBadge* verdict_;
    std::array<NotePicture*, staff_step::kCount> notes_{};
    engraving::Stave treble_;
    engraving::Stave bass_;
    qreal noteX_ = 0;
    std::optional<int> pointed_;
    std::optional<int> shown_;  ///< the last note of those on show
};
