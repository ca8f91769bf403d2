#pragma once

/// The numbers of the exercises, by which the main menu requests one and the manual finds its page.
enum class ExerciseCode { Pitch = 3, Interval = 5, Chord = 7 };
