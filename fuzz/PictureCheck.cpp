// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/InputChecks.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>

#include "graphics/GraphicsLayer.h"
#include "graphics/sdl/SdlGraphicsBackend.h"

namespace {

const uint32_t KEY = cGraphicsLayer::CURSOR_KEY;
// in bytes: 2048 x 2048 ARGB pixels, far above the game's largest picture (640 x 480)
const size_t LARGEST_SDL_ALLOCATION = size_t( 16 ) << 20;

// A picture file may announce any size, and the decoders allocate what it announces. SDL's
// allocations are refused above the ceiling, as a machine without the memory would refuse them,
// so that a hostile size costs no time or memory here, and the loader must cope with the failure.
void *MallocBelowCeiling( size_t size ) {
	return size > LARGEST_SDL_ALLOCATION ? nullptr : std::malloc( size );
}

void *CallocBelowCeiling( size_t count, size_t size ) {
	return size != 0 && count > LARGEST_SDL_ALLOCATION / size ? nullptr : std::calloc( count, size );
}

void *ReallocBelowCeiling( void *memory, size_t size ) {
	return size > LARGEST_SDL_ALLOCATION ? nullptr : std::realloc( memory, size );
}

// SDL must get its allocator before it allocates anything, and the ceiling's functions hand out
// and take back the same memory as SDL's own, so what SDL allocated before is freed alike.
void SetSdlAllocationCeiling() {
	static const bool set = SDL_SetMemoryFunctions( MallocBelowCeiling, CallocBelowCeiling, ReallocBelowCeiling, std::free ) == 0;
	( void )set;
}

// Frees the surface when the check returns, whichever rule it stops at.
struct cSurfaceHolder {
	explicit		cSurfaceHolder( SDL_Surface *held ) : surface( held ) {}
					~cSurfaceHolder() { SDL_FreeSurface( surface ); }
					cSurfaceHolder( const cSurfaceHolder & ) = delete;
	cSurfaceHolder &operator=( const cSurfaceHolder & ) = delete;
	SDL_Surface *	surface;
};

SDL_Surface *LoadFromMemory( const uint8_t *data, size_t size, bool useKey ) {
	SDL_RWops *source = SDL_RWFromConstMem( data, static_cast<int>( size ) );
	if ( source == nullptr ) {
		return nullptr;
	}
	return cSdlGraphicsBackend::LoadKeyedSurface( source, useKey, KEY );
}

// The first pixel, in reading order, where the keyed picture is not the plain one with every pixel
// equal to the key turned transparent black; false when there is none. The scan runs over
// surfaces whose sizes were checked, and without the sanitizers' checks on every pixel, which
// would make a large picture take seconds.
__attribute__(( no_sanitize( "address", "undefined" ) ))
bool FindWrongKeyedPixel( const SDL_Surface *plain, const SDL_Surface *keyed, int &x, int &y, uint32_t &before, uint32_t &after ) {
	for ( y = 0; y < plain->h; y++ ) {
		const uint32_t *plainRow = reinterpret_cast<const uint32_t *>( static_cast<const uint8_t *>( plain->pixels ) + y * plain->pitch );
		const uint32_t *keyedRow = reinterpret_cast<const uint32_t *>( static_cast<const uint8_t *>( keyed->pixels ) + y * keyed->pitch );
		for ( x = 0; x < plain->w; x++ ) {
			before = plainRow[x];
			after = keyedRow[x];
			if ( after != ( before == KEY ? 0u : before ) ) {
				return true;
			}
		}
	}
	return false;
}

// Only a pixel equal to the key in all four channels turns transparent black.
std::string FindBrokenKeyRule( SDL_Surface *plain, SDL_Surface *keyed ) {
	if ( SDL_LockSurface( plain ) != 0 || SDL_LockSurface( keyed ) != 0 ) {
		return "a loaded picture cannot be locked";
	}
	std::string broken;
	int x = 0;
	int y = 0;
	uint32_t before = 0;
	uint32_t after = 0;
	if ( FindWrongKeyedPixel( plain, keyed, x, y, before, after ) ) {
		char text[128];
		std::snprintf( text, sizeof( text ), "pixel (%d, %d) is 0x%08X keyed where it is 0x%08X plain", x, y,
					   static_cast<unsigned>( after ), static_cast<unsigned>( before ) );
		broken = text;
	}
	SDL_UnlockSurface( keyed );
	SDL_UnlockSurface( plain );
	return broken;
}

std::string FindBrokenShapeRule( const SDL_Surface *plain, const SDL_Surface *keyed ) {
	if ( plain->format->format != SDL_PIXELFORMAT_ARGB8888 || keyed->format->format != SDL_PIXELFORMAT_ARGB8888 ) {
		return "a loaded picture is not ARGB8888";
	}
	if ( plain->w != keyed->w || plain->h != keyed->h ) {
		return "keying changed the picture's size";
	}
	if ( plain->w < 0 || plain->h < 0 || plain->pitch < plain->w * 4 || keyed->pitch < keyed->w * 4 ) {
		return "a loaded picture has rows shorter than its width";
	}
	return std::string();
}

}

std::string CheckPicture( const uint8_t *data, size_t size ) {
	SetSdlAllocationCeiling();
	cSurfaceHolder plain( LoadFromMemory( data, size, false ) );
	cSurfaceHolder keyed( LoadFromMemory( data, size, true ) );
	if ( ( plain.surface == nullptr ) != ( keyed.surface == nullptr ) ) {
		return "the picture loads only with or only without the colour key";
	}
	if ( plain.surface == nullptr ) {
		return std::string();
	}
	const std::string broken = FindBrokenShapeRule( plain.surface, keyed.surface );
	return broken.empty() ? FindBrokenKeyRule( plain.surface, keyed.surface ) : broken;
}
