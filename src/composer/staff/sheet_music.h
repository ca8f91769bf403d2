#pragma once

#include "composer/notation/score_layout.h"
#include "composer/notation/sheet_layout.h"

#include <QSizeF>
#include <QString>

#include <vector>

class QPainter;

/// A melody as printed sheet music.
struct MelodySheet {
    QString title;
    int tempo = 60;  ///< quarter notes a minute
    notation::Source source;
};

/// A sheet that is laid out for the room of its pages, inside their margins, which is given in
/// millimetres. Pages and systems count from 0. Both are painted with the upper left corner of
/// their room at the painter's origin, so many units of which are a millimetre; the painter's
/// device must have a resolution of its own, by which the sizes of texts go.
class SheetMusic {
public:
    SheetMusic(const MelodySheet& sheet, const QSizeF& room);

    std::size_t pages() const { return pages_.size(); }
    void paintPage(QPainter& painter, std::size_t page, double unitsPerMillimetre) const;

    std::size_t systems() const { return score_.systems().size(); }
    QSizeF sizeOf(std::size_t system) const;
    void paintSystem(QPainter& painter, std::size_t system, double unitsPerMillimetre) const;

private:
    void paintHead(QPainter& painter, double space) const;
    void paintSystemAt(QPainter& painter, std::size_t system, double top, double space) const;

    MelodySheet sheet_;
    QSizeF room_;
    notation::ScoreLayout score_;
    std::vector<notation::SheetPage> pages_;
    bool bass_ = true;
};
