// The seven-zone camera: which player it follows, each zone's rule, the vertical bound by the
// other player, the pull of the players into the view and the lock of the final area.

#include <gtest/gtest.h>

#include "TestMaps.h"
#include "world/Scene.h"

namespace {

struct cPosition {
	int32_t		x;
	int32_t		y;
};

class CameraTest : public ::testing::Test {
protected:
	// One frame with player 1 only.
	void UpdateOne( int32_t x, int32_t y ) {
		one = { x, y };
		cPosition unused = { -1000, -1000 };
		scene->UpdateCamera( true, one.x, one.y, false, unused.x, unused.y );
		EXPECT_EQ( unused.x, -1000 ) << "an inactive player must not be moved";
		EXPECT_EQ( unused.y, -1000 ) << "an inactive player must not be moved";
	}
	void UpdateTwo( cPosition first, cPosition second ) {
		one = first;
		two = second;
		scene->UpdateCamera( true, one.x, one.y, true, two.x, two.y );
	}
	void ExpectCamera( int32_t x, int32_t y, const char *what ) {
		EXPECT_EQ( scene->GetCameraX(), x ) << what;
		EXPECT_EQ( scene->GetCameraY(), y ) << what;
		EXPECT_EQ( scene->GetCameraCellX(), x / 32 ) << what;
		EXPECT_EQ( scene->GetCameraCellY(), y / 32 ) << what;
	}

