// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpriteArt.h"

#include "Palette.h"
#include "SpriteTools.h"

#include <cmath>
#include <cstdint>

namespace {

const sRamp CRATE		= { db32::BROWN_DARK, db32::BROWN, db32::TAN };
const sRamp BRASS		= { db32::GOLD_DARK, db32::TAN, db32::YELLOW };
const sRamp MEDKIT		= { db32::STEEL, db32::ICE, db32::WHITE };
const sRamp RED_CROSS	= { db32::RED, db32::RED, db32::ROSE };
const sRamp OLIVE		= { db32::OLIVE_DARK, db32::MOSS, db32::OLIVE };
const sRamp TRIM		= { db32::BROWN, db32::ORANGE, db32::TAN };
const sRamp COAT		= { db32::PLUM, db32::VIOLET, db32::PINK };
const sRamp SCARF		= { db32::TEAL, db32::TEAL, db32::CYAN };
const sRamp TOKEN		= { db32::NAVY, db32::BLUE, db32::SKY };

// A deterministic hash of three integers to [0, 1): the same picture on every run.
float Noise( int a, int b, int c ) {
	uint32_t h = uint32_t( a ) * 374761393u + uint32_t( b ) * 668265263u + uint32_t( c ) * 2246822519u;
	h = ( h ^ ( h >> 13 ) ) * 1274126177u;
	h ^= h >> 16;
	return ( h & 0xFFFFFF ) / float( 0x1000000 );
}

// ---- items ----

cCanvas DrawAmmo() {
	cCanvas art( 32, 32 );
	for ( int shell = 0; shell < 3; shell++ ) {	// cartridges standing in the open box
		const int x = 10 + shell * 4;
		ShadedRect( art, x, 7, x + 3, 16, BRASS );
		art.FillRect( x, 6, x + 3, 8, db32::BROWN );
		art.Set( x + 1, 5, db32::BROWN );
	}
	ShadedRect( art, 7, 14, 25, 26, CRATE );
	art.FillRect( 9, 18, 23, 20, db32::BROWN_DARK );	// a stencilled band
	art.FillRect( 14, 17, 18, 21, db32::YELLOW );
	return FinishSprite( art, 2 );
}

cCanvas DrawHealth() {
	cCanvas art( 32, 32 );
	art.FillRect( 12, 6, 20, 9, db32::GREY );			// handle
	art.FillRect( 14, 7, 18, 9, db32::INK );
	ShadedRect( art, 6, 9, 26, 25, MEDKIT );
	ShadedRect( art, 14, 11, 18, 23, RED_CROSS );
	ShadedRect( art, 10, 15, 22, 19, RED_CROSS );
	art.FillRect( 14, 15, 18, 19, db32::RED );
	return FinishSprite( art, 2 );
}

// An energy cell in its owner's colours with a lightning bolt.
cCanvas DrawEnergyCell( const sRamp &body, const sRamp &band, uint32_t bolt ) {
	cCanvas art( 32, 32 );
	art.FillRect( 13, 4, 19, 7, db32::GREY );				// terminal
	art.FillRect( 13, 4, 15, 7, db32::STEEL );
	ShadedRect( art, 9, 7, 23, 27, body );
	ShadedRect( art, 9, 9, 23, 12, band );
	ShadedRect( art, 9, 22, 23, 25, band );
	static const sPoint boltShape[] = { { 17, 12 }, { 12.5f, 18 }, { 15.5f, 18 }, { 14, 23 }, { 19.5f, 16 }, { 16.5f, 16 } };
	FillPolygon( art, boltShape, 6, bolt );
	return FinishSprite( art, 2 );
}

cCanvas DrawSpeed() {
	cCanvas art( 32, 32 );
	ShadedCircle( art, 16.0f, 16.0f, 11.0f, TOKEN );
	for ( int chevron = 0; chevron < 2; chevron++ ) {	// two arrows pointing onwards
		const float y = 10.0f + chevron * 7.0f;
		const sPoint shape[] = { { 16, y }, { 23, y + 6 }, { 20, y + 6 }, { 16, y + 2.5f }, { 12, y + 6 }, { 9, y + 6 } };
		FillPolygon( art, shape, 6, chevron == 0 ? db32::WHITE : db32::ICE );
	}
	return FinishSprite( art, 2 );
}

// ---- bullets ----

// A round shot that looks the same in all eight travel directions, with a soft glow around it.
cCanvas DrawShot( float radius, const sRamp &ramp, uint32_t glow, bool rays ) {
	cCanvas art( 20, 20 );
	ShadedCircle( art, 10.0f, 10.0f, radius, ramp );
	if ( rays ) {
		art.FillRect( 9, 3, 11, 17, ramp.light );
		art.FillRect( 3, 9, 17, 11, ramp.light );
		art.FillRect( 9, 9, 11, 11, db32::WHITE );
	}
	cCanvas shot = FinishSprite( art, 0 );
	for ( int y = 0; y < 20; y++ ) {
		for ( int x = 0; x < 20; x++ ) {
			const float dx = x + 0.5f - 10.0f;
			const float dy = y + 0.5f - 10.0f;
			const float distance = std::sqrt( dx * dx + dy * dy );
			if ( shot.IsEmpty( x, y ) && distance < radius + 4.5f ) {
				const float strength = 1.0f - ( distance - radius ) / 4.5f;
				shot.Set( x, y, db32::WithAlpha( glow, uint32_t( std::lround( 40.0f + 120.0f * std::fmin( strength, 1.0f ) ) ) ) );
			}
		}
	}
	return shot;
}

// ---- explosions ----

// One ragged layer of the fireball: radius varies with the angle so no two frames look alike.
void FireLayer( cCanvas &art, int left, float radius, uint32_t colour, int seed ) {
	for ( int y = 0; y < 32; y++ ) {
		for ( int x = 0; x < 32; x++ ) {
			const float dx = x + 0.5f - 16.0f;
			const float dy = y + 0.5f - 16.0f;
			const float angle = std::atan2( dy, dx );
			const int sector = int( std::floor( ( angle + 3.1416f ) / 6.2832f * 12.0f ) ) % 12;
			const float ragged = radius * ( 0.82f + 0.3f * Noise( sector, seed, 7 ) );
			if ( dx * dx + dy * dy <= ragged * ragged ) {
				art.Set( left + x, y, colour );
			}
		}
	}
}

void Sparks( cCanvas &art, int left, int top, int count, float reach, uint32_t colour, int seed ) {
	for ( int spark = 0; spark < count; spark++ ) {
		const float angle = 6.2832f * ( spark + Noise( spark, seed, 3 ) ) / count;
		const float distance = reach * ( 0.75f + 0.25f * Noise( spark, seed, 5 ) );
		const int x = int( std::lround( 15.5f + std::cos( angle ) * distance ) );
		const int y = int( std::lround( 15.5f + std::sin( angle ) * distance ) );
		art.Set( left + x, top + y, colour );
	}
}

// Smoke: palette greys with alpha, densest in the middle.
void SmokePuff( cCanvas &art, int left, int top, float radius, uint32_t alpha, int seed ) {
	for ( int y = 0; y < 32; y++ ) {
		for ( int x = 0; x < 32; x++ ) {
			const float dx = x + 0.5f - 16.0f;
			const float dy = y + 0.5f - 16.0f;
			const float distance = std::sqrt( dx * dx + dy * dy );
			const float grain = Noise( x, y, seed );
			if ( distance > radius * ( 0.8f + 0.3f * grain ) ) {
				continue;
			}
			const uint32_t colour = grain > 0.6f ? db32::GREY_DARK : ( grain > 0.25f ? db32::GREY_DEEP : db32::SLATE );
			art.Set( left + x, top + y, db32::WithAlpha( colour, alpha ) );
		}
	}
}

void DeathFrame( cCanvas &sheet, int frame ) {
	const int left = frame * 32;
	cCanvas art( 32, 32 );
	static const float fire[7] = { 7.0f, 11.0f, 13.5f, 14.0f, 12.0f, 0.0f, 0.0f };
	static const float smoke[7] = { 0.0f, 0.0f, 0.0f, 14.5f, 15.0f, 14.5f, 13.0f };
	static const uint32_t smokeAlpha[7] = { 0, 0, 0, 0xE0, 0xC0, 0x90, 0x50 };
	if ( smoke[frame] > 0.0f ) {
		SmokePuff( art, 0, 0, smoke[frame], smokeAlpha[frame], frame );
	}
	if ( fire[frame] > 0.0f ) {
		const float r = fire[frame];
		const bool cooling = frame >= 3;
		FireLayer( art, 0, r, cooling ? db32::BROWN_DARK : db32::RED, frame * 4 );
		FireLayer( art, 0, r * 0.75f, cooling ? db32::RED : db32::ORANGE, frame * 4 + 1 );
		FireLayer( art, 0, r * 0.5f, cooling ? db32::ORANGE : db32::YELLOW, frame * 4 + 2 );
		if ( frame <= 1 ) {
			FireLayer( art, 0, r * 0.28f, db32::WHITE, frame * 4 + 3 );
		}
	}
	if ( frame >= 2 && frame <= 5 ) {
		Sparks( art, 0, 0, 10, 10.0f + frame * 1.2f, frame < 4 ? db32::YELLOW : db32::ORANGE, frame );
	}
	CopyNonEmpty( sheet, art, left, 0 );
}

void ImpactFrame( cCanvas &sheet, int frame ) {
	cCanvas art( 32, 32 );
	switch ( frame ) {
		case 0:
			art.FillCircle( 16, 16, 3.0f, db32::WHITE );
			break;
		case 1:
			art.FillCircle( 16, 16, 5.0f, db32::YELLOW );
			art.FillCircle( 16, 16, 2.5f, db32::WHITE );
			Sparks( art, 0, 0, 6, 7.0f, db32::YELLOW, 11 );
			break;
		case 2:
			art.FillCircle( 16, 16, 6.0f, db32::ORANGE );
			art.FillCircle( 16, 16, 3.5f, db32::YELLOW );
			Sparks( art, 0, 0, 8, 9.5f, db32::YELLOW, 12 );
			break;
		case 3:
			art.FillCircle( 16, 16, 5.0f, db32::RED );
			art.FillCircle( 16, 16, 2.5f, db32::ORANGE );
			Sparks( art, 0, 0, 8, 11.5f, db32::ORANGE, 13 );
			break;
		default:
			SmokePuff( art, 0, 0, 4.0f + frame, uint32_t( 0xC0 - ( frame - 4 ) * 0x38 ), 20 + frame );
			break;
	}
	CopyNonEmpty( sheet, art, frame * 32, 32 );
}

}	// namespace

