// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/sdl/SdlTextWriter.h"

#include "log/Log.h"

const char *const cSdlTextWriter::FONT_FILE = KMVT_FONT_FILE;

cSdlTextWriter::~cSdlTextWriter() {
	Forget();
	if ( font != nullptr ) {
		TTF_CloseFont( font );
		TTF_Quit();
	}
}

bool cSdlTextWriter::Open() {
	if ( tried ) {
		return font != nullptr;
	}
	tried = true;
	if ( TTF_Init() != 0 ) {
		cLog::Write( ( std::string( "Text unavailable, key names not shown: " ) + TTF_GetError() ).c_str() );
		return false;
	}
	font = TTF_OpenFont( fontFile.c_str(), POINT_SIZE );
	if ( font == nullptr ) {
		cLog::Write( ( "Font " + fontFile + " not found, key names not shown: " + TTF_GetError() ).c_str() );
		TTF_Quit();
		return false;
	}
	return true;
}

void cSdlTextWriter::Forget() {
	for ( const auto &line : lines ) {
		SDL_DestroyTexture( line.second );
	}
	lines.clear();
}

SDL_Texture *cSdlTextWriter::Make( SDL_Renderer *renderer, const std::string &text, uint32_t colour ) {
	const SDL_Color ink = { static_cast<Uint8>( colour >> 16 ), static_cast<Uint8>( colour >> 8 ),
							static_cast<Uint8>( colour ), static_cast<Uint8>( colour >> 24 ) };
	SDL_Surface *surface = TTF_RenderUTF8_Blended( font, text.c_str(), ink );
	if ( surface == nullptr ) {
		return nullptr;
	}
	SDL_Texture *texture = SDL_CreateTextureFromSurface( renderer, surface );
	SDL_FreeSurface( surface );
	return texture;
}

void cSdlTextWriter::Write( SDL_Renderer *renderer, const std::string &text, float x, float y, uint32_t colour ) {
	if ( renderer == nullptr || text.empty() || !Open() ) {
		return;
	}
	const auto key = std::make_pair( text, colour );
	auto line = lines.find( key );
	if ( line == lines.end() ) {
		if ( lines.size() >= KEPT_LINES ) {
			Forget();
		}
		line = lines.emplace( key, Make( renderer, text, colour ) ).first;
	}
	int width = 0;
	int height = 0;
	if ( line->second == nullptr || SDL_QueryTexture( line->second, nullptr, nullptr, &width, &height ) != 0 ) {
		return;
	}
	const SDL_FRect place = { x, y, static_cast<float>( width ), static_cast<float>( height ) };
	SDL_RenderCopyF( renderer, line->second, nullptr, &place );
}
