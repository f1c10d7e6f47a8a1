// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/headless/RecordingGraphicsBackend.h"

#include <algorithm>

// A recorded texture is its file's name and the size the test gave it.
class cTexture {
public:
	std::string		path;
	int32_t			width;
	int32_t			height;
};

const char *const cRecordingGraphicsBackend::FILL = "fill";
const char *const cRecordingGraphicsBackend::TEXT = "text:";

cRecordingGraphicsBackend::~cRecordingGraphicsBackend() = default;

bool cRecordingGraphicsBackend::CreateDevice( bool fullscreen ) {
	fullscreenAsked = fullscreen;
	deviceReady = !failDevice;
	return deviceReady;
}

cTexture *cRecordingGraphicsBackend::LoadTexture( const char *path, bool, uint32_t ) {
	if ( std::find( missing.begin(), missing.end(), path ) != missing.end() ) {
		return nullptr;
	}
	liveTextures++;
	const auto size = sizes.find( path );
	if ( size == sizes.end() ) {
		return new cTexture { path, DEFAULT_TEXTURE_SIZE, DEFAULT_TEXTURE_SIZE };
	}
	return new cTexture { path, size->second.first, size->second.second };
}

void cRecordingGraphicsBackend::SetTextureSize( const std::string &path, int32_t width, int32_t height ) {
	sizes[path] = std::make_pair( width, height );
}

bool cRecordingGraphicsBackend::GetTextureSize( const cTexture *texture, int32_t &width, int32_t &height ) const {
	width = texture != nullptr ? texture->width : 0;
	height = texture != nullptr ? texture->height : 0;
	return texture != nullptr;
}

void cRecordingGraphicsBackend::ReleaseTexture( cTexture *texture ) {
	if ( texture != nullptr ) {
		liveTextures--;
		delete texture;
	}
}

void cRecordingGraphicsBackend::BeginFrame( uint32_t ) {
	draws.clear();
}

void cRecordingGraphicsBackend::Draw( cTexture *texture, const cRect *source, float x, float y, uint32_t tint ) {
	if ( texture != nullptr ) {
		Record( texture->path, source, x, y, tint, true );
	}
}

void cRecordingGraphicsBackend::Copy( cTexture *texture, const cRect &source, float x, float y ) {
	if ( texture != nullptr ) {
		Record( texture->path, &source, x, y, 0xFFFFFFFF, false );
	}
}

void cRecordingGraphicsBackend::DrawText( const std::string &text, float x, float y, uint32_t colour ) {
	Record( TEXT + text, nullptr, x, y, colour, true );
}

std::vector<std::string> cRecordingGraphicsBackend::GetTexts() const {
	std::vector<std::string> texts;
	const std::string prefix = TEXT;
	for ( const cDrawCall &draw : draws ) {
		if ( draw.path.compare( 0, prefix.size(), prefix ) == 0 ) {
			texts.push_back( draw.path.substr( prefix.size() ) );
		}
	}
	return texts;
}

void cRecordingGraphicsBackend::Fill( const cRect &area, uint32_t colour ) {
	Record( FILL, &area, static_cast<float>( area.left ), static_cast<float>( area.top ), colour, false );
}

void cRecordingGraphicsBackend::Record( const std::string &path, const cRect *source, float x, float y, uint32_t tint,
										bool blend ) {
	if ( !recording ) {
		return;
	}
	cDrawCall call;
	call.path = path;
	call.wholeTexture = source == nullptr;
	call.source = source != nullptr ? *source : cRect();
	call.x = x;
	call.y = y;
	call.tint = tint;
	call.blend = blend;
	call.target = target;
	draws.push_back( call );
}

// A target is named by its size and kind: "target 1920x2400", "target 1920x2400 with alpha".
cTexture *cRecordingGraphicsBackend::CreateTargetTexture( int32_t width, int32_t height, bool withAlpha ) {
	if ( !targetTextures ) {
		return nullptr;
	}
	liveTextures++;
	const std::string name = "target " + std::to_string( width ) + "x" + std::to_string( height );
	return new cTexture { withAlpha ? name + " with alpha" : name, width, height };
}

bool cRecordingGraphicsBackend::SetTarget( cTexture *texture ) {
	target = texture != nullptr ? texture->path : std::string();
	return targetTextures;
}
