// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The three music loops, composed in code as chip-style parts (square lead, triangle or square
// bass, noise drums) with a little echo, each cut on a bar line so its end meets its start.

#include "Synth.h"

tSamples MakeMenuMusic();		// calm, A minor, 90 bpm, 12 bars
tSamples MakeStreetsMusic();	// tense, E minor, 120 bpm, 16 bars
tSamples MakeBossMusic();		// fast and loud, D minor, 150 bpm, 20 bars
