// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/WaitingPicture.h"

namespace {

const int32_t SCREEN_WIDTH = 640;

}

bool cWaitingPicture::Show( bool show, int seconds ) {
	const bool changed = show != shown || seconds != lostSeconds;
	shown = show;
	lostSeconds = seconds;
	return changed;
}

void cWaitingPicture::DrawOver( cGraphicsBackend &frame, const std::vector<cTexture *> &pictures ) {
	if ( lostSeconds >= 0 && pictures[LOST] != nullptr ) {
		frame.Draw( pictures[LOST], nullptr, 0.0f, 0.0f, WHITE );
		DrawSeconds( frame, pictures[COUNTDOWN] );
	} else if ( shown && pictures[WAITING] != nullptr ) {
		frame.Draw( pictures[WAITING], nullptr, 0.0f, 0.0f, WHITE );
	}
}

// "N s", centred on the screen.
void cWaitingPicture::DrawSeconds( cGraphicsBackend &frame, cTexture *countdown ) const {
	int32_t width = 0;
	int32_t height = 0;
	if ( countdown == nullptr || !frame.GetTextureSize( countdown, width, height ) ) {
		return;
	}
	const int32_t cell = width / COUNTDOWN_GLYPHS;
	const std::string digits = std::to_string( lostSeconds );
	const int32_t total = static_cast<int32_t>( digits.size() + 1 ) * cell + cell / 2;
	float x = static_cast<float>( ( SCREEN_WIDTH - total ) / 2 );
	for ( size_t i = 0; i <= digits.size(); i++ ) {
		const int32_t glyph = i < digits.size() ? digits[i] - '0' : COUNTDOWN_GLYPHS - 1;
		x += i < digits.size() ? 0.0f : static_cast<float>( cell / 2 );
		const cRect source = { glyph * cell, 0, ( glyph + 1 ) * cell, height };
		frame.Draw( countdown, &source, x, static_cast<float>( COUNTDOWN_TOP ), WHITE );
		x += static_cast<float>( cell );
	}
}
