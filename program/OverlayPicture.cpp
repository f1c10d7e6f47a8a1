// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/OverlayPicture.h"

#include "log/Log.h"

bool cOverlayPicture::CreateDevice( bool fullscreen ) {
	created = platform.CreateDevice( fullscreen );
	if ( created ) {
		picture = platform.LoadTexture( path.c_str(), false, 0 );
		if ( picture == nullptr ) {
			cLog::Write( ( "Error loading picture " + path + ": " + platform.GetErrorText() ).c_str() );
		}
	}
	return created;
}

void cOverlayPicture::ReleaseOwnDevice() {
	if ( picture != nullptr ) {
		platform.ReleaseTexture( picture );
		picture = nullptr;
	}
	if ( created ) {
		platform.ReleaseDevice();
		created = false;
	}
}

void cOverlayPicture::EndFrame() {
	if ( picture != nullptr ) {
		DrawOver( platform, picture );
	}
	platform.EndFrame();
}
