// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cSdlTextWriter writes lines of UTF-8 text with SDL_ttf in the system's DejaVu Sans, the font of
// the menus' labels: every name a keyboard layout gives a key shows, accented Latin letters and
// all. The font opens at the first line; a font that cannot open costs one log line, and the
// lines are then left out. Lines drawn once are kept as textures while the screen shows them.

#include <SDL.h>
#include <SDL_ttf.h>

#include <map>
#include <string>
#include <utility>

class cSdlTextWriter {
public:
	static const int	POINT_SIZE = 13;
	static const size_t	KEPT_LINES = 64;	// a screen's worth; more, and all are made again

	static const char *const FONT_FILE;		// Debian's fonts-dejavu-core, unless the build names another

	explicit			cSdlTextWriter( const char *fontFile = FONT_FILE ) : fontFile( fontFile ) {}
						~cSdlTextWriter();
						cSdlTextWriter( const cSdlTextWriter & ) = delete;
	cSdlTextWriter &	operator=( const cSdlTextWriter & ) = delete;

	void				Write( SDL_Renderer *renderer, const std::string &text, float x, float y, uint32_t colour );
	// The renderer goes: its textures with it.
	void				Forget();

private:
	bool				Open();
	SDL_Texture *		Make( SDL_Renderer *renderer, const std::string &text, uint32_t colour );

	std::string			fontFile;
	TTF_Font *			font = nullptr;
	bool				tried = false;
	std::map<std::pair<std::string, uint32_t>, SDL_Texture *> lines;
};
