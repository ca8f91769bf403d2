#pragma once

#include <QColor>
#include <QRectF>

struct BarParts;
class QPainter;
class QPalette;
class QStyleOption;
class QStyleOptionSlider;

/// How the style paints buttons, bars and boxes. Whatever belongs to a control (its outline, groove
/// and thumb) has three times the luminance of what lies around it or a third of it. A state shows
/// in the form as well: hovered has an outline in the accent colour, pressed a thick one, focused a
/// ring, chosen a bar at the lower edge, disabled a faint outline.
namespace control_painting {

/// A colour for outlines of controls on the window's background.
QColor outlineColour(const QPalette& palette);

/// The face of a button, a drop-down list or a tool button.
void paintButton(QPainter& painter, const QStyleOption& option, bool chosen);

/// The outline of a line of text or a list, thick in the accent colour while it has the focus.
void paintFrame(QPainter& painter, const QStyleOption& option);

/// Under the text of an entry of a list that the mouse is over.
void paintHoveredRow(QPainter& painter, const QStyleOption& option);

/// Over a menu's name that has the mouse or the keyboard while no menu is open.
void paintMenuTitle(QPainter& painter, const QStyleOption& option);

/// A check box's square with its mark.
void paintCheckBox(QPainter& painter, const QStyleOption& option);

/// An arrowhead in the middle of the rectangle, `angle` degrees clockwise from pointing up.
void paintArrow(QPainter& painter, const QRectF& rect, double angle, const QColor& colour);

/// A bar that sets a value is painted as a control, one that scrolls a page more quietly.
void paintScrollBar(QPainter& painter, const QStyleOptionSlider& option, const BarParts& parts,
                    bool setsValue);
void paintSlider(QPainter& painter, const QStyleOptionSlider& option, const BarParts& parts);

}  // namespace control_painting
