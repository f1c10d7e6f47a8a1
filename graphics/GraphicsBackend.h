// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the graphics layer needs from the platform: a 640 x 480 presentation surface, pictures
// loaded into textures, and one primitive, a tinted, alpha-blended draw of a rectangle of a texture;
// besides, textures the drawing can go into, for the parts of the map that seldom change.

#include <cstdint>
#include <string>

#include "actors/Rect.h"

class cTexture;		// the backend's own; the layer only holds and hands back pointers

class cGraphicsBackend {
public:
	virtual				~cGraphicsBackend() = default;

	virtual bool		CreateDevice( bool fullscreen ) = 0;
	virtual void		ReleaseDevice() = 0;

	// A PNG at its own pixel size; with useKey, pixels equal to colourKey (ARGB, alpha included)
	// become transparent black. Null when the file cannot be loaded.
	virtual cTexture *	LoadTexture( const char *path, bool useKey, uint32_t colourKey ) = 0;
	virtual void		ReleaseTexture( cTexture *texture ) = 0;
	// The picture's own size in pixels; false (and 0 x 0) for a null texture.
	virtual bool		GetTextureSize( const cTexture *texture, int32_t &width, int32_t &height ) const = 0;

	virtual void		BeginFrame( uint32_t clearColour ) = 0;
	// source null draws the whole texture; tint multiplies every texel, channel by channel (ARGB).
	// The part of a source rectangle that lies outside the picture draws nothing: the picture is
	// never stretched and nothing beyond it is read.
	virtual void		Draw( cTexture *texture, const cRect *source, float x, float y, uint32_t tint ) = 0;
	// A line of UTF-8 text in the game's font, its top-left corner at (x, y). Without a font,
	// nothing: the backend said so once in the log.
	virtual void		DrawText( const std::string &, float, float, uint32_t ) {}
	virtual void		EndFrame() = 0;	// presents the frame

	// A texture that drawing can go into, its pixels undefined until drawn. withAlpha keeps each
	// pixel's alpha; without it the texture has the frame's own pixel format, so that blending into
	// it gives what blending into the frame gives. Null where the device cannot draw into textures.
	virtual cTexture *	CreateTargetTexture( int32_t width, int32_t height, bool withAlpha ) = 0;
	// Later draws, fills and copies go into target, or into the frame when target is null. False
	// when the device refused.
	virtual bool		SetTarget( cTexture *target ) = 0;
	// These two replace the pixels under them, alpha included, without blending.
	virtual void		Fill( const cRect &area, uint32_t colour ) = 0;
	virtual void		Copy( cTexture *texture, const cRect &source, float x, float y ) = 0;

	// The failing call and the platform's text, for the log.
	virtual const char *GetErrorCode() const = 0;
	virtual const char *GetErrorText() const = 0;
};
