// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/sdl/SdlGraphicsBackend.h"

#include <SDL_image.h>

#include <algorithm>
#include <cstring>

#include "graphics/ColourKey.h"
#include "platform/sdl/SdlWindow.h"
#include "world/Grid.h"

// The backend's texture is SDL's, under the name the layer knows, with the picture's size.
class cTexture {
public:
	SDL_Texture *	texture;
	int				width;			// in pixels
	int				height;
};

namespace {

// The largest picture the game accepts: the tile sheet, one column of tiles, is the tallest.
const uint32_t MAX_PICTURE_SIDE = 16384;					// in pixels
const uint64_t MAX_PICTURE_PIXELS = 16u * 1024u * 1024u;	// 64 MB once decoded to ARGB
const uint32_t WHITE = 0xFFFFFFFF;							// a tint that leaves the texels as they are

uint32_t ReadBigEndian( const Uint8 *bytes ) {
	return ( uint32_t( bytes[0] ) << 24 ) | ( uint32_t( bytes[1] ) << 16 ) | ( uint32_t( bytes[2] ) << 8 ) | bytes[3];
}

const size_t PNG_SIGNATURE_BYTES = 8;
const size_t PNG_CHUNK_HEAD_BYTES = 8;				// length, then name
const size_t PNG_CHUNK_CRC_BYTES = 4;
const uint32_t PNG_LARGEST_CHUNK = 0x7FFFFFFF;		// the format's own limit on a chunk's length

// Reads the size a PNG's header promises. A broken file of a few bytes can promise a picture of
// gigabytes, which the decoder would try to allocate.
bool HasSensiblePngSize( SDL_RWops *source, Sint64 start ) {
	Uint8 header[24];		// signature, then the IHDR chunk's length, name, width and height
	if ( SDL_RWseek( source, start, RW_SEEK_SET ) < 0 || SDL_RWread( source, header, 1, sizeof( header ) ) != sizeof( header ) ) {
		return false;
	}
	if ( SDL_memcmp( header + 12, "IHDR", 4 ) != 0 ) {
		return false;
	}
	const uint32_t width = ReadBigEndian( header + 16 );
	const uint32_t height = ReadBigEndian( header + 20 );
	return width <= MAX_PICTURE_SIDE && height <= MAX_PICTURE_SIDE && uint64_t( width ) * height <= MAX_PICTURE_PIXELS;
}

// Walks the chunks to the IEND chunk. A chunk that runs past the end of the file sends the PNG
// decoder into minutes of inflating what is not there, so such a file is refused before decoding.
bool HasWholePngChunks( SDL_RWops *source, Sint64 start ) {
	const Sint64 end = SDL_RWsize( source );
	Sint64 at = start + static_cast<Sint64>( PNG_SIGNATURE_BYTES );
	Uint8 head[PNG_CHUNK_HEAD_BYTES];
	while ( end >= 0 && at + static_cast<Sint64>( PNG_CHUNK_HEAD_BYTES + PNG_CHUNK_CRC_BYTES ) <= end ) {
		if ( SDL_RWseek( source, at, RW_SEEK_SET ) < 0 || SDL_RWread( source, head, 1, sizeof( head ) ) != sizeof( head ) ) {
			return false;
		}
		const uint32_t length = ReadBigEndian( head );
		if ( length > PNG_LARGEST_CHUNK ) {
			return false;
		}
		at += static_cast<Sint64>( PNG_CHUNK_HEAD_BYTES + PNG_CHUNK_CRC_BYTES + length );
		if ( at > end ) {
			return false;
		}
		if ( SDL_memcmp( head + 4, "IEND", 4 ) == 0 ) {
			return true;
		}
	}
	return false;
}

// Checks the file before the decoder sees it and puts the stream back where it was.
bool IsPngTheGameCanRead( SDL_RWops *source ) {
	const Sint64 start = SDL_RWtell( source );
	if ( start < 0 ) {
		return false;
	}
	const bool readable = HasSensiblePngSize( source, start ) && HasWholePngChunks( source, start );
	return SDL_RWseek( source, start, RW_SEEK_SET ) >= 0 && readable;
}

Uint8 Channel( uint32_t argb, int shift ) {
	return static_cast<Uint8>( ( argb >> shift ) & 0xFF );
}

// Cuts a source rectangle to the picture; the destination moves by what was cut off at the left
// and the top, so that what remains lands where it would have been. False when nothing remains.
bool ClipToPicture( const cRect &source, int width, int height, SDL_Rect &clipped, float &x, float &y ) {
	const int64_t left = std::max<int64_t>( source.left, 0 );
	const int64_t top = std::max<int64_t>( source.top, 0 );
	const int64_t right = std::min<int64_t>( source.right, width );
	const int64_t bottom = std::min<int64_t>( source.bottom, height );
	if ( right <= left || bottom <= top ) {
		return false;
	}
	x += static_cast<float>( left - source.left );
	y += static_cast<float>( top - source.top );
	clipped = { static_cast<int>( left ), static_cast<int>( top ), static_cast<int>( right - left ),
				static_cast<int>( bottom - top ) };
	return true;
}

// OpenGL drawn by the processor (Mesa's llvmpipe, softpipe or swrast: under Xvfb, or without a
// graphics driver) shades every pixel through compiled shaders at several times the cost of SDL's
// own software renderer for the same picture.
bool IsSoftwareOpenGl( SDL_Renderer *renderer ) {
	SDL_RendererInfo info;
	if ( SDL_GetRendererInfo( renderer, &info ) != 0 || std::strncmp( info.name, "opengl", 6 ) != 0 ) {
		return false;
	}
	typedef const unsigned char *( *tGetString )( unsigned int );
	const unsigned int GL_RENDERER_NAME = 0x1F01;		// GL_RENDERER
	const tGetString getString = reinterpret_cast<tGetString>( SDL_GL_GetProcAddress( "glGetString" ) );
	const unsigned char *name = getString != nullptr ? getString( GL_RENDERER_NAME ) : nullptr;
	if ( name == nullptr ) {
		return false;
	}
	const std::string text = reinterpret_cast<const char *>( name );
	for ( const char *rasteriser : { "llvmpipe", "softpipe", "Software Rasterizer" } ) {
		if ( text.find( rasteriser ) != std::string::npos ) {
			return true;
		}
	}
	return false;
}

bool IsDrawnByProcessor( SDL_Renderer *renderer ) {
	SDL_RendererInfo info;
	return SDL_GetRendererInfo( renderer, &info ) != 0 || ( info.flags & SDL_RENDERER_SOFTWARE ) != 0 ||
		   IsSoftwareOpenGl( renderer );
}

}

