#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// A tick or a cross: what a colour means, for users who cannot tell the colours apart.
enum class Mark { None, Tick, Cross };

/// Draws a mark in the middle of a rectangle.
void paintMark(QPainter& painter, const QRectF& rect, Mark mark, const QColor& colour);
