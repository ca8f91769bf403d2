#pragma once

#include <vector>

namespace score {

struct WrittenNote;

/// Marks where the triplets of a bar start and end. A group is as long as three equal values of a
/// triplet; where the bar has no such group, it ends with the last value of a triplet or when the
/// notes are back where values reach that are not of a triplet. Inside a group a value that could
/// be either becomes a dotted one of the triplet.
void groupTriplets(std::vector<WrittenNote>& notes);

}  // namespace score
