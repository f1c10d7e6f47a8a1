// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the frame loop drives: the window's events, the game's steps and the drawing of a frame.
// The real game's window is one; tests and the simulated display are others.

class cFrameClient {
public:
	virtual				~cFrameClient() = default;
	// Handles the events that came since the last pass; false once the window closed.
	virtual bool		HandleEvents() = 0;
	// True once after the events held the loop up on purpose (see NoteStall).
	bool				TakeStall() {
		const bool was = stalled;
		stalled = false;
		return was;
	}
	// One step of the game; false once the player quit.
	virtual bool		Step() = 0;
	// Whether a frame is worth drawing: something visible changed, or a window event asked for one.
	virtual bool		IsFrameWanted() = 0;
	virtual void		DrawFrame() = 0;

protected:
	// The events held the loop up on purpose (the window switched between full screen and a
	// window): that time is owed no steps, and no step is dropped for it.
	void				NoteStall() { stalled = true; }

private:
	bool				stalled = false;
};
