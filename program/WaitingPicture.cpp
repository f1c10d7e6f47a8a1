// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/WaitingPicture.h"

#include "log/Log.h"

namespace {

const uint32_t WHITE = 0xFFFFFFFF;

}

bool cWaitingPicture::Show( bool show ) {
	const bool changed = show != shown;
	shown = show;
	return changed;
}

// A missing picture is named in the log; the game waits all the same, without it.
bool cWaitingPicture::CreateDevice( bool fullscreen ) {
	created = platform.CreateDevice( fullscreen );
	if ( created ) {
		const std::string path = dataRoot + FILE;
		picture = platform.LoadTexture( path.c_str(), false, 0 );
		if ( picture == nullptr ) {
			cLog::Write( ( "Error loading picture " + path + ": " + platform.GetErrorText() ).c_str() );
		}
	}
	return created;
}

void cWaitingPicture::ReleaseDevice() {
	if ( picture != nullptr ) {
		platform.ReleaseTexture( picture );
		picture = nullptr;
	}
	if ( created ) {
		platform.ReleaseDevice();
		created = false;
	}
}

void cWaitingPicture::EndFrame() {
	if ( shown && picture != nullptr ) {
		platform.Draw( picture, nullptr, 0.0f, 0.0f, WHITE );
	}
	platform.EndFrame();
}
