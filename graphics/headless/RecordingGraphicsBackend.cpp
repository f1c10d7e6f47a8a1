#include "graphics/headless/RecordingGraphicsBackend.h"

#include <algorithm>

// A recorded texture is its file's name and the size the test gave it.
class cTexture {
public:
	std::string		path;
	int32_t			width;
	int32_t			height;
};

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
	if ( !recording || texture == nullptr ) {
		return;
	}
	cDrawCall call;
	call.path = texture->path;
	call.wholeTexture = source == nullptr;
	call.source = source != nullptr ? *source : cRect();
	call.x = x;
	call.y = y;
	call.tint = tint;
	draws.push_back( call );
}
