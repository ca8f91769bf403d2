#pragma once

#include "core/key_signatures.h"
#include "widgets/engraving.h"

#include <QWidget>

/// A note or a rest on a short stave.
class ValuePicture : public QWidget {
    Q_OBJECT

public:
    enum class Kind { Note, Rest };

    ValuePicture(Kind kind, engraving::Duration duration, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind kind_;
    engraving::Duration duration_;
};

/// Two staves with their clefs and a key signature, as large as there is room.
class SignatureStaff : public QWidget {
    Q_OBJECT

public:
    SignatureStaff(const key_signatures::KeySignature& key, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintStave(QPainter& painter, const engraving::Stave& stave, engraving::Clef clef) const;

    key_signatures::KeySignature key_;
};