cCanvas MakeItemSheet() {
	cCanvas sheet( 192, 32 );
	CopyNonEmpty( sheet, DrawAmmo(), 0, 0 );
	// kind 1 is never placed in the game: its cell stays empty
	CopyNonEmpty( sheet, DrawHealth(), 64, 0 );
	CopyNonEmpty( sheet, DrawEnergyCell( OLIVE, TRIM, db32::YELLOW ), 96, 0 );
	CopyNonEmpty( sheet, DrawEnergyCell( COAT, SCARF, db32::CYAN ), 128, 0 );
	CopyNonEmpty( sheet, DrawSpeed(), 160, 0 );
	return sheet;
}

cCanvas MakeBulletSheet() {
	static const sRamp heavy = { db32::RED, db32::ORANGE, db32::YELLOW };
	static const sRamp spark = { db32::TEAL, db32::CYAN, db32::WHITE };
	static const sRamp pellet = { db32::PLUM, db32::RED, db32::ROSE };
	static const sRamp tracer = { db32::ORANGE, db32::YELLOW, db32::WHITE };
	cCanvas sheet( 80, 20 );
	CopyNonEmpty( sheet, DrawShot( 4.5f, heavy, db32::ORANGE, false ), 0, 0 );
	CopyNonEmpty( sheet, DrawShot( 2.5f, spark, db32::CYAN, true ), 20, 0 );
	CopyNonEmpty( sheet, DrawShot( 3.0f, pellet, db32::ROSE, false ), 40, 0 );
	CopyNonEmpty( sheet, DrawShot( 2.5f, tracer, db32::YELLOW, false ), 60, 0 );
	return sheet;
}

