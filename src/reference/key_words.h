#pragma once

#include "core/key_signatures.h"

#include <QString>

/// The signs of a key signature in words: "2 diesis: Fa, Do".
QString signsInWords(const key_signatures::KeySignature& key);
