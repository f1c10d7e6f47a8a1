// SPDX-License-Identifier: GPL-3.0-or-later
#include "Music.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

enum eVoice {
	VOICE_TRIANGLE_BASS,
	VOICE_SQUARE_BASS,
	VOICE_LEAD,			// square, half duty, with vibrato on long notes
	VOICE_THIN_LEAD,	// square, eighth duty
	VOICE_ARP,			// short plucks, quarter duty
	VOICE_KICK,
	VOICE_SNARE,
	VOICE_HAT,
	VOICE_OPEN_HAT,
	VOICE_CRASH
};

struct sNote {
	int			step;		// sixteenth notes from the loop's start
	int			length;		// in sixteenths
	int			note;		// MIDI note number; unused by the drums
	eVoice		voice;
	float		gain;
};

struct sSong {
	int			bpm;
	int			bars;
	float		echoGain;	// level of each repeat
	int			echoSteps;	// delay of the echo in sixteenths
	float		peak;		// loudest sample, fraction of full scale
	std::vector<sNote> notes;
};

const float MUSIC_PEAK = 0.70f;		// about -3 dBFS: the music stays below the effects

tSamples RenderTone( eVoice voice, float frequency, float seconds, float gain ) {
	const float release = voice == VOICE_ARP ? 0.12f : 0.05f;
	const size_t count = size_t( ( seconds + release ) * SAMPLE_RATE );
	tSamples out( count );
	float phase = 0.0f;
	for ( size_t i = 0; i < count; i++ ) {
		const float t = float( i ) / SAMPLE_RATE;
		float envelope = Attack( t, 0.004f ) * ( t < seconds ? 1.0f : 1.0f - ( t - seconds ) / release );
		float vibrato = 1.0f;
		float sample = 0.0f;
		switch ( voice ) {
			case VOICE_TRIANGLE_BASS:
				sample = Triangle( phase );
				break;
			case VOICE_SQUARE_BASS:
				sample = Square( phase, 0.5f ) * 0.6f;
				envelope *= 0.55f + 0.45f * Decay( t, 0.08f );
				break;
			case VOICE_LEAD:
				vibrato = 1.0f + ( t > 0.25f ? 0.006f * Sine( t * 5.5f ) : 0.0f );
				sample = Square( phase, 0.5f ) * 0.5f;
				envelope *= 0.7f + 0.3f * Decay( t, 0.15f );
				break;
			case VOICE_THIN_LEAD:
				vibrato = 1.0f + ( t > 0.2f ? 0.008f * Sine( t * 6.0f ) : 0.0f );
				sample = Square( phase, 0.125f ) * 0.5f;
				break;
			default:	// VOICE_ARP
				sample = Square( phase, 0.25f ) * 0.5f;
				envelope *= Decay( t, 0.09f );
				break;
		}
		phase += frequency * vibrato / SAMPLE_RATE;
		out[i] = sample * envelope * gain;
	}
	return out;
}

tSamples RenderDrum( eVoice voice, float gain, uint32_t seed ) {
	const float lengths[] = { 0.25f, 0.2f, 0.05f, 0.18f, 0.9f };
	const float seconds = lengths[voice - VOICE_KICK];
	const size_t count = size_t( seconds * SAMPLE_RATE );
	tSamples out( count );
	cNoise noise( seed );
	float previous = 0.0f;
	float phase = 0.0f;
	for ( size_t i = 0; i < count; i++ ) {
		const float t = float( i ) / SAMPLE_RATE;
		const float fade = 1.0f - t / seconds;		// every drum ends in silence
		float sample = 0.0f;
		if ( voice == VOICE_KICK ) {
			phase += ( 45.0f + 110.0f * Decay( t, 0.03f ) ) / SAMPLE_RATE;
			sample = Sine( phase ) * Decay( t, 0.09f );
		} else if ( voice == VOICE_SNARE ) {
			phase += 185.0f / SAMPLE_RATE;
			sample = noise.Next() * 0.6f * Decay( t, 0.06f ) + Sine( phase ) * 0.5f * Decay( t, 0.03f );
		} else {
			const float white = noise.Next();
			const float bright = white - previous;	// high-passed: metallic
			previous = white;
			const float time = voice == VOICE_HAT ? 0.012f : ( voice == VOICE_OPEN_HAT ? 0.06f : 0.3f );
			sample = bright * 0.35f * Decay( t, time );
		}
		out[i] = sample * fade * Attack( t, 0.001f ) * gain;
	}
	return out;
}

