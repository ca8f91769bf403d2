#pragma once

/// The exercises of the ear-training window, by the codes that the main menu gives them.
enum class EarExercise { Pitch = 3, Interval = 5, Chord = 7 };
