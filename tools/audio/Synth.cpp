// SPDX-License-Identifier: GPL-3.0-or-later
#include "Synth.h"

#include <algorithm>
#include <cmath>

float NoteFrequency( int midiNote ) {
	return 440.0f * std::pow( 2.0f, ( midiNote - 69 ) / 12.0f );
}

float Square( float phase, float duty ) {
	return phase - std::floor( phase ) < duty ? 1.0f : -1.0f;
}

float Triangle( float phase ) {
	const float p = phase - std::floor( phase );
	const float linear = p < 0.5f ? 4.0f * p - 1.0f : 3.0f - 4.0f * p;
	return std::round( linear * 7.5f ) / 7.5f;
}

float Sine( float phase ) {
	return std::sin( 2.0f * PI * phase );
}

float cNoise::Next() {
	const uint32_t bit = ( state ^ ( state >> 1 ) ) & 1;
	state = ( state >> 1 ) | ( bit << 14 );
	return ( state & 1 ) != 0 ? 1.0f : -1.0f;
}

float cNoise::NextSmooth() {
	float value = 0.0f;
	for ( int i = 0; i < 8; i++ ) {
		value = value * 0.5f + Next() * 0.5f;
	}
	return value;
}

float cLowPass::Process( float input, float cutoff ) {
	const float k = 1.0f - std::exp( -2.0f * PI * cutoff / SAMPLE_RATE );
	memory += ( input - memory ) * k;
	return memory;
}

float Decay( float t, float time ) {
	return std::exp( -t / time );
}

float Attack( float t, float attack ) {
	return t < attack ? t / attack : 1.0f;
}

void MixInto( tSamples &target, const tSamples &source, size_t start, float gain ) {
	if ( target.size() < start + source.size() ) {
		target.resize( start + source.size(), 0.0f );
	}
	for ( size_t i = 0; i < source.size(); i++ ) {
		target[start + i] += source[i] * gain;
	}
}

void Normalise( tSamples &samples, float peak ) {
	float highest = 0.0f;
	for ( float s : samples ) {
		highest = std::max( highest, std::fabs( s ) );
	}
	if ( highest > 0.0f ) {
		for ( float &s : samples ) {
			s *= peak / highest;
		}
	}
}

void SoftenEdges( tSamples &samples, float attackSeconds, float seconds ) {
	const size_t fadeIn = std::min( samples.size(), size_t( attackSeconds * SAMPLE_RATE ) );
	for ( size_t i = 0; i < fadeIn; i++ ) {
		samples[i] *= float( i ) / float( fadeIn );
	}
	const size_t fadeOut = std::min( samples.size(), size_t( seconds * SAMPLE_RATE ) );
	for ( size_t i = 0; i < fadeOut; i++ ) {
		samples[samples.size() - 1 - i] *= float( i ) / float( fadeOut );
	}
}