cCanvas MakeExplosionSheet() {
	cCanvas sheet( 224, 64 );
	for ( int frame = 0; frame < 7; frame++ ) {
		DeathFrame( sheet, frame );
		ImpactFrame( sheet, frame );
	}
	return sheet;
}

cCanvas MakeBar( eBar bar ) {
	static const sRamp ramps[4] = {
		{ db32::TEAL, db32::GREEN, db32::LIME },
		{ db32::PLUM, db32::RED, db32::ROSE },
		{ db32::NAVY, db32::SKY, db32::CYAN },
		{ db32::GOLD_DARK, db32::TAN, db32::YELLOW },
	};
	const sRamp &ramp = ramps[bar];
	cCanvas picture( 8, 8, ramp.mid );
	picture.FillRect( 0, 0, 8, 1, ramp.light );		// lit top edge, shaded bottom
	picture.FillRect( 0, 6, 8, 8, ramp.dark );
	return picture;
}

cCanvas MakeExclamationIcon() {
	static const char *const mark[] = {
		".##.", "####", "####", "####", "####", ".##.", ".##.", ".##.", "....", ".##.", "####", ".##."
	};
	cCanvas art( 16, 16 );
	DrawGlyph( art, mark, 12, 6, 1, 1, db32::YELLOW );
	art.FillRect( 8, 2, 9, 7, db32::ORANGE );		// shade on the right of the bar
	art.Set( 6, 2, db32::WHITE );
	return FinishSprite( art, 1 );
}