cSdlGraphicsBackend::cSdlGraphicsBackend( const cSdlWindow &gameWindow ) : window( &gameWindow ) {
}

cSdlGraphicsBackend::cSdlGraphicsBackend( SDL_Surface *surface, bool scaleFrameOnce )
	: target( surface ), scaleOnce( scaleFrameOnce ) {
}

cSdlGraphicsBackend::~cSdlGraphicsBackend() {
	ReleaseDevice();
}

bool cSdlGraphicsBackend::Fail( const char *call ) {
	errorCode = std::string( call ) + " failed";
	errorText = SDL_GetError();
	return false;
}

bool cSdlGraphicsBackend::CreateDevice( bool ) {
	if ( target != nullptr ) {
		if ( !scaleOnce || !CreateProcessorFrame( target ) ) {
			renderer = SDL_CreateSoftwareRenderer( target );
		}
	} else if ( window != nullptr && window->GetWindow() != nullptr ) {
		renderer = SDL_CreateRenderer( window->GetWindow(), -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC );
		// Unless SDL_RENDER_DRIVER names one, a renderer drawn by the processor (SDL's software one,
		// or OpenGL drawn by the processor) gives way to the game's own frame, scaled into the
		// window's surface, which goes to the window through X's shared memory.
		if ( renderer == nullptr || ( SDL_GetHint( SDL_HINT_RENDER_DRIVER ) == nullptr && IsDrawnByProcessor( renderer ) ) ) {
			if ( renderer != nullptr ) {
				SDL_DestroyRenderer( renderer );
				renderer = nullptr;
			}
			SDL_SetHint( SDL_HINT_FRAMEBUFFER_ACCELERATION, "0" );
			CreateProcessorFrame( SDL_GetWindowSurface( window->GetWindow() ) );
		}
		if ( renderer == nullptr ) {
			renderer = SDL_CreateRenderer( window->GetWindow(), -1, SDL_RENDERER_SOFTWARE );
		}
	}
	if ( renderer == nullptr ) {
		return Fail( "SDL_CreateRenderer()" );
	}
	drawnByProcessor = IsDrawnByProcessor( renderer );
	if ( processorFrame == nullptr && !CreateFrame() && SDL_RenderSetLogicalSize( renderer, VIEW_WIDTH, VIEW_HEIGHT ) != 0 ) {
		return Fail( "SDL_RenderSetLogicalSize()" );
	}
	// The window waited hidden until now: making the renderer may have made SDL replace it.
	if ( window != nullptr ) {
		SDL_ShowWindow( window->GetWindow() );
	}
	return true;
}

