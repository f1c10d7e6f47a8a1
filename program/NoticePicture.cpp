// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/NoticePicture.h"

#include <algorithm>

bool cNoticePicture::Show( const std::string &shown ) {
	const bool changed = shown != text;
	text = shown;
	return changed;
}

std::vector<std::string> cNoticePicture::Wrap( const std::string &text, size_t columns ) {
	std::vector<std::string> lines;
	std::string line;
	size_t at = 0;
	while ( columns > 0 && at < text.size() ) {
		const size_t space = text.find( ' ', at );
		std::string word = text.substr( at, space == std::string::npos ? std::string::npos : space - at );
		at = space == std::string::npos ? text.size() : space + 1;
		if ( !line.empty() && line.size() + 1 + word.size() > columns ) {
			lines.push_back( line );
			line.clear();
		}
		for ( ; word.size() > columns; word.erase( 0, columns ) ) {
			lines.push_back( word.substr( 0, columns ) );
		}
		line += ( line.empty() ? "" : " " ) + word;
	}
	if ( !line.empty() ) {
		lines.push_back( line );
	}
	return lines;
}

// Each line centred, the last one at the foot of the screen; a character the sheet lacks shows as '?'.
void cNoticePicture::DrawOver( cGraphicsBackend &frame, const std::vector<cTexture *> &pictures ) {
	cTexture *picture = pictures[0];
	int32_t sheetWidth = 0, sheetHeight = 0;
	if ( picture == nullptr || text.empty() || !frame.GetTextureSize( picture, sheetWidth, sheetHeight ) ) {
		return;
	}
	const int width = sheetWidth / COLUMNS;
	const int height = sheetHeight / ROWS;
	if ( width == 0 || height == 0 ) {
		return;
	}
	const std::vector<std::string> lines = Wrap( text, static_cast<size_t>( ( SCREEN_WIDTH - 2 * MARGIN ) / width ) );
	const int last = FIRST + COLUMNS * ROWS - 1;
	const auto cell = [&]( int index ) {
		cRect source;
		source.left = index % COLUMNS * width;
		source.top = index / COLUMNS * height;
		source.right = source.left + width;
		source.bottom = source.top + height;
		return source;
	};
	const cRect band = cell( last - FIRST );
	int y = SCREEN_HEIGHT - MARGIN - static_cast<int>( lines.size() ) * height;
	for ( const std::string &line : lines ) {
		int x = ( SCREEN_WIDTH - static_cast<int>( line.size() ) * width ) / 2;
		for ( const char character : line ) {
			const int code = static_cast<unsigned char>( character );
			const cRect glyph = cell( ( code < FIRST || code >= last ? '?' : code ) - FIRST );
			frame.Draw( picture, &band, static_cast<float>( x ), static_cast<float>( y ), WHITE );
			frame.Draw( picture, &glyph, static_cast<float>( x ), static_cast<float>( y ), WHITE );
			x += width;
		}
		y += height;
	}
}
