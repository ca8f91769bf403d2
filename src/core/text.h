#pragma once

#include <QString>

/// Texts made from numbers, the same in every locale.
namespace text {

/// part / whole in the format "0.00%": 0.5 reads "50.00%". A whole of 0 reads "0.00%".
QString percentage(int part, int whole);

}  // namespace text
