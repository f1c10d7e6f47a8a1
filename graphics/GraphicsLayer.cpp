// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphicsLayer.h"

#include <string>

#include "actors/GameState.h"
#include "graphics/GraphicsBackend.h"
#include "log/Log.h"
#include "world/Grid.h"

namespace {

const int32_t CURSOR_SIZE = 32;				// in pixels

struct cTextureFile {
	cGraphicsLayer::eTexture	slot;
	const char *				path;
	bool						useKey;
};

// In loading order, which differs from the order the layer holds them in.
const cTextureFile TEXTURE_FILES[cGraphicsLayer::TEXTURE_COUNT] = {
	{ cGraphicsLayer::TEX_MAIN_MENU,		"./resources/menu/main.png",				false },
	{ cGraphicsLayer::TEX_SETTINGS,			"./resources/menu/settings.png",			false },
	{ cGraphicsLayer::TEX_DIFFICULTY,		"./resources/menu/difficulty.png",			false },
	{ cGraphicsLayer::TEX_CONTROLS,			"./resources/menu/controls.png",			false },
	{ cGraphicsLayer::TEX_CREDITS,			"./resources/menu/credits.png",				false },
	{ cGraphicsLayer::TEX_CHAR_SELECTION,	"./resources/menu/charselection.png",		false },
	{ cGraphicsLayer::TEX_PAUSE,			"./resources/menu/pause.png",				false },
	{ cGraphicsLayer::TEX_TILES,			"./resources/map/tiles.png",				false },
	{ cGraphicsLayer::TEX_CHARACTERS,		"./resources/sprites/characters_trans.png",	false },
	{ cGraphicsLayer::TEX_ITEMS,			"./resources/sprites/items_trans.png",		false },
	{ cGraphicsLayer::TEX_BULLETS,			"./resources/sprites/bullets_trans.png",	false },
	{ cGraphicsLayer::TEX_EXPLOSION,		"./resources/sprites/explosion_trans.png",	false },
	{ cGraphicsLayer::TEX_HEALTH,			"./resources/sprites/health.png",			false },
	{ cGraphicsLayer::TEX_LOW_HEALTH,		"./resources/sprites/low_health.png",		false },
	{ cGraphicsLayer::TEX_ENERGY,			"./resources/sprites/energy.png",			false },
	{ cGraphicsLayer::TEX_AMMO,				"./resources/sprites/ammo.png",				false },
	{ cGraphicsLayer::TEX_CURSOR,			"./resources/menu/mouse.png",				true },
	{ cGraphicsLayer::TEX_VICTORY,			"./resources/menu/youwin.png",				false },
	{ cGraphicsLayer::TEX_DEFEAT,			"./resources/menu/youlose.png",				false },
	{ cGraphicsLayer::TEX_EXCLAMATION,		"./resources/sprites/exclamation.png",		false },
	{ cGraphicsLayer::TEX_QUERY,			"./resources/sprites/query.png",			false },
	{ cGraphicsLayer::TEX_WTF,				"./resources/sprites/WTF.png",				false },
	{ cGraphicsLayer::TEX_SOUND,			"./resources/menu/sound.png",				false },
};

// The picture each menu state shows; states that show the world have none.
bool GetScreenTexture( int32_t state, cGraphicsLayer::eTexture &which ) {
	switch ( state ) {
		case STATE_MAIN_MENU:	which = cGraphicsLayer::TEX_MAIN_MENU; return true;
		case STATE_SETTINGS:	which = cGraphicsLayer::TEX_SETTINGS; return true;
		case STATE_DIFFICULTY:	which = cGraphicsLayer::TEX_DIFFICULTY; return true;
		case STATE_CONTROLS:	which = cGraphicsLayer::TEX_CONTROLS; return true;
		case STATE_CREDITS:		which = cGraphicsLayer::TEX_CREDITS; return true;
		case STATE_SELECT_ONE:
		case STATE_SELECT_TWO:	which = cGraphicsLayer::TEX_CHAR_SELECTION; return true;
		case STATE_PAUSE:		which = cGraphicsLayer::TEX_PAUSE; return true;
		case STATE_SOUND:		which = cGraphicsLayer::TEX_SOUND; return true;
		default:				return false;
	}
}

}

