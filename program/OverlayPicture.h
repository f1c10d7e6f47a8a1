// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cOverlayPicture stands between the graphics layer and the platform's backend, passes everything
// through, and lays something drawn from pictures of its own over the frame last, just before the
// frame is presented, so that the game's picture stays visible around it. The pictures (files under
// the data's folder) load with the device; a missing one is named in the log, and the game goes on
// without what it would have drawn.

#include <initializer_list>
#include <string>
#include <vector>

#include "graphics/GraphicsBackend.h"

class cOverlayPicture : public cGraphicsBackend {
public:
	cOverlayPicture( cGraphicsBackend &platform, const std::string &dataRoot, std::initializer_list<const char *> files );
	~cOverlayPicture() override { ReleaseOwnDevice(); }

	bool				CreateDevice( bool fullscreen ) override;
	void				ReleaseDevice() override { ReleaseOwnDevice(); }
	cTexture *			LoadTexture( const char *path, bool useKey, uint32_t colourKey ) override {
		return platform.LoadTexture( path, useKey, colourKey );
	}
	void				ReleaseTexture( cTexture *texture ) override { platform.ReleaseTexture( texture ); }
	bool				GetTextureSize( const cTexture *texture, int32_t &width, int32_t &height ) const override {
		return platform.GetTextureSize( texture, width, height );
	}
	void				BeginFrame( uint32_t clearColour ) override { platform.BeginFrame( clearColour ); }
	void				Draw( cTexture *texture, const cRect *source, float x, float y, uint32_t tint ) override {
		platform.Draw( texture, source, x, y, tint );
	}
	void				DrawText( const std::string &text, float x, float y, uint32_t colour ) override {
		platform.DrawText( text, x, y, colour );
	}
	void				EndFrame() override;
	cTexture *			CreateTargetTexture( int32_t width, int32_t height, bool withAlpha ) override {
		return platform.CreateTargetTexture( width, height, withAlpha );
	}
	bool				SetTarget( cTexture *target ) override { return platform.SetTarget( target ); }
	void				Fill( const cRect &area, uint32_t colour ) override { platform.Fill( area, colour ); }
	void				Copy( cTexture *texture, const cRect &source, float x, float y ) override {
		platform.Copy( texture, source, x, y );
	}
	const char *		GetErrorCode() const override { return platform.GetErrorCode(); }
	const char *		GetErrorText() const override { return platform.GetErrorText(); }

protected:
	static const uint32_t WHITE = 0xFFFFFFFF;

	// Draws the overlay into the frame, when it is to be seen, with the pictures in the order of
	// their files; one that could not be loaded is null.
	virtual void		DrawOver( cGraphicsBackend &frame, const std::vector<cTexture *> &pictures ) = 0;

private:
	void				ReleaseOwnDevice();

	cGraphicsBackend &	platform;
	std::vector<std::string>	paths;
	std::vector<cTexture *>		pictures;
	bool				created = false;
};
