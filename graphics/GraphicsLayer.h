#pragma once
// cGraphicsLayer is the game's only way to the screen: it owns the 22 textures and draws one frame
// per game frame, a menu picture or the world with its HUD, and the cursor.

#include <cstdint>

#include "actors/ActorLists.h"
#include "actors/Rect.h"

class cGraphicsBackend;
class cScene;
class cTexture;

class cGraphicsLayer {
public:
	// In the order the layer holds them.
	enum eTexture {
		TEX_MAIN_MENU, TEX_SETTINGS, TEX_CREDITS, TEX_CONTROLS, TEX_DIFFICULTY, TEX_CHAR_SELECTION,
		TEX_PAUSE, TEX_VICTORY, TEX_DEFEAT, TEX_QUERY, TEX_EXCLAMATION, TEX_WTF, TEX_CURSOR,
		TEX_TILES, TEX_CHARACTERS, TEX_ITEMS, TEX_BULLETS, TEX_EXPLOSION, TEX_HEALTH,
		TEX_LOW_HEALTH, TEX_ENERGY, TEX_AMMO,
		TEXTURE_COUNT
	};
	static const uint32_t WHITE = 0xFFFFFFFF;			// draws a picture as it is
	static const uint32_t CURSOR_KEY = 0x00FF00FF;		// the cursor picture's transparent pixels

						cGraphicsLayer() = default;
	virtual				~cGraphicsLayer() = default;

	bool				Init( cGraphicsBackend *backend, bool fullscreen );
	void				LoadTextures();
	void				ReleaseTextures();
	void				Release();

	// One whole frame. The scene and the lists are used only while the world is shown and may be
	// null before the first game.
	bool				Render( int32_t mouseX, int32_t mouseY, const cScene *scene, tCharacterList *players,
								tCharacterList *enemies, tBulletList *bullets, tExplosionList *explosions,
								tItemList *items );

	// The world and its HUD.
	void				RenderWorld( const cScene &scene, tCharacterList &players, tCharacterList &enemies,
								tBulletList &bullets, tExplosionList &explosions, tItemList &items );

	cTexture *			GetTexture( eTexture which ) const { return textures[which]; }
	bool				IsReady() const { return backend != nullptr; }

private:
	void				DrawScreen( eTexture which );
	void				DrawCursor( int32_t mouseX, int32_t mouseY );
	void				Draw( eTexture which, const cRect *source, float x, float y, uint32_t tint = WHITE );

	cGraphicsBackend *	backend = nullptr;		// not owned; set while the device exists
	cTexture *			textures[TEXTURE_COUNT] = {};
};
