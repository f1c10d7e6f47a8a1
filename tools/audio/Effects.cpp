// SPDX-License-Identifier: GPL-3.0-or-later
#include "Effects.h"

#include <cmath>
#include <vector>

namespace {

const float EFFECT_PEAK = 0.84f;		// about -1.5 dBFS
// Square-wave tunes are loud for their peak: they are kept lower to sit level with the shots.
const float CHIME_PEAK = 0.42f;			// about -7.5 dBFS
const float FANFARE_PEAK = 0.6f;		// about -4.4 dBFS

tSamples Silence( float seconds ) {
	return tSamples( size_t( seconds * SAMPLE_RATE ), 0.0f );
}

// A sine whose pitch glides exponentially from `from` to `to` Hz over `glide` seconds.
tSamples Thump( float seconds, float from, float to, float glide, float decay ) {
	tSamples out = Silence( seconds );
	float phase = 0.0f;
	for ( size_t i = 0; i < out.size(); i++ ) {
		const float t = float( i ) / SAMPLE_RATE;
		phase += ( to + ( from - to ) * Decay( t, glide ) ) / SAMPLE_RATE;
		out[i] = Sine( phase ) * Decay( t, decay );
	}
	return out;
}

// Noise through a low-pass whose cutoff falls from `from` to `to` Hz.
tSamples NoiseBurst( float seconds, float from, float to, float decay, uint32_t seed ) {
	tSamples out = Silence( seconds );
	cNoise noise( seed );
	cLowPass filter;
	for ( size_t i = 0; i < out.size(); i++ ) {
		const float t = float( i ) / SAMPLE_RATE;
		const float cutoff = to + ( from - to ) * Decay( t, decay * 0.5f );
		out[i] = filter.Process( noise.NextSmooth(), cutoff ) * Decay( t, decay );
	}
	return out;
}

// Bright noise: the difference of successive noise samples, for cracks and clicks.
tSamples Crack( float seconds, float decay, uint32_t seed ) {
	tSamples out = Silence( seconds );
	cNoise noise( seed );
	float previous = 0.0f;
	for ( size_t i = 0; i < out.size(); i++ ) {
		const float t = float( i ) / SAMPLE_RATE;
		const float white = noise.NextSmooth();
		out[i] = ( white - previous ) * 0.5f * Decay( t, decay );
		previous = white;
	}
	return out;
}

// A square-wave tone gliding from one pitch to another, with a decaying envelope.
tSamples Chirp( float seconds, float from, float to, float duty, float decay ) {
	tSamples out = Silence( seconds );
	float phase = 0.0f;
	for ( size_t i = 0; i < out.size(); i++ ) {
		const float t = float( i ) / SAMPLE_RATE;
		phase += ( from + ( to - from ) * t / seconds ) / SAMPLE_RATE;
		out[i] = Square( phase, duty ) * 0.5f * Decay( t, decay );
	}
	return out;
}

// Notes played one after another (MIDI numbers, each `noteSeconds` long), square or triangle.
tSamples Jingle( const std::vector<int> &notes, float noteSeconds, float lastSeconds, float duty, bool triangle ) {
	tSamples out;
	for ( size_t n = 0; n < notes.size(); n++ ) {
		const float seconds = n + 1 == notes.size() ? lastSeconds : noteSeconds;
		tSamples tone = Silence( seconds + 0.05f );
		float phase = 0.0f;
		for ( size_t i = 0; i < tone.size(); i++ ) {
			const float t = float( i ) / SAMPLE_RATE;
			const float vibrato = 1.0f + ( t > 0.2f ? 0.006f * Sine( t * 5.0f ) : 0.0f );
			phase += NoteFrequency( notes[n] ) * vibrato / SAMPLE_RATE;
			const float wave = triangle ? Triangle( phase ) : Square( phase, duty ) * 0.5f;
			const float release = t > seconds ? 1.0f - ( t - seconds ) / 0.05f : 1.0f;
			tone[i] = wave * Attack( t, 0.004f ) * release * ( 0.6f + 0.4f * Decay( t, 0.12f ) );
		}
		MixInto( out, tone, size_t( n * noteSeconds * SAMPLE_RATE ), 1.0f );
	}
	return out;
}

tSamples Finish( tSamples samples, float peak = EFFECT_PEAK ) {
	SoftenEdges( samples, 0.002f, 0.02f );
	Normalise( samples, peak );
	return samples;
}

}	// namespace

// Noise with a falling cutoff over a low boom sinking from 90 to 30 Hz.
tSamples MakeExplosion() {
	tSamples out = NoiseBurst( 1.3f, 4000.0f, 150.0f, 0.35f, 0x1D3 );
	MixInto( out, Thump( 1.3f, 90.0f, 30.0f, 0.25f, 0.3f ), 0, 0.9f );
	MixInto( out, Crack( 0.08f, 0.02f, 0x2B ), 0, 0.6f );
	return Finish( out );
}

// tavesh's gun: a heavy thump, a low sine dropping fast with a dark noise burst.
tSamples MakeTaveshShot() {
	tSamples out = Thump( 0.32f, 220.0f, 55.0f, 0.03f, 0.08f );
	MixInto( out, NoiseBurst( 0.32f, 2500.0f, 300.0f, 0.05f, 0x51 ), 0, 0.9f );
	return Finish( out );
}

