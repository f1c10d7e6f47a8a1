// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphicsLayer.h"

#include <cassert>

#include "actors/Bullet.h"
#include "actors/Character.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Grid.h"
#include "world/Scene.h"

// The world's drawing: three tile layers, the actors with the enemies' alert icons, and the
// HUD (HudRenderer.cpp). The view scrolls by the pixel, so the first and the last column and
// row of cells are drawn in part.

namespace {

const int32_t ICON_SIZE = 16;				// the exclamation and the query, in pixels
const int32_t WTF_SIZE = 32;				// in pixels
const int32_t ICON_OFFSET_X = 10;			// in pixels from the body's left edge
const int32_t ICON_OFFSET_Y = -20;			// in pixels from the body's top edge: above the head

float ToFloat( int32_t value ) {
	return static_cast<float>( value );
}

// One edge of a cell along one axis: where its visible part starts and ends in the tile
// (0 to 32) and where that part goes on the screen. The first cell shows its far part, the
// last (the view's extra cell) its near part, which is empty when the camera sits on a cell edge.
void CutCell( int32_t index, int32_t last, int32_t offset, int32_t &from, int32_t &to, int32_t &screen ) {
	from = index == 0 ? offset : 0;
	to = index == last ? offset : CELL_SIZE;
	screen = index == 0 ? 0 : index * CELL_SIZE - offset;
}

}

void cGraphicsLayer::RenderWorld( const cScene &scene, const tCharacterList &players, const tCharacterList &enemies,
								const tBulletList &bullets, const tExplosionList &explosions,
								const tItemList &items ) const {
	if ( RefreshTileCache( scene ) ) {
		DrawCachedGround( scene );
	} else {
		DrawBaseLayer( scene );
		DrawObjectLayer( scene );
	}
	DrawItems( items, scene );
	DrawBullets( bullets, scene );
	DrawPlayers( players, scene );
	DrawEnemies( enemies, scene );
	DrawExplosions( explosions, scene );
	DrawOverLayer( players, scene );
	DrawHud( players );
}

void cGraphicsLayer::DrawBaseLayer( const cScene &scene ) const {
	DrawTileLayer( scene.GetBaseMap(), TILES_GROUND, scene );
}

void cGraphicsLayer::DrawObjectLayer( const cScene &scene ) const {
	DrawTileLayer( scene.GetObjectMap(), TILES_OBJECTS, scene );
}

// The roofs of the indoor area vanish while any player, a downed one too, stands under them.
void cGraphicsLayer::DrawOverLayer( const tCharacterList &players, const cScene &scene ) const {
	bool indoors = false;
	for ( const std::unique_ptr<cCharacter> &player : players ) {
		int32_t column, row;
		player->GetCell( column, row );
		if ( scene.IsUnderRoof( column, row ) ) {
			indoors = true;
			break;
		}
	}
	if ( tileCache.IsReady() ) {
		DrawCachedOver( scene, indoors );
	} else {
		DrawTileLayer( scene.GetOverMap(), indoors ? TILES_OVER_WITHOUT_ROOFS : TILES_OVER, scene );
	}
}

// Columns outside, rows inside, as the view's cells come: left to right, top to bottom.
void cGraphicsLayer::DrawTileLayer( const int32_t *layer, eTileRule rule, const cScene &scene ) const {
	assert( layer != nullptr );
	const int32_t firstColumn = scene.GetCameraCellX();
	const int32_t firstRow = scene.GetCameraCellY();
	const int32_t offsetX = scene.GetCameraX() - firstColumn * CELL_SIZE;	// in pixels, 0 to 31
	const int32_t offsetY = scene.GetCameraY() - firstRow * CELL_SIZE;
	for ( int32_t i = 0; i < VIEW_COLUMNS; i++ ) {
		cRect source;
		int32_t screenX;
		CutCell( i, VIEW_COLUMNS - 1, offsetX, source.left, source.right, screenX );
		const int32_t column = firstColumn + i;
		for ( int32_t j = 0; j < VIEW_ROWS && source.GetWidth() > 0; j++ ) {
			const int32_t row = firstRow + j;
			if ( !IsInGrid( column, row ) ) {
				continue;
			}
			const int32_t code = layer[CellIndex( column, row )];
			if ( rule == TILES_OVER_WITHOUT_ROOFS && scene.IsUnderRoof( column, row ) ) {
				continue;
			}
			const int32_t tile = GetTileToDraw( code, rule );
			int32_t from, to, screenY;
			CutCell( j, VIEW_ROWS - 1, offsetY, from, to, screenY );
			if ( tile == 0 || to <= from ) {
				continue;
			}
			source.top = ( tile - 1 ) * CELL_SIZE + from;
			source.bottom = ( tile - 1 ) * CELL_SIZE + to;
			Draw( TEX_TILES, &source, ToFloat( screenX ), ToFloat( screenY ) );
		}
	}
}