bool cGraphicsLayer::Init( cGraphicsBackend *graphicsBackend, bool fullscreen ) {
	cLog::Instance();
	if ( graphicsBackend == nullptr ) {
		cLog::Write( "Error creating Direct3D object" );
		return false;
	}
	backend = graphicsBackend;
	if ( !backend->CreateDevice( fullscreen ) ) {
		cLog::WriteError( "Creating Direct3D device", backend->GetErrorCode(), backend->GetErrorText() );
		return false;
	}
	return true;
}

// A picture that cannot be loaded is named in the log; its draws then draw nothing.
void cGraphicsLayer::LoadTextures( const std::string &root ) {
	cLog::Instance();
	if ( backend == nullptr ) {
		return;
	}
	ReleaseTextures();		// loading twice replaces the pictures rather than leaking them
	for ( const cTextureFile &file : TEXTURE_FILES ) {
		const std::string path = root + ( file.path + 1 );	// the table's paths start with "."
		textures[file.slot] = backend->LoadTexture( path.c_str(), file.useKey, CURSOR_KEY );
		if ( textures[file.slot] == nullptr ) {
			const std::string message = "Error loading picture " + path + ": " + backend->GetErrorText();
			cLog::Write( message.c_str() );
		}
	}
	// A tile code past the sheet's last whole tile is drawn as nothing.
	int32_t width = 0;
	int32_t height = 0;
	backend->GetTextureSize( textures[TEX_TILES], width, height );
	tileCount = height / CELL_SIZE;
	SetCachedTiles( cachedTiles );
}

// Where the device cannot draw into textures, every tile is drawn each frame: the same picture.
void cGraphicsLayer::SetCachedTiles( bool on ) {
	cachedTiles = on;
	if ( backend == nullptr ) {
		return;
	}
	if ( on ) {
		tileCache.Create( *backend );
	} else {
		tileCache.Release( *backend );
	}
}

void cGraphicsLayer::ReleaseTextures() {
	if ( backend != nullptr ) {
		tileCache.Release( *backend );
	}
	for ( cTexture *&texture : textures ) {
		if ( texture != nullptr && backend != nullptr ) {
			backend->ReleaseTexture( texture );
		}
		texture = nullptr;
	}
	tileCount = 0;
}

void cGraphicsLayer::Release() {
	if ( backend != nullptr ) {
		tileCache.Release( *backend );
		backend->ReleaseDevice();
		backend = nullptr;
	}
}

bool cGraphicsLayer::Render( int32_t screenShown, int32_t mouseX, int32_t mouseY, const cScene *scene, const tCharacterList *players,
							const tCharacterList *enemies, const tBulletList *bullets,
							const tExplosionList *explosions, const tItemList *items,
							const std::vector<cMenuText> *texts ) const {
	if ( backend == nullptr ) {
		return true;
	}
	backend->BeginFrame( CLEAR_COLOUR );
	eTexture screen;
	if ( GetScreenTexture( screenShown, screen ) ) {
		DrawScreen( screen );
		for ( size_t i = 0; texts != nullptr && i < texts->size(); i++ ) {
			const cMenuText &text = ( *texts )[i];
			backend->DrawText( text.text, static_cast<float>( text.x ), static_cast<float>( text.y ), text.colour );
		}
		DrawCursor( mouseX, mouseY );
	} else if ( ShowsWorld( screenShown ) && scene != nullptr && players != nullptr && enemies != nullptr &&
				bullets != nullptr && explosions != nullptr && items != nullptr ) {
		RenderWorld( *scene, *players, *enemies, *bullets, *explosions, *items );
		if ( screenShown == STATE_DEFEAT ) {
			DrawScreen( TEX_DEFEAT );
		} else if ( screenShown == STATE_VICTORY ) {
			DrawScreen( TEX_VICTORY );
		}
	}
	backend->EndFrame();
	return true;
}

void cGraphicsLayer::DrawScreen( eTexture which ) const {
	Draw( which, nullptr, 0.0f, 0.0f );
}

// The hot spot is the picture's top-left pixel.
void cGraphicsLayer::DrawCursor( int32_t mouseX, int32_t mouseY ) const {
	const cRect source = { 0, 0, CURSOR_SIZE, CURSOR_SIZE };
	Draw( TEX_CURSOR, &source, static_cast<float>( mouseX ), static_cast<float>( mouseY ) );
}

void cGraphicsLayer::Draw( eTexture which, const cRect *source, float x, float y, uint32_t tint ) const {
	if ( textures[which] != nullptr ) {
		backend->Draw( textures[which], source, x, y, tint );
	}
}
