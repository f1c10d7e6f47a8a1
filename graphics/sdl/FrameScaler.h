// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cFrameScaler scales the 640 x 480 frame to a window drawn by the processor, nearest pixel. The
// copy is bound by the memory it writes, four to seven times the frame's on a big window, so only
// the rows of the frame that changed since the last frame are written again: in play much of the
// view stands still from frame to frame. Each changed row is widened once, each pixel repeated as
// often as it is wide on the output, and copied to every output row that shows it.

#include <SDL.h>

#include <cstdint>
#include <vector>

class cFrameScaler {
public:
	// Both surfaces hold 32-bit pixels of one format; picture is where the frame goes on the output,
	// which is black around it. The output keeps what this wrote to it last, unless it is another
	// surface, of another size or place of the picture: then all of it is written.
	void				Scale( const SDL_Surface &frame, SDL_Surface &output, const SDL_Rect &picture, uint32_t black );

private:
	struct cOutput {
		const void *	pixels = nullptr;
		int				width = 0;
		int				height = 0;
		int				pitch = 0;
		SDL_Rect		picture = {};
		uint32_t		black = 0;
		bool			operator==( const cOutput &other ) const;
	};

	void				CountRepeats( int frameWidth, int pictureWidth );
	void				FindChangedRows( const SDL_Surface &frame, bool all );
	template <int WIDEST>
	void				ExpandRow( const uint32_t *frameRow );
	const uint32_t *	ExpandRow( const uint32_t *frameRow, int width );
	static void			PaintBars( SDL_Surface &output, const SDL_Rect &picture, uint32_t black );

	// How many output columns show each of the frame's columns, for the picture width counted.
	std::vector<uint16_t> repeats;
	int					widest = 0;			// the most of them
	int					countedFor = -1;
	std::vector<uint32_t> expanded;			// a row being built, and room for writing past its end
	cOutput				written;			// the output the last frame went to
	std::vector<uint32_t> shown;			// the frame as the output shows it
	std::vector<uint8_t> changed;			// per row of the frame: not as shown
};
