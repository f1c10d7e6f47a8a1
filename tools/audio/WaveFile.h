// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Writes sounds as the game reads them: a canonical 44-byte RIFF header (a 16-byte "fmt " chunk
// directly followed by "data"), 16-bit PCM, mono.

#include "Synth.h"

#include <string>

// Samples in [-1, 1]; anything beyond is clamped, which Normalise prevents.
bool WriteWaveFile( const std::string &path, const tSamples &samples );
