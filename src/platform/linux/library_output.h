#pragma once

/// Keeps ALSA and JACK from writing to the terminal and JACK from starting a server, and names the
/// program to PulseAudio. To be called before any of these libraries is used; later calls do
/// nothing.
void suppressLibraryOutput();
