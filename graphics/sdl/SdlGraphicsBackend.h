// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The drawing over SDL's 2-D renderer: the game's window (accelerated with vsync where the machine
// has a graphics card, SDL's software renderer otherwise, OpenGL drawn by the processor included)
// or an off-screen surface for tests and benchmarks. A frame is drawn at 640 x 480 into a picture
// of its own and scaled to the window or the surface in one copy when it is presented, so that a
// bigger window costs one scaled copy a frame rather than a scaled draw of every picture: on a
// graphics card the picture is a texture; drawn by the processor it is a surface of SDL's software
// renderer, scaled by the game itself into the window's own surface.

#include <SDL.h>

#include <string>

#include "graphics/GraphicsBackend.h"
#include "graphics/sdl/FrameScaler.h"
#include "graphics/sdl/SdlTextWriter.h"

class cSdlWindow;

class cSdlGraphicsBackend : public cGraphicsBackend {
public:
	explicit		cSdlGraphicsBackend( const cSdlWindow &window );
	// Off-screen, software; target not owned. Without scaleOnce, every draw goes straight onto it.
	explicit		cSdlGraphicsBackend( SDL_Surface *target, bool scaleOnce = true );
					~cSdlGraphicsBackend() override;

	bool			CreateDevice( bool fullscreen ) override;
	void			ReleaseDevice() override;
	cTexture *		LoadTexture( const char *path, bool useKey, uint32_t colourKey ) override;
	void			ReleaseTexture( cTexture *texture ) override;
	bool			GetTextureSize( const cTexture *texture, int32_t &width, int32_t &height ) const override;
	void			BeginFrame( uint32_t clearColour ) override;
	void			Draw( cTexture *texture, const cRect *source, float x, float y, uint32_t tint ) override;
	void			EndFrame() override;
	void			DrawText( const std::string &text, float x, float y, uint32_t colour ) override;
	cTexture *		CreateTargetTexture( int32_t width, int32_t height, bool withAlpha ) override;
	bool			SetTarget( cTexture *target ) override;
	void			Fill( const cRect &area, uint32_t colour ) override;
	void			Copy( cTexture *texture, const cRect &source, float x, float y ) override;
	const char *	GetErrorCode() const override { return errorCode.c_str(); }
	const char *	GetErrorText() const override { return errorText.c_str(); }

	// Loads a PNG picture as 32-bit ARGB with the colour key applied; null on failure. Exposed for
	// the picture tests and the fuzzer.
	static SDL_Surface *LoadKeyedSurface( const char *path, bool useKey, uint32_t colourKey );
	static SDL_Surface *LoadKeyedSurface( SDL_RWops *source, bool useKey, uint32_t colourKey );

	SDL_Renderer *	GetRenderer() const { return renderer; }

private:
	bool			Fail( const char *call );
	Uint32			GetFramePixelFormat() const;
	bool			CreateFrame();
	bool			CreateProcessorFrame( SDL_Surface *output );
	void			PresentFrame();
	void			PresentProcessorFrame();
	void			Blit( cTexture *texture, const cRect &source, float x, float y, uint32_t tint, SDL_BlendMode blend );

	const cSdlWindow *	window = nullptr;	// not owned
	SDL_Surface *		target = nullptr;	// not owned
	SDL_Renderer *		renderer = nullptr;
	cSdlTextWriter		textWriter;
	// The 640 x 480 picture; null where the device cannot draw into textures (draws then go straight
	// out, scaled each by the renderer's logical size) or when not asked for.
	SDL_Texture *		frame = nullptr;
	// The 640 x 480 picture the software renderer draws into, where the output is drawn by the
	// processor and the frame is scaled once; then frame is null.
	SDL_Surface *		processorFrame = nullptr;
	cFrameScaler		scaler;
	bool				scaleOnce = true;
	bool				drawnByProcessor = false;	// SDL's software renderer, or OpenGL without a card
	std::string			errorCode;
	std::string			errorText;
};
