// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Drawing for tests and headless tools: nothing reaches a screen; every draw of the last frame is
// kept in order, with the file its texture came from and the texture it went into. Textures to draw
// into are made only when a test asks for them, so that the layer draws every tile of its map.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "graphics/GraphicsBackend.h"

class cRecordingGraphicsBackend : public cGraphicsBackend {
public:
	struct cDrawCall {
		std::string		path;			// the texture's file
		bool			wholeTexture;	// drawn without a source rectangle
		cRect			source;
		float			x;
		float			y;
		uint32_t		tint;			// a fill's colour
		bool			blend;			// false for a copy or a fill, which replace the pixels
		std::string		target;			// the texture drawn into; empty for the frame
	};
	static const char *const FILL;		// a fill's path
	static const char *const TEXT;		// a text's path is TEXT and the text

					~cRecordingGraphicsBackend() override;

	void			SetFailDevice( bool fail ) { failDevice = fail; }
	// Textures load from their path without reading it, unless the path is listed as missing.
	void			SetMissingFile( const std::string &path ) { missing.push_back( path ); }
	void			SetRecording( bool on ) { recording = on; }
	void			SetTargetTextures( bool on ) { targetTextures = on; }
	// A texture loaded afterwards from this path reports this size; any other reports
	// DEFAULT_TEXTURE_SIZE square, big enough for every rectangle the game takes from a picture.
	void			SetTextureSize( const std::string &path, int32_t width, int32_t height );
	static const int32_t DEFAULT_TEXTURE_SIZE = 1024;	// in pixels

	bool			CreateDevice( bool fullscreen ) override;
	void			ReleaseDevice() override { deviceReady = false; }
	cTexture *		LoadTexture( const char *path, bool useKey, uint32_t colourKey ) override;
	void			ReleaseTexture( cTexture *texture ) override;
	bool			GetTextureSize( const cTexture *texture, int32_t &width, int32_t &height ) const override;
	void			BeginFrame( uint32_t clearColour ) override;
	void			Draw( cTexture *texture, const cRect *source, float x, float y, uint32_t tint ) override;
	void			DrawText( const std::string &text, float x, float y, uint32_t colour ) override;
	void			EndFrame() override { frames++; }
	cTexture *		CreateTargetTexture( int32_t width, int32_t height, bool withAlpha ) override;
	bool			SetTarget( cTexture *texture ) override;
	void			Fill( const cRect &area, uint32_t colour ) override;
	void			Copy( cTexture *texture, const cRect &source, float x, float y ) override;
	const char *	GetErrorCode() const override { return "scripted failure"; }
	const char *	GetErrorText() const override { return "the test made the device fail"; }

	const std::vector<cDrawCall> &GetDraws() const { return draws; }
	// The texts of the last frame, in the order drawn.
	std::vector<std::string> GetTexts() const;
	int				GetFrameCount() const { return frames; }
	int				GetLiveTextureCount() const { return liveTextures; }
	bool			IsDeviceReady() const { return deviceReady; }
	bool			WasFullscreenAsked() const { return fullscreenAsked; }

private:
	void			Record( const std::string &path, const cRect *source, float x, float y, uint32_t tint, bool blend );

	std::vector<cDrawCall>		draws;
	std::vector<std::string>	missing;
	std::map<std::string, std::pair<int32_t, int32_t>>	sizes;
	bool			failDevice = false;
	bool			deviceReady = false;
	bool			fullscreenAsked = false;
	bool			recording = true;
	bool			targetTextures = false;
	std::string		target;			// the path of the texture drawn into
	int				frames = 0;
	int				liveTextures = 0;
};