// The frame as a surface of the output's pixel format, and SDL's software renderer drawing into it.
bool cSdlGraphicsBackend::CreateProcessorFrame( SDL_Surface *output ) {
	if ( output == nullptr || output->format->BytesPerPixel != 4 ) {
		return false;
	}
	processorFrame = SDL_CreateRGBSurfaceWithFormat( 0, VIEW_WIDTH, VIEW_HEIGHT, 32, output->format->format );
	renderer = processorFrame != nullptr ? SDL_CreateSoftwareRenderer( processorFrame ) : nullptr;
	if ( renderer == nullptr ) {
		SDL_FreeSurface( processorFrame );
		processorFrame = nullptr;
	}
	return renderer != nullptr;
}

// Without a frame texture every draw is scaled by the renderer's logical size instead, pixel for
// pixel the same picture at 1x.
bool cSdlGraphicsBackend::CreateFrame() {
	if ( !scaleOnce || !SDL_RenderTargetSupported( renderer ) ) {
		return false;
	}
	frame = SDL_CreateTexture( renderer, GetFramePixelFormat(), SDL_TEXTUREACCESS_TARGET, VIEW_WIDTH, VIEW_HEIGHT );
	if ( frame == nullptr || SDL_SetRenderTarget( renderer, frame ) != 0 ) {
		if ( frame != nullptr ) {
			SDL_DestroyTexture( frame );
			frame = nullptr;
		}
		return false;
	}
	SDL_SetTextureBlendMode( frame, SDL_BLENDMODE_NONE );
	return true;
}

void cSdlGraphicsBackend::ReleaseDevice() {
	textWriter.Forget();
	if ( frame != nullptr ) {
		SDL_DestroyTexture( frame );
		frame = nullptr;
	}
	if ( renderer != nullptr ) {
		SDL_DestroyRenderer( renderer );
		renderer = nullptr;
	}
	SDL_FreeSurface( processorFrame );		// after its renderer
	processorFrame = nullptr;
}

SDL_Surface *cSdlGraphicsBackend::LoadKeyedSurface( const char *path, bool useKey, uint32_t colourKey ) {
	SDL_RWops *source = SDL_RWFromFile( path, "rb" );
	if ( source == nullptr ) {
		return nullptr;
	}
	return LoadKeyedSurface( source, useKey, colourKey );
}

// Takes the stream over and closes it. Only the PNG decoder is asked: every picture of the game is
// a PNG, and a file is then never handed to SDL_image's other decoders, whose GIF reader crashes on
// some broken files. A header that promises a giant picture, or a file cut short, is refused
// before decoding.
SDL_Surface *cSdlGraphicsBackend::LoadKeyedSurface( SDL_RWops *source, bool useKey, uint32_t colourKey ) {
	if ( source == nullptr ) {
		return nullptr;
	}
	if ( !IsPngTheGameCanRead( source ) ) {
		SDL_RWclose( source );
		SDL_SetError( "the picture is not a whole PNG of a size the game can use" );
		return nullptr;
	}
	SDL_Surface *loaded = IMG_LoadPNG_RW( source );
	SDL_RWclose( source );
	if ( loaded == nullptr ) {
		return nullptr;
	}
	SDL_Surface *argb = SDL_ConvertSurfaceFormat( loaded, SDL_PIXELFORMAT_ARGB8888, 0 );
	SDL_FreeSurface( loaded );
	if ( argb == nullptr ) {
		return nullptr;
	}
	if ( useKey && SDL_LockSurface( argb ) == 0 ) {
		for ( int row = 0; row < argb->h; row++ ) {
			uint32_t *pixels = reinterpret_cast<uint32_t *>( static_cast<Uint8 *>( argb->pixels ) + row * argb->pitch );
			ApplyColourKey( pixels, static_cast<size_t>( argb->w ), colourKey );
		}
		SDL_UnlockSurface( argb );
	}
	return argb;
}

