// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRecordingInput passes the platform's input through to the game and notes on the recorder's tape
// every poll and what it gave.

#include "input/ForwardingInput.h"

class cRecorder;

class cRecordingInput : public cForwardingInput {
public:
					cRecordingInput( cInputBackend &platform, cRecorder &recorder )
						: cForwardingInput( platform ), recorder( recorder ) {}

	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			ReadMouse( cMouseReading &reading ) override;
	bool			TakePauseRequest() override;

private:
	cRecorder &		recorder;
};
