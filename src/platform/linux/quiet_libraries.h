#pragma once

/// Keeps the sound libraries from writing to the terminal and from starting servers. To be called
/// before any of them is used; later calls do nothing.
void quietLibraries();