// lumra's gun: a sharp crack with a quick falling whistle.
tSamples MakeLumraShot() {
	tSamples out = Crack( 0.22f, 0.025f, 0x77 );
	MixInto( out, Chirp( 0.22f, 2400.0f, 700.0f, 0.25f, 0.05f ), 0, 0.45f );
	return Finish( out );
}

// The enemies' gun: a short, dry pop in the middle register.
tSamples MakeEnemyShot() {
	tSamples out = NoiseBurst( 0.14f, 1800.0f, 500.0f, 0.025f, 0x93 );
	MixInto( out, Thump( 0.14f, 420.0f, 180.0f, 0.02f, 0.03f ), 0, 0.7f );
	return Finish( out );
}

// The machine gun: four quick pops, each a little weaker, a rattle within one shot's time.
tSamples MakeMachineGun() {
	tSamples out = Silence( 0.3f );
	for ( int pop = 0; pop < 4; pop++ ) {
		tSamples one = NoiseBurst( 0.07f, 3000.0f, 600.0f, 0.018f, uint32_t( 0x100 + pop ) );
		MixInto( one, Thump( 0.07f, 300.0f, 120.0f, 0.01f, 0.02f ), 0, 0.8f );
		MixInto( out, one, size_t( pop * 0.06f * SAMPLE_RATE ), 1.0f - pop * 0.15f );
	}
	return Finish( out );
}

// The skill: a rising shimmer, an arpeggio of quick square notes over a sweep.
tSamples MakeSkill() {
	tSamples out = Jingle( { 67, 71, 74, 79, 83 }, 0.05f, 0.25f, 0.125f, false );
	MixInto( out, Chirp( 0.45f, 300.0f, 1200.0f, 0.5f, 0.2f ), 0, 0.25f );
	return Finish( out, CHIME_PEAK );
}

// An item: a bright two-step chime upwards.
tSamples MakeItemPickup() {
	return Finish( Jingle( { 84, 88, 91 }, 0.06f, 0.18f, 0.25f, false ), CHIME_PEAK );
}

// A heartbeat, lub-dub, once a second; the second ends in silence so the loop meets its start.
tSamples MakeHeartbeat() {
	tSamples out = Silence( 1.0f );
	tSamples lub = Thump( 0.3f, 80.0f, 45.0f, 0.04f, 0.06f );
	tSamples dub = Thump( 0.3f, 70.0f, 40.0f, 0.04f, 0.05f );
	SoftenEdges( lub, 0.003f, 0.05f );
	SoftenEdges( dub, 0.003f, 0.05f );
	MixInto( out, lub, 0, 1.0f );
	MixInto( out, dub, size_t( 0.26f * SAMPLE_RATE ), 0.75f );
	out.resize( SAMPLE_RATE );
	Normalise( out, EFFECT_PEAK );
	return out;
}

// Victory: a major fanfare rising to a held chord.
tSamples MakeLevelComplete() {
	tSamples out = Jingle( { 72, 76, 79, 84, 79, 84 }, 0.16f, 1.4f, 0.5f, false );
	MixInto( out, Jingle( { 48, 52, 55, 60, 55, 60 }, 0.16f, 1.4f, 0.5f, true ), 0, 0.8f );
	MixInto( out, Jingle( { 76, 79, 84, 88 }, 0.16f, 1.4f, 0.25f, false ), size_t( 0.8f * SAMPLE_RATE ), 0.35f );
	return Finish( out, FANFARE_PEAK );
}

// Defeat: a slow falling minor phrase ending low.
tSamples MakeGameOver() {
	tSamples out = Jingle( { 69, 67, 64, 63, 57 }, 0.32f, 1.5f, 0.5f, false );
	MixInto( out, Jingle( { 45, 43, 40, 39, 33 }, 0.32f, 1.5f, 0.5f, true ), 0, 0.9f );
	return Finish( out, FANFARE_PEAK );
}

// A box: a wooden creak, the latch clicking, a small sparkle of what is inside.
tSamples MakeOpenBox() {
	tSamples out = Silence( 0.6f );
	tSamples creak = Chirp( 0.22f, 140.0f, 90.0f, 0.3f, 0.2f );
	MixInto( out, creak, 0, 0.5f );
	MixInto( out, Crack( 0.04f, 0.008f, 0x3C ), size_t( 0.2f * SAMPLE_RATE ), 0.9f );
	MixInto( out, Jingle( { 88, 91 }, 0.05f, 0.15f, 0.25f, false ), size_t( 0.3f * SAMPLE_RATE ), 0.3f );
	return Finish( out );
}

// A door: the lock beeps, the bolt clunks and the door slides away with a hiss.
tSamples MakeDoorOpen() {
	tSamples out = Jingle( { 81, 88 }, 0.07f, 0.08f, 0.5f, false );
	MixInto( out, Thump( 0.2f, 160.0f, 60.0f, 0.02f, 0.05f ), size_t( 0.16f * SAMPLE_RATE ), 0.9f );
	tSamples slide = NoiseBurst( 0.55f, 900.0f, 2500.0f, 0.25f, 0x4D );
	SoftenEdges( slide, 0.08f, 0.1f );
	MixInto( out, slide, size_t( 0.2f * SAMPLE_RATE ), 1.2f );
	return Finish( out );
}
