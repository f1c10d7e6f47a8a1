// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cWaitingPicture lays the "waiting for partner" picture over every frame while an online game
// waits for the partner's input longer than a second, so the frozen world stays visible around it.

#include <string>

#include "program/OverlayPicture.h"

class cWaitingPicture : public cOverlayPicture {
public:
	static constexpr const char *FILE = "/resources/menu/waiting.png";

	cWaitingPicture( cGraphicsBackend &platform, const std::string &dataRoot ) : cOverlayPicture( platform, dataRoot, FILE ) {}

	// Whether the picture shows from the next frame on; true when that changes what is seen.
	bool				Show( bool shown );

protected:
	void				DrawOver( cGraphicsBackend &frame, cTexture *picture ) override;

private:
	bool				shown = false;
};
