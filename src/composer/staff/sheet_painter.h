#pragma once

#include "core/paper.h"

#include <QByteArray>

class QPagedPaintDevice;
struct MelodySheet;

/// Sheet music on paper and in files.
namespace sheet_painter {

/// Paints the pages that the device wants, of its size; margins that are narrower than the sheet's
/// own are widened. False if it cannot be painted on, or wants none of the pages.
bool paint(QPagedPaintDevice& device, const MelodySheet& sheet, bool lastPageFirst = false);

/// A PDF document; its texts are text and its fonts are inside.
QByteArray pdf(const MelodySheet& sheet, Paper paper);

/// How many systems a sheet has on this paper.
std::size_t systemsOf(const MelodySheet& sheet, Paper paper);

/// A system, from 0, as a picture: on white, or on nothing.
QByteArray systemPng(const MelodySheet& sheet, Paper paper, std::size_t system);
QByteArray systemSvg(const MelodySheet& sheet, Paper paper, std::size_t system);

}  // namespace sheet_painter
