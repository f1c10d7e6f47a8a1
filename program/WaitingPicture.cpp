// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/WaitingPicture.h"

#include <string>

#include "log/Log.h"

namespace {

const uint32_t WHITE = 0xFFFFFFFF;
const int32_t SCREEN_WIDTH = 640;

}

bool cWaitingPicture::Show( bool show, int seconds ) {
	const bool changed = show != shown || seconds != lostSeconds;
	shown = show;
	lostSeconds = seconds;
	return changed;
}

// A missing picture is named in the log; the game waits all the same, without it.
cTexture *cWaitingPicture::Load( const char *file ) {
	const std::string path = dataRoot + file;
	cTexture *texture = platform.LoadTexture( path.c_str(), false, 0 );
	if ( texture == nullptr ) {
		cLog::Write( ( "Error loading picture " + path + ": " + platform.GetErrorText() ).c_str() );
	}
	return texture;
}

bool cWaitingPicture::CreateDevice( bool fullscreen ) {
	created = platform.CreateDevice( fullscreen );
	if ( created ) {
		picture = Load( FILE );
		lostPicture = Load( LOST_FILE );
		countdown = Load( COUNTDOWN_FILE );
	}
	return created;
}

void cWaitingPicture::ReleaseDevice() {
	for ( cTexture **texture : { &picture, &lostPicture, &countdown } ) {
		if ( *texture != nullptr ) {
			platform.ReleaseTexture( *texture );
			*texture = nullptr;
		}
	}
	if ( created ) {
		platform.ReleaseDevice();
		created = false;
	}
}

void cWaitingPicture::EndFrame() {
	if ( lostSeconds >= 0 && lostPicture != nullptr ) {
		platform.Draw( lostPicture, nullptr, 0.0f, 0.0f, WHITE );
		DrawSeconds();
	} else if ( shown && picture != nullptr ) {
		platform.Draw( picture, nullptr, 0.0f, 0.0f, WHITE );
	}
	platform.EndFrame();
}

// "N s", centred on the screen.
void cWaitingPicture::DrawSeconds() {
	int32_t width = 0;
	int32_t height = 0;
	if ( countdown == nullptr || !platform.GetTextureSize( countdown, width, height ) ) {
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
		platform.Draw( countdown, &source, x, static_cast<float>( COUNTDOWN_TOP ), WHITE );
		x += static_cast<float>( cell );
	}
}
