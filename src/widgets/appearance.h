#pragma once

#include <QColor>
#include <QFont>

class QWidget;

/// Small changes to how a widget looks, alike in every window.
namespace appearance {

/// Enlarges a widget's text; a heading or a number that is to be seen from afar is bold as well.
void enlargeText(QWidget& widget, double scale, QFont::Weight weight = QFont::Bold);

/// Lets a widget keep its place in the layout while it is hidden.
void keepPlace(QWidget& widget);

/// A colour laid over another: `share` of it, 0..1, and the rest of what lies under it.
QColor mixed(const QColor& over, const QColor& under, double share);

}  // namespace appearance
