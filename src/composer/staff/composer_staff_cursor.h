#pragma once

#include "widgets/engraving.h"

#include <QWidget>

class MusicFont;

/// A picture of the active note on the staff, in the accent colour. The mouse goes through to the
/// staff.
class CursorPicture : public QWidget {
public:
    /// The stave and the note head's left edge are in the parent's coordinates.
    void setPlace(const engraving::Stave& stave, qreal x, int position);

protected:
    struct Place {
        engraving::Stave stave;
        qreal x = 0;
        int position = 0;
    };

    CursorPicture(const QString& name, const MusicFont& font, QWidget* parent);

    void paintEvent(QPaintEvent* event) override;

private:
    /// What the picture covers.
    virtual QRectF extent(const Place& place) const = 0;
    virtual void draw(QPainter& painter, const MusicFont& font, const Place& place) const = 0;

    const MusicFont& font_;
    Place place_;
};

/// The active note with its stem and ledger lines, `lblCursore`.
class ActiveNotePicture : public CursorPicture {
public:
    ActiveNotePicture(const MusicFont& font, QWidget* parent);

private:
    QRectF extent(const Place& place) const override;
    void draw(QPainter& painter, const MusicFont& font, const Place& place) const override;
};

/// The sharp of the active note, `lblAccidente`.
class ActiveSharpPicture : public CursorPicture {
public:
    ActiveSharpPicture(const MusicFont& font, QWidget* parent);

private:
    QRectF extent(const Place& place) const override;
    void draw(QPainter& painter, const MusicFont& font, const Place& place) const override;
};
