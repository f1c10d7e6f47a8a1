// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The building blocks of every sound: oscillators, a deterministic noise source, envelopes and
// simple filters, all working on mono float samples at one sample rate.

#include <cstddef>
#include <cstdint>
#include <vector>

constexpr int SAMPLE_RATE = 22050;			// samples per second of every file
constexpr float PI = 3.14159265f;

typedef std::vector<float> tSamples;

float NoteFrequency( int midiNote );		// 69 = A4 = 440 Hz
float Square( float phase, float duty );	// phase in cycles; -1 or 1
float Triangle( float phase );				// stepped into 16 levels, as a chip would
float Sine( float phase );

// A 15-bit linear-feedback shift register, the noise channel of the old sound chips.
class cNoise {
public:
					cNoise( uint32_t seed = 0x4A2F ) : state( seed & 0x7FFF ? seed & 0x7FFF : 1 ) {}
	float			Next();					// -1 or 1
	float			NextSmooth();			// uniform in [-1, 1]
private:
	uint32_t		state;
};

// One-pole low-pass filter; cutoff in Hz, changeable per sample.
class cLowPass {
public:
	float			Process( float input, float cutoff );
private:
	float			memory = 0.0f;
};

// Exponential decay to 1/e after `time` seconds.
float Decay( float t, float time );
// Linear rise over `attack` seconds, then 1.
float Attack( float t, float attack );

// Adds `source` into `target` from sample `start` on, scaled by gain; grows target when needed.
void MixInto( tSamples &target, const tSamples &source, size_t start, float gain );
// Scales the sound so its highest peak is `peak` (0..1 of full scale).
void Normalise( tSamples &samples, float peak );
// Fades the last `seconds` to silence and the first `attackSeconds` in from silence.
void SoftenEdges( tSamples &samples, float attackSeconds, float seconds );
