#include "reading/staff_layout.h"

#include "reading/ruler.h"

#include <algorithm>
#include <array>

namespace staff_layout {
namespace {

struct Knot {
    double place;
    double twips;
};

/// The two ends, and the steps between them from the top down.
using Knots = std::array<Knot, staff_step::kCount + 2>;

Knots makeKnots() {
    Knots knots{};
    knots.back() = {kHeight, ruler::kLength};
    auto knot = knots.rbegin() + 1;
    for (const int step : staff_step::all()) {
        if (const auto band = ruler::bandOf(step))
            *knot++ = {static_cast<double>(placeOf(step)), band->centre()};
    }
    return knots;
}

}  // namespace

/// Follows the line through the two knots around the place, or the nearest two beyond the ends.
double twipsAt(double place) {
    static const Knots knots = makeKnots();
    const auto next = std::find_if(knots.begin() + 1, knots.end() - 1,
                                   [place](const Knot& knot) { return place <= knot.place; });
    const Knot& a = *(next - 1);
    const Knot& b = *next;
    return a.twips + (place - a.place) * (b.twips - a.twips) / (b.place - a.place);
}

}  // namespace staff_layout
