#pragma once

#include "widgets/engraving.h"

#include <QWidget>

class MusicFont;

/// The active note with its stem and ledger lines, `lblCursore`, in the accent colour. The mouse
/// goes through to the staff.
class ActiveNotePicture : public QWidget {
public:
    ActiveNotePicture(const MusicFont& font, QWidget* parent);

    /// The stave and the head's left edge are in the parent's coordinates.
    void setPlace(const engraving::Stave& stave, qreal x, int position);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const MusicFont& font_;
    engraving::Stave stave_;
    qreal x_ = 0;
    engraving::Note note_;
};

/// The sharp of the active note, `lblAccidente`.
class ActiveSharpPicture : public QWidget {
public:
    ActiveSharpPicture(const MusicFont& font, QWidget* parent);

    /// Takes the same place as its note.
    void setPlace(const engraving::Stave& stave, qreal x, int position);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const MusicFont& font_;
    engraving::Stave stave_;
    qreal x_ = 0;
    int position_ = 0;
};
