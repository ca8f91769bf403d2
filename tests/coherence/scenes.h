#pragma once

#include <functional>
#include <ostream>
#include <vector>

class QWidget;

/// What is done with a window while it stands in a scene's state: a check, or a picture.
using Look = std::function<void(QWidget& window)>;

/// A window of the program in a state that a user meets, on virtual time and over files in memory.
struct Scene {
    const char* name;
    bool escCloses;                         ///< whether the Esc key closes the window in this state
    std::function<void(const Look&)> show;  ///< opens the window in that state, looks, closes it
};

/// How failures and the names of tests show a scene.
inline void PrintTo(const Scene& scene, std::ostream* out) {
    *out << scene.name;
}

/// Every window of the program, the larger ones in more than one state.
const std::vector<Scene>& scenes();
