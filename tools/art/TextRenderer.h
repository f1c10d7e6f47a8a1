// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTextRenderer writes text into canvases with a DejaVu font, without anti-aliasing, so that the
// letters keep to the palette like the rest of the pictures.

#include "Canvas.h"

#include <string>

typedef struct _TTF_Font TTF_Font;

class cTextRenderer {
public:
					cTextRenderer();
					~cTextRenderer();
					cTextRenderer( const cTextRenderer & ) = delete;
	cTextRenderer &	operator=( const cTextRenderer & ) = delete;

	// fontFile is a file name under the DejaVu folder, size in pixels.
	bool			Open( const std::string &fontFile, int size );
	// A canvas the size of the text with the letters opaque in `argb`, the rest empty.
	cCanvas			Render( const std::string &text, uint32_t argb ) const;
	int				GetWidth( const std::string &text ) const;

private:
	TTF_Font *		font;
};
