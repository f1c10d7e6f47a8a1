// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cWaitingPicture lays the "waiting for partner" picture over every frame while an online game
// waits for the partner's input longer than a second, and the "Connection lost: waiting N s"
// picture while the partner is silent, N drawn from the countdown's glyphs, so the frozen world
// stays visible around it.

#include <string>

#include "program/OverlayPicture.h"

class cWaitingPicture : public cOverlayPicture {
public:
	static constexpr const char *FILE = "/resources/menu/waiting.png";
	static constexpr const char *LOST_FILE = "/resources/menu/connection-lost.png";
	static constexpr const char *COUNTDOWN_FILE = "/resources/menu/countdown.png";
	static constexpr int COUNTDOWN_GLYPHS = 11;		// "0" to "9", then "s", side by side in cells of one width
	static constexpr int COUNTDOWN_TOP = 244;			// the seconds' top, between the heading and the line

	cWaitingPicture( cGraphicsBackend &platform, const std::string &dataRoot )
		: cOverlayPicture( platform, dataRoot, { FILE, LOST_FILE, COUNTDOWN_FILE } ) {}

	// What shows from the next frame on: the waiting picture, or (lostSeconds 0 or more) the
	// connection lost with the seconds left; true when that changes what is seen.
	bool				Show( bool shown, int lostSeconds = -1 );

protected:
	void				DrawOver( cGraphicsBackend &frame, const std::vector<cTexture *> &pictures ) override;

private:
	enum ePicture { WAITING, LOST, COUNTDOWN };

	void				DrawSeconds( cGraphicsBackend &frame, cTexture *countdown ) const;

	bool				shown = false;
	int					lostSeconds = -1;
};
