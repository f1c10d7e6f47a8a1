// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/WaitingPicture.h"

bool cWaitingPicture::Show( bool show ) {
	const bool changed = show != shown;
	shown = show;
	return changed;
}

void cWaitingPicture::DrawOver( cGraphicsBackend &frame, cTexture *picture ) {
	if ( shown ) {
		frame.Draw( picture, nullptr, 0.0f, 0.0f, WHITE );
	}
}
