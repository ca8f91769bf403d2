#pragma once

class QPainter;
class QWidget;
class StaffPage;

#include <QFont>

#include <cstddef>
#include <optional>

/// What the composer's staff shows around the written music, in the widget's palette.
namespace staff_marks {

/// Where playing begins and ends.
struct PlayRange {
    int first = -1;
    int last = -1;

    bool operator==(const PlayRange&) const = default;
};

QFont numberFont(const QWidget& widget);

/// The number of the first entry of a system and of every fifth one, below it.
void paintNumbers(QPainter& painter, const QWidget& widget, const StaffPage& page,
                  std::size_t system);

/// The number of the bar with which a system begins, over its clef.
void paintBarNumber(QPainter& painter, const QWidget& widget, const StaffPage& page,
                    std::size_t system);

/// A line over both staves with a flag that points into the range.
void paintRange(QPainter& painter, const QWidget& widget, const StaffPage& page, std::size_t system,
                const PlayRange& range);

/// The entry that is played or stepped to.
void paintCurrent(QPainter& painter, const QWidget& widget, const StaffPage& page,
                  std::size_t system, int entry);

}  // namespace staff_marks
