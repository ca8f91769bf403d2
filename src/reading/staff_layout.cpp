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

/// Follows the line through the two knots around `value`, or the nearest two beyond the ends.
double interpolate(double value, double Knot::*from, double Knot::*to) {
    static const Knots knots = makeKnots();
    const auto next = std::find_if(knots.begin() + 1, knots.end() - 1,
                                   [&](const Knot& knot) { return value <= knot.*from; });
    const Knot& a = *(next - 1);
    const Knot& b = *next;
    return a.*to + (value - a.*from) * (b.*to - a.*to) / (b.*from - a.*from);
}

}  // namespace

double twipsAt(double place) {
    return interpolate(place, &Knot::place, &Knot::twips);
}

double placeAt(double twips) {
    return interpolate(twips, &Knot::twips, &Knot::place);
}

}  // namespace staff_layout
