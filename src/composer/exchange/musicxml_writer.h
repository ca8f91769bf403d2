#pragma once

#include <QByteArray>

struct ScoreHeading;

namespace score {
struct BarView;
}

/// MusicXML 4.0, the format that notation programs exchange: one part with one staff.
namespace musicxml {

/// The melody in bars must have a metre.
QByteArray write(const score::BarView& view, const ScoreHeading& heading);

/// The same in a compressed file, ".mxl".
QByteArray writeCompressed(const score::BarView& view, const ScoreHeading& heading);

}  // namespace musicxml
