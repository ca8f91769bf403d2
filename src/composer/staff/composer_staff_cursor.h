#pragma once

#include "composer/staff/entry_preview.h"

#include <QWidget>

/// A picture of the note that would be inserted, in the accent colour; it shows the part of it that
/// its geometry covers. The mouse goes through to the staff.
class CursorPicture : public QWidget {
public:
    void show(const EntryPreview& preview);

protected:
    CursorPicture(const QString& name, const MusicFont& font, QWidget* parent);

    void paintEvent(QPaintEvent* event) override;

    /// In staff spaces from the head's left edge.
    struct Part {
        double left = 0;
        double right = 0;
    };

private:
    virtual Part part(const EntryPreview& preview) const = 0;

    const MusicFont& font_;
    EntryPreview preview_;
};

/// The note with all its signs but the sharp, `lblCursore`.
class ActiveNotePicture : public CursorPicture {
public:
    ActiveNotePicture(const MusicFont& font, QWidget* parent);

private:
    Part part(const EntryPreview& preview) const override;
};

/// The sharp or other accidental of the active note, `lblAccidente`.
class ActiveSharpPicture : public CursorPicture {
public:
    ActiveSharpPicture(const MusicFont& font, QWidget* parent);

    void show(const EntryPreview& preview);

private:
    Part part(const EntryPreview& preview) const override;
};
