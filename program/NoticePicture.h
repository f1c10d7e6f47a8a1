// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cNoticePicture writes a line of the program's (the host's: how the partner joins, or what to do
// instead) at the foot of the main menu, with the glyph sheet that the art tool makes: COLUMNS x
// ROWS cells of one size from character FIRST, the last cell the band laid under each character so
// that the line stands out from the picture. The line wraps at spaces to the screen's width.

#include <string>
#include <vector>

#include "program/OverlayPicture.h"

class cNoticePicture : public cOverlayPicture {
public:
	static constexpr const char *FILE = "/resources/menu/glyphs.png";
	static const int	COLUMNS = 16;
	static const int	ROWS = 6;
	static const int	FIRST = 32;
	static const int	SCREEN_WIDTH = 640;
	static const int	SCREEN_HEIGHT = 480;
	static const int	MARGIN = 4;			// pixels kept free at the screen's edges

	cNoticePicture( cGraphicsBackend &platform, const std::string &dataRoot ) : cOverlayPicture( platform, dataRoot, { FILE } ) {}

	// The text shown from the next frame on, empty for none; true when it changed.
	bool				Show( const std::string &text );
	// The text cut at spaces into lines of at most columns characters; a longer word is cut where
	// the line ends.
	static std::vector<std::string> Wrap( const std::string &text, size_t columns );

protected:
	void				DrawOver( cGraphicsBackend &frame, const std::vector<cTexture *> &pictures ) override;

private:
	std::string			text;
};