// A code whose tile lies past the end of the sheet shows nothing rather than a stray piece of it.
int32_t cGraphicsLayer::GetTileToDraw( int32_t code, eTileRule rule ) const {
	const int32_t tile = ( rule == TILES_GROUND && code == 0 ) ? 1 : code;
	if ( tile < 1 || tile > tileCount ) {
		return 0;
	}
	return tile;
}

// Items out of view are not drawn; those in view are drawn as deep as their bobbing has them.
void cGraphicsLayer::DrawItems( const tItemList &items, const cScene &scene ) const {
	const int32_t cameraX = scene.GetCameraX();
	const int32_t cameraY = scene.GetCameraY();
	for ( const cItem &item : items ) {
		if ( !item.IsInView( cameraX, cameraY ) ) {
			continue;
		}
		int32_t x, y;
		item.GetPosition( x, y );
		const int32_t left = item.GetKind() * BODY_SIZE;
		const cRect source = { left, 0, left + BODY_SIZE, BODY_SIZE };
		Draw( TEX_ITEMS, &source, ToFloat( x - cameraX ), ToFloat( y + item.GetBob() - cameraY ) );
	}
}

// Bullets keep their fractional positions on the screen, and are drawn even when off it.
void cGraphicsLayer::DrawBullets( const tBulletList &bullets, const cScene &scene ) const {
	for ( const cBullet &bullet : bullets ) {
		cRect source;
		float x, y;
		bullet.GetDrawInfo( source, x, y, scene );
		Draw( TEX_BULLETS, &source, x, y );
	}
}

// Players are drawn wherever they are; lumra hiding with her skill shows through.
void cGraphicsLayer::DrawPlayers( const tCharacterList &players, const cScene &scene ) const {
	for ( const std::unique_ptr<cCharacter> &character : players ) {
		cRect source;
		int32_t x, y;
		character->GetDrawInfo( source, x, y, scene );
		const cPlayer *player = dynamic_cast<const cPlayer *>( character.get() );
		const bool hidden = player != nullptr && player->GetKind() == KIND_LUMRA && player->IsSkillActive();
		Draw( TEX_CHARACTERS, &source, ToFloat( x ), ToFloat( y ), hidden ? HIDDEN_TINT : WHITE );
	}
}

// Enemies out of view are not drawn.
void cGraphicsLayer::DrawEnemies( const tCharacterList &enemies, const cScene &scene ) const {
	for ( const std::unique_ptr<cCharacter> &character : enemies ) {
		if ( !character->IsInView( scene.GetCameraX(), scene.GetCameraY() ) ) {
			continue;
		}
		cRect source;
		int32_t x, y;
		character->GetDrawInfo( source, x, y, scene );
		Draw( TEX_CHARACTERS, &source, ToFloat( x ), ToFloat( y ) );
		const cEnemy *enemy = dynamic_cast<const cEnemy *>( character.get() );
		if ( enemy != nullptr ) {
			DrawAlertIcon( *enemy, x, y );
		}
	}
}

// The icon the enemy's step chose, above its head.
void cGraphicsLayer::DrawAlertIcon( const cEnemy &enemy, int32_t screenX, int32_t screenY ) const {
	const float iconX = ToFloat( screenX + ICON_OFFSET_X );
	const float iconY = ToFloat( screenY + ICON_OFFSET_Y );
	const cRect small = { 0, 0, ICON_SIZE, ICON_SIZE };
	const cRect wtf = { 0, 0, WTF_SIZE, WTF_SIZE };
	switch ( enemy.GetAlertIcon() ) {
		case ALERT_ICON_EXCLAMATION:	Draw( TEX_EXCLAMATION, &small, iconX, iconY ); break;
		case ALERT_ICON_QUERY:			Draw( TEX_QUERY, &small, iconX, iconY ); break;
		case ALERT_ICON_WTF:			Draw( TEX_WTF, &wtf, ToFloat( screenX ), iconY ); break;
		case ALERT_ICON_NONE:			break;
	}
}

// Explosions are drawn wherever they are.
void cGraphicsLayer::DrawExplosions( const tExplosionList &explosions, const cScene &scene ) const {
	for ( const cExplosion &explosion : explosions ) {
		cRect source;
		int32_t x, y;
		explosion.GetDrawInfo( source, x, y, scene );
		Draw( TEX_EXPLOSION, &source, ToFloat( x ), ToFloat( y ) );
	}
}