cTexture *cSdlGraphicsBackend::LoadTexture( const char *path, bool useKey, uint32_t colourKey ) {
	if ( renderer == nullptr ) {
		Fail( "LoadTexture()" );
		return nullptr;
	}
	SDL_Surface *surface = LoadKeyedSurface( path, useKey, colourKey );
	if ( surface == nullptr ) {
		Fail( "IMG_Load()" );
		return nullptr;
	}
	const int width = surface->w;
	const int height = surface->h;
	SDL_Texture *texture = SDL_CreateTextureFromSurface( renderer, surface );
	SDL_FreeSurface( surface );
	if ( texture == nullptr ) {
		Fail( "SDL_CreateTextureFromSurface()" );
		return nullptr;
	}
	return new cTexture { texture, width, height };
}

bool cSdlGraphicsBackend::GetTextureSize( const cTexture *texture, int32_t &width, int32_t &height ) const {
	width = texture != nullptr ? texture->width : 0;
	height = texture != nullptr ? texture->height : 0;
	return texture != nullptr;
}

void cSdlGraphicsBackend::ReleaseTexture( cTexture *texture ) {
	if ( texture != nullptr ) {
		SDL_DestroyTexture( texture->texture );
		delete texture;
	}
}

void cSdlGraphicsBackend::BeginFrame( uint32_t clearColour ) {
	if ( renderer == nullptr ) {
		return;
	}
	SDL_SetRenderTarget( renderer, frame );
	SDL_SetRenderDrawColor( renderer, Channel( clearColour, 16 ), Channel( clearColour, 8 ),
							Channel( clearColour, 0 ), Channel( clearColour, 24 ) );
	SDL_RenderClear( renderer );
}

void cSdlGraphicsBackend::DrawText( const std::string &text, float x, float y, uint32_t colour ) {
	textWriter.Write( renderer, text, x, y, colour );
}

void cSdlGraphicsBackend::Draw( cTexture *texture, const cRect *source, float x, float y, uint32_t tint ) {
	if ( texture != nullptr ) {
		const cRect whole = { 0, 0, texture->width, texture->height };
		Blit( texture, source != nullptr ? *source : whole, x, y, tint, SDL_BLENDMODE_BLEND );
	}
}

void cSdlGraphicsBackend::Copy( cTexture *texture, const cRect &source, float x, float y ) {
	Blit( texture, source, x, y, WHITE, SDL_BLENDMODE_NONE );
}

void cSdlGraphicsBackend::Blit( cTexture *texture, const cRect &source, float x, float y, uint32_t tint,
								SDL_BlendMode blend ) {
	if ( renderer == nullptr || texture == nullptr ) {
		return;
	}
	SDL_Rect sourceRect;
	if ( !ClipToPicture( source, texture->width, texture->height, sourceRect, x, y ) ) {
		return;
	}
	const SDL_FRect destination = { x, y, static_cast<float>( sourceRect.w ), static_cast<float>( sourceRect.h ) };
	SDL_SetTextureBlendMode( texture->texture, blend );
	SDL_SetTextureColorMod( texture->texture, Channel( tint, 16 ), Channel( tint, 8 ), Channel( tint, 0 ) );
	SDL_SetTextureAlphaMod( texture->texture, Channel( tint, 24 ) );
	SDL_RenderCopyF( renderer, texture->texture, &sourceRect, &destination );
}

// The window's, or the off-screen surface's.
Uint32 cSdlGraphicsBackend::GetFramePixelFormat() const {
	if ( processorFrame != nullptr ) {
		return processorFrame->format->format;
	}
	return target != nullptr ? target->format->format : SDL_GetWindowPixelFormat( window->GetWindow() );
}

cTexture *cSdlGraphicsBackend::CreateTargetTexture( int32_t width, int32_t height, bool withAlpha ) {
	if ( renderer == nullptr || !SDL_RenderTargetSupported( renderer ) ) {
		Fail( "SDL_RenderTargetSupported()" );
		return nullptr;
	}
	const Uint32 format = withAlpha ? static_cast<Uint32>( SDL_PIXELFORMAT_ARGB8888 ) : GetFramePixelFormat();
	SDL_Texture *texture = SDL_CreateTexture( renderer, format, SDL_TEXTUREACCESS_TARGET, width, height );
	if ( texture == nullptr ) {
		Fail( "SDL_CreateTexture()" );
		return nullptr;
	}
	return new cTexture { texture, width, height };
}

