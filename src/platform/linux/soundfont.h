#pragma once

#include <string>

/// The path of the soundfont to load: the one named by CANTAVISTA_SOUNDFONT, else the one beside
/// the program, else the first of the usual places; empty if there is none.
std::string findSoundfont();
