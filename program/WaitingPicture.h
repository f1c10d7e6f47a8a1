// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cWaitingPicture lays the "waiting for partner" picture over every frame while an online game
// waits for the partner's input longer than a second: it stands between the graphics layer and the
// platform's backend, passes everything through, and draws the picture last, just before the frame
// is presented, so the frozen world stays visible around it.

#include <string>

#include "graphics/GraphicsBackend.h"

class cWaitingPicture : public cGraphicsBackend {
public:
	static constexpr const char *FILE = "/resources/menu/waiting.png";

	cWaitingPicture( cGraphicsBackend &platform, const std::string &dataRoot ) : platform( platform ), dataRoot( dataRoot ) {}
	~cWaitingPicture() override { ReleaseDevice(); }

	// Whether the picture shows from the next frame on; true when that changes what is seen.
	bool				Show( bool shown );

	bool				CreateDevice( bool fullscreen ) override;
	void				ReleaseDevice() override;
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

private:
	cGraphicsBackend &	platform;
	std::string			dataRoot;
	cTexture *			picture = nullptr;
	bool				shown = false;
	bool				created = false;
};
