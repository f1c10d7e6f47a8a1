// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/RecordingInput.h"

#include "replay/Recorder.h"

bool cRecordingInput::TakePauseRequest() {
	const bool pause = platform.TakePauseRequest();
	recorder.BeginStep( pause );
	return pause;
}

bool cRecordingInput::ReadKeyboard( uint8_t state[256] ) {
	const bool read = platform.ReadKeyboard( state );
	if ( recorder.IsRecording() ) {
		recorder.GetTape().PutKeyboard( read, state );
	}
	return read;
}

bool cRecordingInput::ReadMouse( cMouseReading &reading ) {
	const bool read = platform.ReadMouse( reading );
	if ( recorder.IsRecording() ) {
		recorder.GetTape().PutMouse( read, reading );
	}
	return read;
}
