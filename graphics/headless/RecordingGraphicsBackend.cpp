#include "graphics/headless/RecordingGraphicsBackend.h"

#include <algorithm>

// A recorded texture is its file's name.
class cTexture {
public:
	std::string		path;
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
	return new cTexture { path };
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
