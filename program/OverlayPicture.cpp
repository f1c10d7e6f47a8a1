// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/OverlayPicture.h"

#include "log/Log.h"

cOverlayPicture::cOverlayPicture( cGraphicsBackend &platform, const std::string &dataRoot,
								  std::initializer_list<const char *> files )
	: platform( platform ), pictures( files.size(), nullptr ) {
	for ( const char *file : files ) {
		paths.push_back( dataRoot + file );
	}
}

bool cOverlayPicture::CreateDevice( bool fullscreen ) {
	created = platform.CreateDevice( fullscreen );
	for ( size_t i = 0; created && i < paths.size(); i++ ) {
		pictures[i] = platform.LoadTexture( paths[i].c_str(), false, 0 );
		if ( pictures[i] == nullptr ) {
			cLog::Write( ( "Error loading picture " + paths[i] + ": " + platform.GetErrorText() ).c_str() );
		}
	}
	return created;
}

void cOverlayPicture::ReleaseOwnDevice() {
	for ( cTexture *&picture : pictures ) {
		if ( picture != nullptr ) {
			platform.ReleaseTexture( picture );
			picture = nullptr;
		}
	}
	if ( created ) {
		platform.ReleaseDevice();
		created = false;
	}
}

void cOverlayPicture::EndFrame() {
	DrawOver( platform, pictures );
	platform.EndFrame();
}
