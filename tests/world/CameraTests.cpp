// SPDX-License-Identifier: GPL-3.0-or-later
// The seven-zone camera: which player it follows, each zone's rule, the vertical bound by the
// other player, the pull of the players into the view and the lock of the final area.

#include <gtest/gtest.h>

#include <algorithm>

#include "TestMaps.h"
#include "world/Scene.h"

namespace {

struct cSpot {
	int32_t		x;
	int32_t		y;
};

// One frame of the camera: where it was, the players, where it went and where the players end.
struct cCameraCase {
	const char *	what;
	cSpot			cameraBefore;
	bool			active1;
	cSpot			player1;
	bool			active2;
	cSpot			player2;
	cSpot			cameraAfter;
	cSpot			player1After;
	cSpot			player2After;
	bool			locked;
};

const cSpot NOWHERE = { -999, -999 };

const cCameraCase CAMERA_CASES[] = {
	{ "zone 0 at the map's bottom", { 0, 1920 }, true, { 300, 2240 }, false, NOWHERE, { 0, 1888 }, { 300, 2240 }, NOWHERE, false },
	{ "zone 0, 352 above the player", { 0, 1888 }, true, { 300, 2100 }, false, NOWHERE, { 0, 1748 }, { 300, 2100 }, NOWHERE, false },
	{ "zone 0, not above 992", { 0, 1000 }, true, { 300, 1200 }, false, NOWHERE, { 0, 992 }, { 300, 1200 }, NOWHERE, false },
	{ "zone 1, twice the pace", { 0, 992 }, true, { 449, 1200 }, false, NOWHERE, { 2, 992 }, { 449, 1200 }, NOWHERE, false },
	{ "zone 1, its end", { 0, 992 }, true, { 744, 1200 }, false, NOWHERE, { 592, 992 }, { 744, 1200 }, NOWHERE, false },
	{ "zone 2, 160 behind", { 0, 992 }, true, { 1000, 1200 }, false, NOWHERE, { 840, 992 }, { 1000, 1200 }, NOWHERE, false },
	{ "zone 2, at most 1280", { 0, 992 }, true, { 1500, 1200 }, false, NOWHERE, { 1280, 992 }, { 1500, 1200 }, NOWHERE, false },
	{ "zone 3, -1.5 + 992 truncated", { 1280, 992 }, true, { 1600, 1087 }, false, NOWHERE, { 1280, 990 }, { 1600, 1087 }, NOWHERE, false },
	{ "zone 3", { 1280, 300 }, true, { 1600, 500 }, false, NOWHERE, { 1280, 110 }, { 1600, 500 }, NOWHERE, false },
	{ "zone 3, at least 0", { 1280, 110 }, true, { 1600, 200 }, false, NOWHERE, { 1280, 0 }, { 1600, 200 }, NOWHERE, false },
	{ "zone 4", { 1280, 0 }, true, { 1400, 100 }, false, NOWHERE, { 1072, 0 }, { 1400, 100 }, NOWHERE, false },
	{ "zone 5, 348 behind", { 1280, 0 }, true, { 1000, 100 }, false, NOWHERE, { 652, 0 }, { 1000, 100 }, NOWHERE, false },
	{ "zone 5, at least 640", { 1280, 0 }, true, { 900, 100 }, false, NOWHERE, { 640, 0 }, { 900, 100 }, NOWHERE, false },
	{ "zone 6 takes y 0 at once", { 500, 300 }, true, { 600, 700 }, false, NOWHERE, { 496, 0 }, { 600, 448 }, NOWHERE, true },
	{ "a player above the old view holds the y", { 0, 1920 }, true, { 100, 1500 }, false, NOWHERE, { 0, 1920 }, { 100, 1920 }, NOWHERE, false },
	{ "a player below the view is pulled up", { 0, 992 }, true, { 1000, 1500 }, false, NOWHERE, { 840, 992 }, { 1000, 1440 }, NOWHERE, false },
	{ "player 2 alone is followed", { 0, 992 }, false, NOWHERE, true, { 1000, 1200 }, { 840, 992 }, NOWHERE, { 1000, 1200 }, false },
	{ "nobody to follow: final area", { 100, 992 }, false, NOWHERE, false, NOWHERE, { 96, 0 }, NOWHERE, NOWHERE, true },

	{ "zone 0 follows the greater y", { 0, 1500 }, true, { 200, 2000 }, true, { 300, 1800 }, { 0, 1648 }, { 200, 2000 }, { 300, 1800 }, false },
	{ "the same, players swapped", { 0, 1500 }, true, { 200, 1800 }, true, { 300, 2000 }, { 0, 1648 }, { 200, 1800 }, { 300, 2000 }, false },
	{ "the other player above the old view holds the y", { 0, 1920 }, true, { 200, 2000 }, true, { 300, 1800 }, { 0, 1920 }, { 200, 2000 }, { 300, 1920 }, false },
	{ "the view stops with the other player on its top edge", { 0, 1700 }, true, { 200, 2300 }, true, { 300, 1800 }, { 0, 1800 }, { 200, 2248 }, { 300, 1800 }, false },
	{ "the other player on the top edge keeps the view up", { 0, 1800 }, true, { 200, 2300 }, true, { 300, 1800 }, { 0, 1800 }, { 200, 2248 }, { 300, 1800 }, false },
	{ "the other player 480 down holds a rising view", { 0, 1400 }, true, { 100, 1200 }, true, { 500, 1880 }, { 0, 1400 }, { 100, 1400 }, { 500, 1848 }, false },
	{ "479 down it does not", { 0, 1401 }, true, { 100, 1200 }, true, { 500, 1880 }, { 0, 992 }, { 100, 1200 }, { 500, 1440 }, false },
	{ "zone 0 comes before zone 2", { 0, 992 }, true, { 1000, 1200 }, true, { 100, 1200 }, { 0, 992 }, { 608, 1200 }, { 100, 1200 }, false },
	{ "zone 5 holds off the final area", { 1280, 0 }, true, { 600, 300 }, true, { 700, 300 }, { 640, 0 }, { 640, 300 }, { 700, 300 }, false },
	{ "zone 2 follows the smaller x", { 0, 992 }, true, { 900, 1200 }, true, { 1700, 1100 }, { 740, 992 }, { 900, 1200 }, { 1348, 1100 }, false },
	{ "zone 3 follows the greater y", { 1280, 300 }, true, { 1600, 500 }, true, { 1700, 700 }, { 1280, 410 }, { 1600, 500 }, { 1700, 700 }, false },
	{ "zone 5 follows the greater x", { 1280, 0 }, true, { 1000, 100 }, true, { 900, 100 }, { 652, 0 }, { 1000, 100 }, { 900, 100 }, false },
	// On a tie player 2 is followed, so player 1, inside the old view, bounds the y and lets it move.
	{ "a tie in zone 1 follows player 2", { 0, 1200 }, true, { 500, 1300 }, true, { 500, 1800 }, { 104, 992 }, { 500, 1300 }, { 500, 1440 }, false },
	{ "a tie in zone 5 follows player 2", { 700, 100 }, true, { 1000, 200 }, true, { 1000, 700 }, { 652, 0 }, { 1000, 200 }, { 1000, 448 }, false },
	{ "both in the final area", { 700, 0 }, true, { 600, 300 }, true, { 650, 300 }, { 696, 0 }, { 696, 300 }, { 696, 300 }, true },
};

TEST( CameraTest, EachFrameFollowsTheRuleOfTheZoneOfThePlayerFurthestBehind ) {
	for ( const cCameraCase &c : CAMERA_CASES ) {
		std::unique_ptr<cScene> scene = MakeOpenScene();
		scene->SetCameraPosition( c.cameraBefore.x, c.cameraBefore.y );
		cSpot one = c.player1;
		cSpot two = c.player2;
		scene->UpdateCamera( c.active1, one.x, one.y, c.active2, two.x, two.y );
		EXPECT_EQ( scene->GetCameraX(), c.cameraAfter.x ) << c.what;
		EXPECT_EQ( scene->GetCameraY(), c.cameraAfter.y ) << c.what;
		EXPECT_EQ( scene->GetCameraCellX(), c.cameraAfter.x / 32 ) << c.what;
		EXPECT_EQ( scene->GetCameraCellY(), c.cameraAfter.y / 32 ) << c.what;
		EXPECT_TRUE( one.x == c.player1After.x && one.y == c.player1After.y )
			<< c.what << ": player 1 handed back at (" << one.x << ", " << one.y << ")";
		EXPECT_TRUE( two.x == c.player2After.x && two.y == c.player2After.y )
			<< c.what << ": player 2 handed back at (" << two.x << ", " << two.y << ")";
		EXPECT_EQ( scene->IsFinalAreaLocked(), c.locked ) << c.what;
	}
}

TEST( CameraTest, ZonesFollowTheRouteInTheirOrder ) {
	const int32_t cases[][3] = {
		{ 0, 1088, 0 }, { 448, 2300, 0 }, { -1, 1500, 6 }, { 449, 1088, 1 }, { 744, 2000, 1 }, { 745, 1088, 2 },
		{ 1400, 1088, 2 }, { 1600, 1088, 2 }, { 1504, 1087, 3 }, { 1503, 1087, 4 }, { 1377, 0, 4 }, { 1376, 0, 5 },
		{ 672, 500, 5 }, { 671, 500, 6 }, { 100, 1087, 6 },
	};
	std::unique_ptr<cScene> scene = MakeOpenScene();
	for ( const int32_t *c : cases ) {
		EXPECT_EQ( scene->GetCameraZone( c[0], c[1] ), c[2] ) << "(" << c[0] << ", " << c[1] << ")";
	}
}

// From the second frame on the player stands on the upper street, final area once locked.
TEST( CameraTest, FinalAreaSlidesLeftFourPixelsAFrameForGood ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	scene->SetCameraPosition( 642, 0 );
	int frames = 0;
	do {
		cSpot one = { frames == 0 ? 660 : 1300, 300 };
		cSpot unused = NOWHERE;
		scene->UpdateCamera( true, one.x, one.y, false, unused.x, unused.y );
		EXPECT_EQ( one.x, std::min( frames == 0 ? 660 : 1300, scene->GetCameraX() + 608 ) ) << "frame " << frames;
		frames++;
	} while ( scene->GetCameraX() > 0 && frames < 1000 );
	EXPECT_EQ( frames, 161 ) << "from 642 the slide takes 161 frames, the last from 2 to 0";
	EXPECT_EQ( scene->GetCameraY(), 0 );
	EXPECT_EQ( scene->GetCameraZone( 1000, 300 ), 6 ) << "once locked the upper street is final area";
	EXPECT_EQ( scene->GetCameraZone( 1400, 300 ), 4 ) << "the upper turn still counts";
}

}