bool cSdlGraphicsBackend::SetTarget( cTexture *texture ) {
	if ( renderer == nullptr || SDL_SetRenderTarget( renderer, texture != nullptr ? texture->texture : frame ) != 0 ) {
		return Fail( "SDL_SetRenderTarget()" );
	}
	return true;
}

void cSdlGraphicsBackend::Fill( const cRect &area, uint32_t colour ) {
	if ( renderer == nullptr ) {
		return;
	}
	const SDL_Rect rect = { area.left, area.top, area.GetWidth(), area.GetHeight() };
	SDL_SetRenderDrawBlendMode( renderer, SDL_BLENDMODE_NONE );
	SDL_SetRenderDrawColor( renderer, Channel( colour, 16 ), Channel( colour, 8 ), Channel( colour, 0 ),
							Channel( colour, 24 ) );
	SDL_RenderFillRect( renderer, &rect );
}

void cSdlGraphicsBackend::EndFrame() {
	if ( renderer == nullptr ) {
		return;
	}
	if ( processorFrame != nullptr ) {
		PresentProcessorFrame();
		return;
	}
	if ( frame != nullptr ) {
		PresentFrame();
	}
	SDL_RenderPresent( renderer );
}

// The output is the off-screen surface or the window's, whose size follows the window's. SDL's
// stretch stands in for the game's own scaling only if the window's surface changed its format.
void cSdlGraphicsBackend::PresentProcessorFrame() {
	SDL_Surface *output = target != nullptr ? target : SDL_GetWindowSurface( window->GetWindow() );
	if ( output == nullptr ) {
		return;
	}
	SDL_Rect picture = cSdlWindow::FitPicture( output->w, output->h );
	const Uint32 black = SDL_MapRGB( output->format, 0, 0, 0 );
	if ( output->format->format == processorFrame->format->format && SDL_LockSurface( output ) == 0 ) {
		scaler.Scale( *processorFrame, *output, picture, black );
		SDL_UnlockSurface( output );
	} else {
		SDL_FillRect( output, nullptr, black );
		SDL_BlitScaled( processorFrame, nullptr, output, &picture );
	}
	if ( target == nullptr ) {
		SDL_UpdateWindowSurface( window->GetWindow() );
	}
}

// The frame, scaled to the largest 4:3 picture that fits, black bars around it when it does not
// fill the output. A whole multiple of 640 x 480 is sampled nearest, each pixel a sharp square.
// Between whole multiples (full screen on most desktops) nearest sampling would make some rows
// and columns of pixels a pixel wider than others, which shows as shimmer when the view scrolls,
// so there the picture is filtered linearly, one pass over the output, where a graphics card does
// it for nothing. SDL's software renderer filters on the processor at several times the cost of
// nearest sampling: there nearest stays, uneven pixels and all.
void cSdlGraphicsBackend::PresentFrame() {
	int width = VIEW_WIDTH;
	int height = VIEW_HEIGHT;
	SDL_SetRenderTarget( renderer, nullptr );
	SDL_GetRendererOutputSize( renderer, &width, &height );
	const SDL_Rect picture = cSdlWindow::FitPicture( width, height );
	// Only the bars are filled: a full clear would write every pixel of the output twice.
	const int right = picture.x + picture.w;
	const int bottom = picture.y + picture.h;
	const SDL_Rect bars[] = {
		{ 0, 0, picture.x, height }, { right, 0, width - right, height },
		{ 0, 0, width, picture.y }, { 0, bottom, width, height - bottom },
	};
	SDL_SetRenderDrawBlendMode( renderer, SDL_BLENDMODE_NONE );
	SDL_SetRenderDrawColor( renderer, 0, 0, 0, 0xFF );
	SDL_RenderFillRects( renderer, bars, SDL_arraysize( bars ) );
	const bool wholeMultiple = picture.w % VIEW_WIDTH == 0 && picture.h % VIEW_HEIGHT == 0;
	SDL_SetTextureScaleMode( frame, wholeMultiple || drawnByProcessor ? SDL_ScaleModeNearest : SDL_ScaleModeLinear );
	SDL_RenderCopy( renderer, frame, nullptr, &picture );
}