// The score rendered three times end to end; the middle copy, which has the previous copy's
// tails and echoes in it, is exactly one period of the endless loop.
tSamples RenderSong( const sSong &song ) {
	const double stepSamples = SAMPLE_RATE * 60.0 / song.bpm / 4.0;
	const int loopSteps = song.bars * 16;
	const size_t loopSamples = size_t( std::llround( loopSteps * stepSamples ) );
	tSamples mix( loopSamples * 3, 0.0f );
	for ( int copy = 0; copy < 3; copy++ ) {
		for ( size_t n = 0; n < song.notes.size(); n++ ) {
			const sNote &note = song.notes[n];
			const size_t start = size_t( std::llround( ( copy * loopSteps + note.step ) * stepSamples ) );
			if ( note.voice >= VOICE_KICK ) {
				const uint32_t seed = uint32_t( 1 + n * 7919 );	// each hit its own grain of noise
				MixInto( mix, RenderDrum( note.voice, note.gain, seed ), start, 1.0f );
			} else {
				const float seconds = float( note.length * stepSamples / SAMPLE_RATE );
				MixInto( mix, RenderTone( note.voice, NoteFrequency( note.note ), seconds, note.gain ), start, 1.0f );
			}
		}
	}
	const size_t delay = size_t( std::llround( song.echoSteps * stepSamples ) );
	for ( size_t i = delay; i < mix.size(); i++ ) {
		mix[i] += mix[i - delay] * song.echoGain;
	}
	tSamples loop( mix.begin() + long( loopSamples ), mix.begin() + long( 2 * loopSamples ) );
	Normalise( loop, song.peak );
	return loop;
}

// A drum part from one 16-character pattern per voice ('x' strong, 'o' soft), repeated every bar.
void AddDrums( sSong &song, int firstBar, int lastBar, eVoice voice, const std::string &pattern, float gain ) {
	for ( int bar = firstBar; bar <= lastBar; bar++ ) {
		for ( int step = 0; step < 16; step++ ) {
			if ( pattern[step] == 'x' || pattern[step] == 'o' ) {
				song.notes.push_back( { bar * 16 + step, 1, 0, voice, pattern[step] == 'x' ? gain : gain * 0.55f } );
			}
		}
	}
}

// A melody from (bar, step, length, note) rows.
void AddLine( sSong &song, eVoice voice, float gain, const std::vector<std::vector<int>> &rows ) {
	for ( const std::vector<int> &row : rows ) {
		song.notes.push_back( { row[0] * 16 + row[1], row[2], row[3], voice, gain } );
	}
}

// Chord tones (root position triad plus octave) cycling in eighths or sixteenths.
void AddArpeggio( sSong &song, int bar, int root, bool minor, int stepLength, float gain ) {
	const int tones[4] = { root, root + ( minor ? 3 : 4 ), root + 7, root + 12 };
	for ( int step = 0, i = 0; step < 16; step += stepLength, i++ ) {
		song.notes.push_back( { bar * 16 + step, stepLength, tones[i % 4], VOICE_ARP, gain } );
	}
}

}	// namespace

