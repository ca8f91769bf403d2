#pragma once

#include "composer/notation/system_layout.h"

#include <QByteArray>
#include <QString>

class QPagedPaintDevice;

/// A melody as printed sheet music.
struct MelodySheet {
    QString title;
    int tempo = 60;  ///< quarter notes a minute
    notation::Source source;
};

namespace sheet_painter {

enum class Paper { A4, Letter };

/// The paper that is usual where the user lives.
Paper usualPaper();

/// Paints all pages, whose size and margins the device has. False if it cannot be painted on.
bool paint(QPagedPaintDevice& device, const MelodySheet& sheet);

/// A PDF document; its texts are text and its fonts are inside.
QByteArray pdf(const MelodySheet& sheet, Paper paper);

}  // namespace sheet_painter