cCanvas MakeQueryIcon() {
	static const char *const mark[] = {
		"..####..", ".######.", "##....##", "......##", ".....##.", "....##..", "...##...",
		"...##...", "........", "...##...", "...##..."
	};
	cCanvas art( 16, 16 );
	DrawGlyph( art, mark, 11, 4, 2, 1, db32::CYAN );
	art.Set( 6, 2, db32::WHITE );
	art.Set( 5, 3, db32::ICE );
	return FinishSprite( art, 1 );
}

cCanvas MakePuzzledIcon() {
	static const char *const query[] = {
		".###.", "#...#", "....#", "...#.", "..#..", ".....", "..#.."
	};
	static const char *const bang[] = { "#", "#", "#", "#", "#", ".", "#" };
	cCanvas art( 32, 32 );
	static const sRamp cloud = { db32::STEEL, db32::ICE, db32::WHITE };
	ShadedCircle( art, 16.0f, 12.0f, 10.5f, cloud );	// a thought bubble
	ShadedCircle( art, 8.0f, 14.0f, 6.0f, cloud );
	ShadedCircle( art, 24.0f, 14.0f, 6.0f, cloud );
	ShadedCircle( art, 7.0f, 24.5f, 2.5f, cloud );
	ShadedCircle( art, 4.0f, 28.5f, 1.5f, cloud );
	DrawGlyph( art, query, 7, 9, 5, 2, db32::INDIGO );
	DrawGlyph( art, bang, 7, 21, 5, 2, db32::RED );
	return FinishSprite( art, 1 );
}

cCanvas MakeCursor() {
	cCanvas art( 32, 32 );
	static const sPoint arrow[] = { { 0, 0 }, { 0, 19 }, { 5, 14.5f }, { 8.5f, 22 }, { 12, 20.5f }, { 8.5f, 13.5f }, { 14.5f, 13.5f } };
	FillPolygon( art, arrow, 7, db32::ICE );
	art.Set( 0, 0, db32::ICE );
	// ink on the arrow's own border, so the tip pixel itself is the hot spot
	cCanvas cursor( 32, 32, CURSOR_KEY );
	for ( int y = 0; y < 32; y++ ) {
		for ( int x = 0; x < 32; x++ ) {
			if ( !art.IsOpaque( x, y ) ) {
				continue;
			}
			const bool edge = !art.IsOpaque( x - 1, y ) || !art.IsOpaque( x + 1, y ) || !art.IsOpaque( x, y - 1 ) || !art.IsOpaque( x, y + 1 );
			uint32_t colour = edge ? db32::INK : db32::ICE;
			if ( !edge && ( !art.IsOpaque( x - 2, y ) || !art.IsOpaque( x, y - 2 ) ) ) {
				colour = db32::WHITE;		// lit inner edge
			} else if ( !edge && ( !art.IsOpaque( x + 2, y ) || !art.IsOpaque( x, y + 2 ) ) ) {
				colour = db32::STEEL;
			}
			cursor.Set( x, y, colour );
		}
	}
	return cursor;
}
