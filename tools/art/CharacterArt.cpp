// SPDX-License-Identifier: GPL-3.0-or-later
#include "CharacterArt.h"

#include "Figure.h"
#include "Palette.h"

#include <cmath>

namespace {

const int FRAME = 32;
const float CENTRE = 16.0f;
const float BODY_SCALE = 1.12f;		// the walking figures fill their cell a little more than drawn;
									// the boss is drawn full size already

enum eKind { TAVESH = 0, LUMRA = 1, SOLDIER = 2, GUNNER = 3, BOSS = 4 };

const sRamp BOOTS		= { db32::BROWN_DARK, db32::BROWN, db32::TAN };
const sRamp SKIN		= { db32::TAN, db32::SKIN, db32::SKIN };
const sRamp METAL		= { db32::INK, db32::GREY_DEEP, db32::GREY };
const sRamp DARK_METAL	= { db32::INK, db32::SLATE, db32::GREY_DEEP };
const sRamp OLIVE		= { db32::OLIVE_DARK, db32::MOSS, db32::OLIVE };
const sRamp TRIM		= { db32::BROWN, db32::ORANGE, db32::TAN };
const sRamp HAIR_BROWN	= { db32::INK, db32::BROWN_DARK, db32::BROWN };
const sRamp COAT		= { db32::PLUM, db32::VIOLET, db32::PINK };
const sRamp SCARF		= { db32::TEAL, db32::TEAL, db32::CYAN };
const sRamp HAIR_NIGHT	= { db32::INK, db32::INDIGO, db32::BLUE };
const sRamp UNIFORM		= { db32::INDIGO, db32::NAVY, db32::SKY };
const sRamp CAP			= { db32::INK, db32::SLATE, db32::GREY_DARK };
const sRamp CRIMSON		= { db32::PLUM, db32::RED, db32::ROSE };
const sRamp HELMET_RED	= { db32::INK, db32::BROWN_DARK, db32::RED };
const sRamp CRATE		= { db32::BROWN_DARK, db32::BROWN, db32::TAN };
const sRamp NIGHT		= { db32::INK, db32::PLUM, db32::VIOLET };
const sRamp HELM		= { db32::BLACK, db32::INK, db32::PLUM };
const sRamp GOLD		= { db32::GOLD_DARK, db32::TAN, db32::YELLOW };
const sRamp SHIMMER		= { db32::VIOLET, db32::PINK, db32::ICE };

// How far each foot is ahead of the body in a walk column: column 1 stands, 0 and 2 stride.
float StrideOf( int column ) {
	return column == 0 ? 1.0f : ( column == 2 ? -1.0f : 0.0f );
}

void DrawFeet( cFigure &figure, float stride, float spread, float step ) {
	figure.Ellipse( 0.5f + stride * step, -spread, 2.8f, 2.3f, BOOTS );
	figure.Ellipse( 0.5f - stride * step, spread, 2.8f, 2.3f, BOOTS );
}

// The face looks out of the front of the head, the rest is hair or headgear.
void DrawHead( cFigure &figure, float a, float radius, const sRamp &hair, float faceDepth ) {
	figure.Ellipse( a, 0.0f, radius, radius, hair );
	figure.Ellipse( a + radius - faceDepth * 0.5f, 0.0f, faceDepth * 0.5f, radius - 1.5f, SKIN );
}

void DrawTavesh( cFigure &figure, float stride ) {
	DrawFeet( figure, stride, 4.0f, 6.0f );
	figure.Ellipse( -stride * 2.5f, -10.0f, 2.5f, 2.5f, OLIVE );		// the free arm swings
	figure.Ellipse( -0.5f, 0.0f, 5.5f, 9.5f, OLIVE );				// broad armoured chest
	figure.Ellipse( 0.0f, -7.5f, 4.0f, 3.5f, TRIM );				// shoulder plates with orange rims
	figure.Ellipse( 0.0f, 7.5f, 4.0f, 3.5f, TRIM );
	figure.Ellipse( 0.0f, -6.5f, 3.0f, 2.5f, OLIVE );
	figure.Ellipse( 0.0f, 6.5f, 3.0f, 2.5f, OLIVE );
	figure.Ellipse( 3.5f, 6.0f, 2.5f, 2.5f, OLIVE );				// gun arm
	figure.Box( 3.0f, 10.0f, 1.5f, 6.5f, DARK_METAL );				// short heavy gun
	figure.Box( 9.0f, 12.0f, 2.0f, 6.0f, METAL );					// its wide muzzle
	DrawHead( figure, 0.5f, 5.0f, HAIR_BROWN, 3.0f );
}

void DrawLumra( cFigure &figure, float stride, bool shimmer ) {
	const sRamp &coat = shimmer ? SHIMMER : COAT;
	DrawFeet( figure, stride, 3.0f, 6.0f );
	figure.Ellipse( -4.0f, stride * 1.0f, 5.0f, 6.0f, coat );		// the coat's tail sways with the step
	figure.Ellipse( -stride * 2.5f, -7.5f, 2.0f, 2.0f, coat );
	figure.Ellipse( -0.5f, 0.0f, 4.5f, 7.0f, coat );				// slim shoulders
	figure.Box( -10.0f, -2.0f, -3.5f - stride, -0.5f - stride, SCARF );	// scarf end flying behind
	figure.Ellipse( 0.0f, 0.0f, 5.0f, 5.0f, SCARF );				// scarf around the neck
	figure.Ellipse( 3.0f, 5.0f, 2.0f, 2.0f, coat );					// gun arm
	figure.Box( 2.0f, 13.0f, 3.5f, 5.5f, METAL );					// long thin gun
	figure.Dot( 12.5f, 4.5f, db32::CYAN );
	DrawHead( figure, 0.5f, 4.0f, HAIR_NIGHT, 3.0f );
	if ( shimmer ) {
		// glints that wander over the coat from one walk column to the next
		const float phase = stride + 1.0f;
		figure.Dot( -2.0f + phase, -5.0f + phase * 2.0f, db32::WHITE );
		figure.Dot( -5.0f - phase, 3.0f - phase, db32::WHITE );
		figure.Dot( -7.0f + phase, -2.0f + phase * 3.0f, db32::CYAN );
	}
}

void DrawSoldier( cFigure &figure, float stride ) {
	DrawFeet( figure, stride, 3.5f, 6.0f );
	figure.Ellipse( -stride * 2.5f, -8.5f, 2.2f, 2.2f, UNIFORM );
	figure.Ellipse( -0.5f, 0.0f, 5.0f, 8.0f, UNIFORM );
	figure.Box( -1.0f, 3.0f, -2.0f, 2.0f, CAP );						// collar and webbing
	figure.Ellipse( 3.0f, 5.5f, 2.2f, 2.2f, UNIFORM );
	figure.Box( 2.0f, 12.0f, 3.5f, 6.5f, METAL );					// rifle
	figure.Ellipse( 0.5f, 0.0f, 4.5f, 4.5f, CAP );					// cap crown
	figure.Box( 3.5f, 6.5f, -3.0f, 3.0f, CAP );						// its peak
	figure.Dot( 0.0f, 0.0f, db32::ICE );								// badge
}

void DrawGunner( cFigure &figure, float stride ) {
	DrawFeet( figure, stride, 4.5f, 5.5f );
	figure.Box( -9.0f, -3.0f, -5.0f, 5.0f, CRATE );					// ammunition pack on the back
	figure.Ellipse( -stride * 1.5f, -10.0f, 2.8f, 2.8f, CRIMSON );
	figure.Ellipse( -0.5f, 0.0f, 6.0f, 10.0f, CRIMSON );			// heavy body
	figure.Box( -2.0f, 2.0f, -8.0f, -5.0f, GOLD );					// ammunition belt over the shoulder
	figure.Ellipse( 3.5f, 6.5f, 2.8f, 2.8f, CRIMSON );
	figure.Box( 2.0f, 12.0f, 2.5f, 8.5f, DARK_METAL );				// big machine gun
	figure.Box( 10.0f, 13.0f, 4.0f, 7.0f, METAL );
	figure.Box( 4.0f, 7.0f, 1.0f, 3.0f, GOLD );						// the belt feeding it
	figure.Ellipse( 0.5f, 0.0f, 5.0f, 5.0f, HELMET_RED );			// round helmet, no face shown
	figure.Dot( 4.0f, 0.0f, db32::INK );
}

void DrawBoss( cFigure &figure, float stride ) {
	DrawFeet( figure, stride, 5.0f, 5.5f );
	figure.Ellipse( -5.0f, 0.0f, 5.5f, 12.5f, NIGHT );				// cape
	figure.Ellipse( -stride * 1.5f, -12.0f, 3.0f, 3.0f, NIGHT );
	figure.Ellipse( -0.5f, 0.0f, 6.5f, 12.0f, NIGHT );				// the widest armour
	figure.Ellipse( 0.0f, -10.0f, 3.5f, 3.0f, GOLD );				// golden pauldrons
	figure.Ellipse( 0.0f, 10.0f, 3.5f, 3.0f, GOLD );
	figure.Box( -1.0f, 1.0f, -7.0f, 7.0f, GOLD );
	figure.Ellipse( 4.0f, 8.0f, 3.0f, 3.0f, NIGHT );
	figure.Box( 3.0f, 13.0f, 4.0f, 11.0f, DARK_METAL );				// heavy gun
	figure.Box( 6.0f, 9.0f, 4.0f, 11.0f, GOLD );
	figure.Ellipse( 0.5f, 0.0f, 5.5f, 5.5f, HELM );					// helmet
	figure.Box( -4.0f, 5.0f, -1.0f, 1.0f, GOLD );					// crest from nape to brow
	figure.Dot( 4.5f, -2.5f, db32::ROSE );							// eyes in the visor
	figure.Dot( 4.5f, 2.0f, db32::ROSE );
}

void DrawBody( cCanvas &figureCanvas, int kind, eFacing facing, int column, bool skill ) {
	cFigure figure( figureCanvas, CENTRE, CENTRE, facing, kind == BOSS ? 1.0f : BODY_SCALE );
	const float stride = StrideOf( column );
	switch ( kind ) {
		case TAVESH:	DrawTavesh( figure, stride ); break;
		case LUMRA:		DrawLumra( figure, stride, skill ); break;
		case SOLDIER:	DrawSoldier( figure, stride ); break;
		case GUNNER:	DrawGunner( figure, stride ); break;
		default:		DrawBoss( figure, stride ); break;
	}
}

// A soft shadow of the silhouette falls to the bottom-right; it only fills empty pixels so that
// its colour stays the palette's black with alpha.
void AddShadow( cCanvas &frame, const cCanvas &figure ) {
	for ( int y = 0; y < FRAME; y++ ) {
		for ( int x = 0; x < FRAME; x++ ) {
			if ( figure.IsOpaque( x - 2, y - 2 ) && figure.IsEmpty( x, y ) ) {
				frame.Set( x, y, db32::WithAlpha( db32::BLACK, 0x60 ) );
			}
		}
	}
}

// tavesh's shield: a blue ring with a faint fill around him.
void AddShieldGlow( cCanvas &frame, int column ) {
	const float radius = 14.5f - ( column == 1 ? 0.0f : 0.5f );
	for ( int y = 0; y < FRAME; y++ ) {
		for ( int x = 0; x < FRAME; x++ ) {
			const float dx = x + 0.5f - CENTRE;
			const float dy = y + 0.5f - CENTRE;
			const float distance = std::sqrt( dx * dx + dy * dy );
			if ( distance > radius ) {
				continue;
			}
			if ( distance > radius - 1.5f ) {
				const bool lit = dx + dy < -4.0f;
				frame.Set( x, y, db32::WithAlpha( lit ? db32::CYAN : db32::SKY, lit ? 0xE0 : 0xA0 ) );
			} else {
				frame.Set( x, y, db32::WithAlpha( db32::SKY, 0x38 ) );
			}
		}
	}
}

void CopyOver( cCanvas &sheet, const cCanvas &frame, int left, int top ) {
	for ( int y = 0; y < FRAME; y++ ) {
		for ( int x = 0; x < FRAME; x++ ) {
			const uint32_t pixel = frame.Get( x, y );
			if ( ( pixel >> 24 ) != 0 ) {
				sheet.Set( left + x, top + y, pixel );
			}
		}
	}
}

// Lays figure (already outlined) over the frame's shadow or glow: opaque pixels replace, so no
// colour outside the palette is ever mixed.
cCanvas ComposeFrame( const cCanvas &figure, bool shield, int column ) {
	cCanvas frame( FRAME, FRAME );
	if ( shield ) {
		AddShieldGlow( frame, column );
	} else {
		AddShadow( frame, figure );
	}
	CopyOver( frame, figure, 0, 0 );
	return frame;
}

cCanvas DrawWalkFrame( int kind, eFacing facing, int column, bool skill ) {
	cCanvas figure( FRAME, FRAME );
	DrawBody( figure, kind, facing, column, skill );
	figure.Outline( db32::INK );
	return ComposeFrame( figure, skill && kind == TAVESH, column );
}

// A hero who is down: on the back, arms out, the gun lying beside, stars going round the head.
cCanvas DrawDownFrame( int kind, int column ) {
	cCanvas figure( FRAME, FRAME );
	cFigure body( figure, CENTRE, CENTRE - 1.0f, FACING_LEFT );		// forward is screen-left: the head
	const bool isTavesh = kind == TAVESH;
	const sRamp &cloth = isTavesh ? OLIVE : COAT;
	body.Ellipse( -8.0f, -3.0f, 3.5f, 1.8f, BOOTS );				// legs stretched out
	body.Ellipse( -8.0f, 3.0f, 3.5f, 1.8f, BOOTS );
	body.Ellipse( 1.5f, -7.5f, 2.0f, 4.0f, cloth );					// arms flung out
	body.Ellipse( 1.5f, 7.5f, 2.0f, 4.0f, cloth );
	body.Ellipse( -1.5f, 0.0f, 5.5f, isTavesh ? 7.0f : 5.5f, cloth );
	if ( isTavesh ) {
		body.Box( -1.0f, 1.0f, -5.0f, 5.0f, TRIM );
	} else {
		body.Ellipse( 3.5f, 0.0f, 2.5f, 4.0f, SCARF );
	}
	body.Ellipse( 7.0f, 0.0f, 4.0f, 4.0f, isTavesh ? HAIR_BROWN : HAIR_NIGHT );
	body.Ellipse( 6.5f, 0.0f, 3.0f, 3.0f, SKIN );					// face up
	body.Dot( 6.5f, -1.5f, db32::INK );								// closed eyes
	body.Dot( 6.5f, 1.5f, db32::INK );
	cFigure dropped( figure, CENTRE, CENTRE, FACING_RIGHT );
	if ( isTavesh ) {
		dropped.Box( -3.0f, 5.0f, 10.0f, 14.0f, DARK_METAL );
	} else {
		dropped.Box( -6.0f, 7.0f, 11.0f, 13.0f, METAL );
	}
	figure.Outline( db32::INK );
	cCanvas frame = ComposeFrame( figure, false, column );
	// three stars turning round the head, a third of a turn per column
	cCanvas stars( FRAME, FRAME );
	for ( int star = 0; star < 3; star++ ) {
		const float angle = ( star + column / 3.0f ) * 2.0943951f;
		const int sx = int( std::lround( 9.0f + 6.5f * std::cos( angle ) ) );
		const int sy = int( std::lround( 6.0f + 3.5f * std::sin( angle ) ) );
		stars.FillRect( sx - 1, sy, sx + 2, sy + 1, db32::YELLOW );
		stars.FillRect( sx, sy - 1, sx + 1, sy + 2, db32::YELLOW );
		stars.Set( sx, sy, db32::WHITE );
	}
	stars.Outline( db32::INK );
	CopyOver( frame, stars, 0, 0 );
	return frame;
}

}	// namespace

cCanvas MakeCharacterSheet() {
	static const eFacing rows[4] = { FACING_DOWN, FACING_LEFT, FACING_RIGHT, FACING_UP };
	cCanvas sheet( CHARACTER_SHEET_WIDTH, CHARACTER_SHEET_HEIGHT );
	for ( int kind = 0; kind < CHARACTER_KINDS; kind++ ) {
		const bool hero = kind == TAVESH || kind == LUMRA;
		for ( int column = 0; column < 3; column++ ) {
			const int left = kind * 96 + column * FRAME;
			for ( int row = 0; row < 4; row++ ) {
				CopyOver( sheet, DrawWalkFrame( kind, rows[row], column, false ), left, row * FRAME );
				if ( hero ) {
					CopyOver( sheet, DrawWalkFrame( kind, rows[row], column, true ), left, 128 + row * FRAME );
				}
			}
			if ( hero ) {
				CopyOver( sheet, DrawDownFrame( kind, column ), left, 256 );
			}
		}
	}
	return sheet;
}

cCanvas MakeCharacterPortrait( int kind ) {
	return DrawWalkFrame( kind, FACING_DOWN, 1, false );
}
