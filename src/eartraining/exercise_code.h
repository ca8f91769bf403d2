#pragma once

/// The exercises by their numbers: the main menu asks for one, the window names itself after it for
/// the pages of the manual.
enum class ExerciseCode { Pitch = 3, Interval = 5, Chord = 7 };
