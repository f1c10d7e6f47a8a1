// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cGraphicsLayer is the game's only way to the screen: it owns the 23 textures and draws one frame
// at a time, a menu picture or the world with its HUD, and the cursor. Drawing reads the game and
// changes nothing in it: every animation has already moved on in the game's step.

#include <cstdint>
#include <string>
#include <vector>

#include "actors/ActorLists.h"
#include "actors/Rect.h"
#include "graphics/MenuText.h"
#include "graphics/TileCache.h"
#include "world/Grid.h"

class cEnemy;
class cGraphicsBackend;
class cPlayer;
class cScene;
class cTexture;

class cGraphicsLayer {
public:
	// In the order the layer holds them.
	enum eTexture {
		TEX_MAIN_MENU, TEX_SETTINGS, TEX_CREDITS, TEX_CONTROLS, TEX_DIFFICULTY, TEX_CHAR_SELECTION,
		TEX_PAUSE, TEX_VICTORY, TEX_DEFEAT, TEX_QUERY, TEX_EXCLAMATION, TEX_WTF, TEX_CURSOR,
		TEX_TILES, TEX_CHARACTERS, TEX_ITEMS, TEX_BULLETS, TEX_EXPLOSION, TEX_HEALTH,
		TEX_LOW_HEALTH, TEX_ENERGY, TEX_AMMO, TEX_SOUND,
		TEXTURE_COUNT
	};
	static constexpr uint32_t WHITE = 0xFFFFFFFF;			// draws a picture as it is
	static constexpr uint32_t CURSOR_KEY = 0x00FF00FF;		// the cursor picture's transparent pixels
	static constexpr uint32_t HIDDEN_TINT = 0x88FFFFFF;		// lumra with her skill on: alpha 136 of 255
	static constexpr uint32_t CLEAR_COLOUR = 0xFF000000;	// opaque black, under everything

						cGraphicsLayer() = default;
	virtual				~cGraphicsLayer() = default;

	bool				Init( cGraphicsBackend *backend, bool fullscreen );
	// The pictures' paths are relative to root, the working directory unless a test or a tool
	// gives another folder.
	void				LoadTextures( const std::string &root = "." );
	void				ReleaseTextures();
	void				Release();

	// One whole frame of the screen (actors/GameState.h). The scene and the lists are used only
	// while the world is shown and may be null before the first game; texts go over a menu
	// screen's picture.
	bool				Render( int32_t screen, int32_t mouseX, int32_t mouseY, const cScene *scene, const tCharacterList *players,
								const tCharacterList *enemies, const tBulletList *bullets,
								const tExplosionList *explosions, const tItemList *items,
								const std::vector<cMenuText> *texts = nullptr ) const;

	// The world and its HUD.
	void				RenderWorld( const cScene &scene, const tCharacterList &players, const tCharacterList &enemies,
								const tBulletList &bullets, const tExplosionList &explosions,
								const tItemList &items ) const;

	// The map's tile layers drawn from textures made once (where the device can draw into textures)
	// or every visible tile each frame; the picture is the same. On by default.
	void				SetCachedTiles( bool on );
	bool				IsTileCacheReady() const { return tileCache.IsReady(); }

	cTexture *			GetTexture( eTexture which ) const { return textures[which]; }
	bool				IsReady() const { return backend != nullptr; }

private:
	// The cells a view touches: the first and the last column and row are cut when the view
	// does not sit on cell edges.
	static constexpr int32_t VIEW_COLUMNS = VIEW_WIDTH / CELL_SIZE + 1;	// 21
	static constexpr int32_t VIEW_ROWS = VIEW_HEIGHT / CELL_SIZE + 1;		// 16

	// What a tile layer leaves out besides the cells beyond the grid.
	enum eTileRule {
		TILES_GROUND,				// every cell; code 0 is tile 1
		TILES_OBJECTS,				// codes 0 and below are empty
		TILES_OVER,					// code 0 is empty
		TILES_OVER_WITHOUT_ROOFS	// as TILES_OVER, and the indoor area's cells are left out too
	};

	void				DrawScreen( eTexture which ) const;
	void				DrawCursor( int32_t mouseX, int32_t mouseY ) const;
	void				Draw( eTexture which, const cRect *source, float x, float y, uint32_t tint = WHITE ) const;

	// The steps of RenderWorld, in their order: later ones cover earlier ones.
	void				DrawBaseLayer( const cScene &scene ) const;
	void				DrawObjectLayer( const cScene &scene ) const;
	void				DrawItems( const tItemList &items, const cScene &scene ) const;
	void				DrawBullets( const tBulletList &bullets, const cScene &scene ) const;
	void				DrawPlayers( const tCharacterList &players, const cScene &scene ) const;
	void				DrawEnemies( const tCharacterList &enemies, const cScene &scene ) const;
	void				DrawExplosions( const tExplosionList &explosions, const cScene &scene ) const;
	void				DrawOverLayer( const tCharacterList &players, const cScene &scene ) const;
	void				DrawHud( const tCharacterList &players ) const;

	// The cached path: the cells whose codes changed drawn again into the cache (false when there
	// is no cache to draw from), then the view copied out of it.
	bool				RefreshTileCache( const cScene &scene ) const;
	void				DrawCachedGround( const cScene &scene ) const;
	void				DrawCachedOver( const cScene &scene, bool indoors ) const;
	void				DrawCachedOverParts( const std::vector<cRect> &parts, const cRect &view ) const;
	// The runs of cells along a row of the view that show an over tile, in world pixels.
	std::vector<cRect>	GetOverRuns( const cScene &scene, int32_t row, bool indoors ) const;
	// One whole cell of a layer, drawn into the cache at its place in the world.
	void				DrawCell( const int32_t *layer, eTileRule rule, int32_t cell, bool blend ) const;
	// The view's 21 x 16 cells of one layer, cut at the view's edges.
	void				DrawTileLayer( const int32_t *layer, eTileRule rule, const cScene &scene ) const;
	// The tile a cell's code shows under the rule; 0 when the cell shows nothing.
	int32_t				GetTileToDraw( int32_t code, eTileRule rule ) const;
	void				DrawAlertIcon( const cEnemy &enemy, int32_t screenX, int32_t screenY ) const;
	void				DrawPlayerHud( const cPlayer &player, int32_t portraitX, int32_t barX ) const;
	// A bar of length + 1 one-pixel columns, nothing when length is negative.
	void				DrawBar( eTexture which, int32_t length, int32_t barX, int32_t barY ) const;

	cGraphicsBackend *	backend = nullptr;		// not owned; set while the device exists
	cTexture *			textures[TEXTURE_COUNT] = {};
	int32_t				tileCount = 0;			// whole tiles in the tile sheet; 0 without one
	bool				cachedTiles = true;
	// What the map's layers look like, kept from frame to frame: drawing's own, not the game's.
	mutable cTileCache	tileCache;
};