tSamples MakeMenuMusic() {
	sSong song = { 90, 12, 0.3f, 3, MUSIC_PEAK, {} };
	// Am F C G | Am F Dm E | F C Dm E: the last bar leans back into the first
	const int roots[12] = { 57, 53, 48, 55, 57, 53, 50, 52, 53, 48, 50, 52 };
	const bool minor[12] = { true, false, false, false, true, false, true, false, false, false, true, false };
	for ( int bar = 0; bar < 12; bar++ ) {
		song.notes.push_back( { bar * 16, 8, roots[bar] - 12, VOICE_TRIANGLE_BASS, 0.5f } );
		song.notes.push_back( { bar * 16 + 8, 6, roots[bar] - 5, VOICE_TRIANGLE_BASS, 0.45f } );
		AddArpeggio( song, bar, roots[bar] + 12, minor[bar], 2, 0.16f );
	}
	AddLine( song, VOICE_LEAD, 0.3f, {
		{ 0, 0, 6, 76 }, { 0, 6, 2, 74 }, { 0, 8, 8, 72 },
		{ 1, 0, 4, 69 }, { 1, 4, 4, 72 }, { 1, 8, 8, 77 },
		{ 2, 0, 6, 76 }, { 2, 6, 2, 79 }, { 2, 8, 8, 76 },
		{ 3, 0, 8, 74 }, { 3, 8, 4, 71 }, { 3, 12, 4, 74 },
		{ 4, 0, 6, 76 }, { 4, 6, 2, 74 }, { 4, 8, 4, 72 }, { 4, 12, 4, 71 },
		{ 5, 0, 8, 69 }, { 5, 8, 8, 72 },
		{ 6, 0, 4, 74 }, { 6, 4, 4, 77 }, { 6, 8, 8, 81 },
		{ 7, 0, 12, 80 }, { 7, 12, 4, 76 },
		{ 8, 0, 6, 81 }, { 8, 6, 2, 79 }, { 8, 8, 8, 77 },
		{ 9, 0, 6, 76 }, { 9, 6, 2, 74 }, { 9, 8, 8, 72 },
		{ 10, 0, 4, 74 }, { 10, 4, 4, 72 }, { 10, 8, 8, 69 },
		{ 11, 0, 8, 71 }, { 11, 8, 8, 68 },
	} );
	AddDrums( song, 0, 11, VOICE_KICK, "x.........o.....", 0.55f );
	AddDrums( song, 0, 11, VOICE_HAT, "..o...o...o...o.", 0.5f );
	return RenderSong( song );
}

tSamples MakeStreetsMusic() {
	sSong song = { 120, 16, 0.25f, 3, MUSIC_PEAK, {} };
	// Em Em C D | Em Em C B, twice; the lead comes in for the second time round
	const int roots[8] = { 40, 40, 36, 38, 40, 40, 36, 35 };
	for ( int bar = 0; bar < 16; bar++ ) {
		const int root = roots[bar % 8];
		static const int offsets[8] = { 0, 0, 12, 0, 0, 7, 12, 0 };
		for ( int eighth = 0; eighth < 8; eighth++ ) {	// the driving bass line
			song.notes.push_back( { bar * 16 + eighth * 2, 1, root + offsets[eighth], VOICE_SQUARE_BASS, eighth % 4 == 0 ? 0.55f : 0.42f } );
		}
		if ( bar < 8 ) {	// stabs on the off-beats keep it tense
			for ( int step : { 3, 6, 11 } ) {
				song.notes.push_back( { bar * 16 + step, 1, root + 24 + 7, VOICE_ARP, 0.18f } );
				song.notes.push_back( { bar * 16 + step, 1, root + 24 + ( bar % 8 == 7 ? 4 : 3 ), VOICE_ARP, 0.14f } );
			}
		} else {
			AddArpeggio( song, bar, root + 24, bar % 8 < 2 || bar % 8 == 4 || bar % 8 == 5, 1, 0.07f );
		}
	}
	AddLine( song, VOICE_LEAD, 0.28f, {
		{ 8, 0, 3, 76 }, { 8, 3, 3, 79 }, { 8, 6, 2, 81 }, { 8, 8, 6, 83 }, { 8, 14, 2, 81 },
		{ 9, 0, 3, 79 }, { 9, 3, 3, 76 }, { 9, 6, 2, 74 }, { 9, 8, 8, 76 },
		{ 10, 0, 3, 79 }, { 10, 3, 3, 76 }, { 10, 6, 2, 72 }, { 10, 8, 6, 76 }, { 10, 14, 2, 79 },
		{ 11, 0, 8, 78 }, { 11, 8, 4, 74 }, { 11, 12, 4, 78 },
		{ 12, 0, 3, 76 }, { 12, 3, 3, 79 }, { 12, 6, 2, 81 }, { 12, 8, 6, 83 }, { 12, 14, 2, 81 },
		{ 13, 0, 3, 83 }, { 13, 3, 3, 81 }, { 13, 6, 2, 79 }, { 13, 8, 8, 76 },
		{ 14, 0, 4, 79 }, { 14, 4, 4, 81 }, { 14, 8, 4, 79 }, { 14, 12, 4, 76 },
		{ 15, 0, 8, 75 }, { 15, 8, 8, 71 },
	} );
	AddDrums( song, 0, 15, VOICE_KICK, "x.......x.x.....", 0.8f );
	AddDrums( song, 0, 15, VOICE_SNARE, "....x.......x...", 0.55f );
	AddDrums( song, 0, 15, VOICE_HAT, "x.o.x.o.x.o.x...", 0.55f );
	AddDrums( song, 0, 15, VOICE_OPEN_HAT, "..............x.", 0.45f );
	return RenderSong( song );
}

