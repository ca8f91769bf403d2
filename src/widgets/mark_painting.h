#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// A tick or a cross, which tells what its colour tells to those who do not see the colour.
enum class Mark { None, Tick, Cross };

/// Draws a mark in the middle of a rectangle.
void paintMark(QPainter& painter, const QRectF& rect, Mark mark, const QColor& colour);
