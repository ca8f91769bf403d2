#pragma once

#include "composer/staff/staff_entry.h"
#include "widgets/engraving.h"

#include <functional>
#include <vector>

/// Where things stand on the composer's staff. A place counts half staff spaces from the top of
/// the drawing; lengths along the staff are in staff spaces.
namespace composer_staff_layout {

/// The room above the treble stave holds five ledger lines and an articulation.
constexpr int kAbove = 14;
constexpr int kGap = 8;
constexpr int kBelow = 8;
constexpr int kTrebleBottomLine = kAbove + engraving::kTopLine;  ///< a place, as the next
constexpr int kBassBottomLine = kTrebleBottomLine + kGap + engraving::kTopLine;
constexpr int kHeight = kBassBottomLine + kBelow;

enum class System { Treble, Bass };

/// Where a note's head stands. A sharp stands where its natural does.
struct Head {
    System system = System::Treble;
    int position = 0;
    bool sharp = false;
};

/// Of a note 36..95: from middle C up it stands in the treble stave.
Head headOf(int noteNumber);
double placeOf(const Head& head);

/// The natural note nearest to a place; beyond the ends of the range the last one.
int noteAt(double place);

/// One entry as it is engraved, relative to the left of its cell.
struct Cell {
    double width = 0;
    std::vector<double> heads;  ///< the left edge of each value of the figure
};
Cell cellOf(const staff_entry::Entry& entry, const staff_entry::Figure& figure);

/// Which entries are on show: as many as have room, from one entry on or up to one entry.
struct View {
    int entry = 0;
    bool endsThere = true;
};

/// An entry on show, in staff spaces from the left of the room.
struct Placed {
    int entry = 0;
    double left = 0;
    double width = 0;
};

using WidthOf = std::function<double(int entry)>;

/// Fills the room with entries of a melody of `count`, asking for the width of those only that
/// come into it and of one more on each side. At least one entry is placed if there is any. The
/// first entry of the melody stands at the left of the room; otherwise the last one on show stands
/// at its right, unless the view begins with an entry.
std::vector<Placed> arrange(const View& view, int count, double room, const WidthOf& widthOf);

/// The view that shows `entry`, given what is on show: the same as long as it is there; a page that
/// begins with it further on, one that ends with it further back.
View following(const View& view, const std::vector<Placed>& shown, int entry);

}  // namespace composer_staff_layout