tSamples MakeBossMusic() {
	sSong song = { 150, 20, 0.2f, 2, MUSIC_PEAK * 1.2f, {} };
	// Dm Dm Bb A, five times: riff, riff with a high lead, then a climbing arpeggio
	const int roots[4] = { 38, 38, 34, 33 };
	for ( int bar = 0; bar < 20; bar++ ) {
		const int root = roots[bar % 4];
		for ( int step = 0; step < 16; step++ ) {	// sixteenth-note bass
			song.notes.push_back( { bar * 16 + step, 1, root + ( step % 8 == 6 ? 12 : 0 ), VOICE_SQUARE_BASS, step % 4 == 0 ? 0.6f : 0.4f } );
		}
		static const int riff[][2] = { { 0, 0 }, { 3, 0 }, { 6, 3 }, { 8, 0 }, { 10, 6 }, { 12, 5 }, { 14, 3 } };
		for ( const auto &hit : riff ) {
			song.notes.push_back( { bar * 16 + hit[0], 2, root + 24 + hit[1], VOICE_LEAD, 0.22f } );
		}
		if ( bar >= 16 ) {
			AddArpeggio( song, bar, root + 36, bar % 4 != 3, 1, 0.1f );
		}
	}
	AddLine( song, VOICE_THIN_LEAD, 0.26f, {
		{ 8, 0, 8, 74 }, { 8, 8, 8, 77 },
		{ 9, 0, 6, 76 }, { 9, 6, 2, 74 }, { 9, 8, 8, 73 },
		{ 10, 0, 8, 70 }, { 10, 8, 4, 74 }, { 10, 12, 4, 77 },
		{ 11, 0, 16, 76 },
		{ 12, 0, 8, 81 }, { 12, 8, 8, 77 },
		{ 13, 0, 6, 79 }, { 13, 6, 2, 77 }, { 13, 8, 8, 76 },
		{ 14, 0, 8, 74 }, { 14, 8, 4, 77 }, { 14, 12, 4, 82 },
		{ 15, 0, 16, 81 },
	} );
	AddDrums( song, 0, 19, VOICE_KICK, "x...x...x...x.x.", 0.85f );
	AddDrums( song, 0, 19, VOICE_SNARE, "....x.......x..o", 0.6f );
	AddDrums( song, 0, 19, VOICE_HAT, "xoxoxoxoxoxoxoxo", 0.45f );
	for ( int bar = 0; bar < 20; bar += 4 ) {
		song.notes.push_back( { bar * 16, 1, 0, VOICE_CRASH, 0.5f } );
	}
	return RenderSong( song );
}