	std::unique_ptr<cScene> scene = MakeOpenScene();
	cPosition one = { 0, 0 };		// the positions as the camera handed them back
	cPosition two = { 0, 0 };
};

TEST_F( CameraTest, ZonesFollowTheRouteInTheirOrder ) {
	struct cZoneCase { int32_t x, y, zone; const char *where; };
	const cZoneCase cases[] = {
		{ 0, 1088, 0, "start, top-left corner of zone 0" },
		{ 448, 2300, 0, "start, right edge" },
		{ -1, 1500, 6, "left of the map" },
		{ 449, 1088, 1, "lower turn, left edge" },
		{ 744, 2000, 1, "lower turn, right edge" },
		{ 745, 1088, 2, "lower street" },
		{ 1400, 1088, 2, "the lower street comes before the upper turn" },
		{ 1600, 1088, 2, "the lower street comes before the right side" },
		{ 1504, 1087, 3, "right side" },
		{ 1503, 1087, 4, "upper turn, right edge" },
		{ 1377, 0, 4, "upper turn, left edge" },
		{ 1376, 0, 5, "upper street, right edge" },
		{ 672, 500, 5, "upper street, left edge" },
		{ 671, 500, 6, "final area" },
		{ 100, 1087, 6, "final area above the lower part" },
	};
	for ( const cZoneCase &c : cases ) {
		EXPECT_EQ( scene->GetCameraZone( c.x, c.y ), c.zone ) << c.where << " (" << c.x << ", " << c.y << ")";
	}
}

TEST_F( CameraTest, StartZoneKeepsThePlayer352BelowTheTopWithinItsLimits ) {
	UpdateOne( 300, 2240 );
	ExpectCamera( 0, 1888, "(300, 2240) wants 1888, the lower limit of the view" );
	UpdateOne( 300, 2100 );
	ExpectCamera( 0, 1748, "(300, 2100)" );
	scene->SetCameraPosition( 0, 1000 );
	UpdateOne( 300, 1200 );
	ExpectCamera( 0, 992, "(300, 1200) wants 848, limited to 992" );
}

TEST_F( CameraTest, LowerStreetZonesScrollRight ) {
	scene->SetCameraPosition( 0, 992 );
	UpdateOne( 449, 1200 );
	ExpectCamera( 2, 992, "the turn runs at twice the player's pace" );
	UpdateOne( 744, 1200 );
	ExpectCamera( 592, 992, "end of the turn" );
	UpdateOne( 1000, 1200 );
	ExpectCamera( 840, 992, "the street keeps the player 160 from the left" );
	UpdateOne( 1500, 1200 );
	ExpectCamera( 1280, 992, "the street stops at the map's right edge" );
}

TEST_F( CameraTest, RightSideClimbsAtOneAndAHalfThePlayersPace ) {
	scene->SetCameraPosition( 1280, 992 );
	UpdateOne( 1600, 1087 );
	ExpectCamera( 1280, 990, "-1.5 + 992 truncates to 990" );
	scene->SetCameraPosition( 1280, 300 );
	UpdateOne( 1600, 500 );
	ExpectCamera( 1280, 110, "(500 - 1088) * 1.5 + 992" );
	UpdateOne( 1600, 200 );
	ExpectCamera( 1280, 0, "never above the map" );
}

TEST_F( CameraTest, UpperZonesScrollLeft ) {
	scene->SetCameraPosition( 1280, 0 );
	UpdateOne( 1503, 100 );
	ExpectCamera( 1278, 0, "the upper turn, 2 * (1504 - x) from the right edge" );
	UpdateOne( 1400, 100 );
	ExpectCamera( 1072, 0, "upper turn" );
	UpdateOne( 1000, 100 );
	ExpectCamera( 652, 0, "the upper street keeps the player 348 from the left" );
	UpdateOne( 900, 100 );
	ExpectCamera( 640, 0, "the upper street stops at 640" );
	EXPECT_FALSE( scene->IsFinalAreaLocked() );
}

TEST_F( CameraTest, FinalAreaLocksAndSlidesLeftFourPixelsAFrame ) {
	scene->SetCameraPosition( 642, 0 );
	UpdateOne( 660, 100 );
	EXPECT_TRUE( scene->IsFinalAreaLocked() );
	ExpectCamera( 638, 0, "first frame in the final area" );
	int frames = 1;
	while ( scene->GetCameraX() > 0 && frames < 1000 ) {
		UpdateOne( 1300, 300 );
		EXPECT_EQ( one.x, scene->GetCameraX() + 608 ) << "a player right of the view is pulled in, frame " << frames;
		frames++;
	}
	EXPECT_EQ( frames, 161 ) << "from 642 the slide takes 161 frames, the last from 2 to 0";
	UpdateOne( 1000, 300 );
	ExpectCamera( 0, 0, "the slide stops at the top-left screen" );
	EXPECT_EQ( scene->GetCameraZone( 1000, 300 ), 6 ) << "once locked the upper street is final area too";
	EXPECT_EQ( scene->GetCameraZone( 1400, 300 ), 4 ) << "the upper turn still counts";
}

TEST_F( CameraTest, FinalAreaTakesTheCameraYAtOnceWhateverThePlayers ) {
	scene->SetCameraPosition( 500, 300 );
	UpdateOne( 600, 700 );
	ExpectCamera( 496, 0, "locked: the y goes to 0 in the first frame" );
	EXPECT_EQ( one.y, 448 ) << "the player is pulled up into the view";
}

TEST_F( CameraTest, PlayerOutsideTheOldViewHoldsTheCameraYAndIsPulledIn ) {
	UpdateOne( 100, 1500 );
	ExpectCamera( 0, 1920, "(100, 1500) lies above the old view: y stays" );
	EXPECT_EQ( one.x, 100 );
	EXPECT_EQ( one.y, 1920 ) << "the player is pulled down to the view's top edge";
}

TEST_F( CameraTest, ActivePlayersAreKeptWhollyInsideTheView ) {
	scene->SetCameraPosition( 0, 992 );
	UpdateOne( 1000, 1500 );
	ExpectCamera( 840, 992, "lower street" );
	EXPECT_EQ( one.x, 1000 );
	EXPECT_EQ( one.y, 1440 ) << "y is limited to camera y + 448";
	UpdateTwo( { 900, 1200 }, { 1700, 1100 } );
	ExpectCamera( 740, 992, "player 1 is behind in the lower street" );
	EXPECT_EQ( two.x, 1348 ) << "x is limited to camera x + 608";
	EXPECT_EQ( one.x, 900 );
	EXPECT_EQ( one.y, 1200 );
}

TEST_F( CameraTest, NoActivePlayerLocksTheFinalArea ) {
	scene->SetCameraPosition( 100, 992 );
	cPosition a = { 5000, 5000 };
	cPosition b = { 6000, 6000 };
	scene->UpdateCamera( false, a.x, a.y, false, b.x, b.y );
	ExpectCamera( 96, 0, "zone 6 with nobody to follow" );
	EXPECT_TRUE( scene->IsFinalAreaLocked() );
	EXPECT_EQ( a.x, 5000 );
	EXPECT_EQ( b.y, 6000 );
}

TEST_F( CameraTest, TwoPlayersInTheStartZoneFollowTheLowerOne ) {
	scene->SetCameraPosition( 0, 1500 );
	UpdateTwo( { 200, 2000 }, { 300, 1800 } );
	ExpectCamera( 0, 1648, "follows y 2000; the other player stays inside" );
	scene->SetCameraPosition( 0, 1500 );
	UpdateTwo( { 200, 1800 }, { 300, 2000 } );
	ExpectCamera( 0, 1648, "the same with the players swapped" );
}

TEST_F( CameraTest, OtherPlayerOutsideTheOldViewHoldsTheCameraY ) {
	UpdateTwo( { 200, 2000 }, { 300, 1800 } );
	ExpectCamera( 0, 1920, "player 2 at 1800 is above the old view at 1920" );
	EXPECT_EQ( two.y, 1920 ) << "and is pulled down into it";
	EXPECT_EQ( one.y, 2000 );
}

TEST_F( CameraTest, CameraStopsWithTheOtherPlayerOnTheTopEdge ) {
	scene->SetCameraPosition( 0, 1700 );
	UpdateTwo( { 200, 2300 }, { 300, 1800 } );
	ExpectCamera( 0, 1800, "1888 would push player 2 out over the top: the view stops at its y" );
	EXPECT_EQ( one.y, 2248 ) << "the followed player is held at the bottom instead";
	EXPECT_EQ( two.y, 1800 );

	UpdateTwo( { 200, 2300 }, { 300, 1800 } );
	ExpectCamera( 0, 1800, "with player 2 on the top edge the view does not move down" );
}

TEST_F( CameraTest, OtherPlayerOnTheBottomEdgeHoldsACameraMovingUp ) {
	scene->SetCameraPosition( 0, 1400 );
	UpdateTwo( { 100, 1200 }, { 500, 1880 } );
	ExpectCamera( 0, 1400, "player 2 480 below the top, the view would leave it behind" );
	EXPECT_EQ( two.y, 1848 );

	scene->SetCameraPosition( 0, 1401 );
	UpdateTwo( { 100, 1200 }, { 500, 1880 } );
	ExpectCamera( 0, 992, "at 479 below the top the view may move" );
	EXPECT_EQ( two.y, 1440 ) << "player 2 is pulled up into the view";
}

TEST_F( CameraTest, PlayerInTheEarlierZoneIsFollowed ) {
	scene->SetCameraPosition( 0, 992 );
	UpdateTwo( { 1000, 1200 }, { 100, 1200 } );
	ExpectCamera( 0, 992, "player 2 in zone 0 is behind player 1 in zone 2" );
	EXPECT_EQ( one.x, 608 ) << "player 1 is pulled back into the view";

	scene->SetCameraPosition( 1280, 0 );
	UpdateTwo( { 600, 300 }, { 700, 300 } );
	ExpectCamera( 640, 0, "player 2 still on the upper street holds off the final area" );
	EXPECT_FALSE( scene->IsFinalAreaLocked() );
}

TEST_F( CameraTest, SameZoneFollowsWhoeverLagsBehindAlongTheRoute ) {
	scene->SetCameraPosition( 0, 992 );
	UpdateTwo( { 900, 1200 }, { 1000, 1200 } );
	ExpectCamera( 740, 992, "lower street: the smaller x" );

	scene->SetCameraPosition( 1280, 300 );
	UpdateTwo( { 1600, 500 }, { 1700, 700 } );
	ExpectCamera( 1280, 410, "right side: the greater y" );

	scene->SetCameraPosition( 1280, 0 );
	UpdateTwo( { 1000, 100 }, { 900, 100 } );
	ExpectCamera( 652, 0, "upper street: the greater x" );
}

// With both at the same x player 2 is followed, so player 1 bounds the y: inside the old view,
// it lets the camera move; player 2, outside it, would have held it.
TEST_F( CameraTest, TieGoesToPlayerTwo ) {
	scene->SetCameraPosition( 0, 1200 );
	UpdateTwo( { 500, 1300 }, { 500, 1800 } );
	ExpectCamera( 104, 992, "the tie follows player 2, bounded by player 1" );
	EXPECT_EQ( two.y, 1440 );

	scene->SetCameraPosition( 700, 100 );
	UpdateTwo( { 1000, 200 }, { 1000, 700 } );
	ExpectCamera( 652, 0, "upper street, the same x: player 1 inside the old view bounds the y" );
}

TEST_F( CameraTest, FinalAreaLocksOnlyWhenTheLastPlayerArrives ) {
	scene->SetCameraPosition( 700, 0 );
	UpdateTwo( { 600, 300 }, { 650, 300 } );
	EXPECT_TRUE( scene->IsFinalAreaLocked() );
	ExpectCamera( 696, 0, "both in the final area" );
	UpdateTwo( { 600, 300 }, { 1000, 300 } );
	ExpectCamera( 692, 0, "once locked, a player back on the upper street does not unlock it" );
	EXPECT_EQ( two.x, 1000 );
}

}
