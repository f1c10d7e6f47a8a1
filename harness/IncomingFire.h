// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The enemies' shots in flight, flown ahead frame by frame as the bullet pass flies them (until
// they strike a wall or leave the view), so that the bot can tell which of its moves walks into
// one. Also the player's walk over the next frames as the player step would make it.

#include <cstdint>
#include <vector>

#include "actors/ActorLists.h"
#include "actors/Player.h"

class cScene;

// A player's body over the coming frames: where it stands after each one.
struct cBodyTrack {
	static constexpr int MAX_FRAMES = 64;
	int32_t				xs[MAX_FRAMES];
	int32_t				ys[MAX_FRAMES];
	int					frames = 0;
};

class cIncomingFire {
public:
	static constexpr int HORIZON = 48;			// in frames looked ahead

						cIncomingFire();

	static constexpr int32_t KEEP_AWAY = 80;	// in pixels between a body and the boss, whose burst
											// fired at close range leaves no way out
	static constexpr int KEEP_AWAY_FRAMES = 24;	// its walk is guessed no further ahead

	// Flies every enemy bullet of the list ahead under the present view.
	void				Forecast( const cScene &scene, int32_t cameraX, int32_t cameraY, const tBulletList &bullets );
	// The boss walking from (x, y) at (vx, vy) pixels per frame: coming near it counts as a hit.
	void				KeepAwayFrom( int32_t x, int32_t y, int32_t vx, int32_t vy );
	// The first frame (1 = the coming one) in which a body on the track is hit, 0 when none is.
	int					FindFirstHit( const cBodyTrack &track ) const;
	bool				IsEmpty() const { return flights.empty() && keepAway.empty(); }

	// The player step's walk: each axis tried alone with the body test, then the camera's pull into
	// the present view; the first holdFrames frames in (dx, dy), the later ones in (dx2, dy2).
	static void			Walk( const cScene &scene, int32_t x, int32_t y, int32_t speed, int32_t dx, int32_t dy,
							  int holdFrames, int32_t dx2, int32_t dy2, int frames, cBodyTrack &track );

private:
	struct cFlight {
		int32_t			xs[HORIZON + 1];	// the box's integer corner after each frame
		int32_t			ys[HORIZON + 1];
		int				frames;				// frames it is still in the air
	};

	struct cKeepAway {
		int32_t			x, y, vx, vy;
	};

	int					FindFirstContact( const cBodyTrack &track ) const;

	std::vector<cFlight>	flights;
	std::vector<cKeepAway>	keepAway;
	mutable cPlayer			probe;			// a body placed on the track to use the game's hit test
};
